// Layers: their states, their creation in every form of drawing, their names.
#include "host/platform/callrecord.h"
#include "support.h"

using namespace dbtest;

namespace {

using LayerPointer = AcDbObjectPointer<AcDbLayerTableRecord>;

AcCmColor indexColor(Adesk::UInt16 index) {
    AcCmColor color;
    color.setColorIndex(index);
    return color;
}

AcCmColor trueColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    AcCmColor color;
    color.setRGB(red, green, blue);
    return color;
}

Acad::ErrorStatus addLayer(const Sample& sample, const wchar_t* name, AcDbObjectId& id) {
    AcDbLayerTablePointer table(sample.database.get(), AcDb::kForWrite);
    LayerPointer layer;
    layer.create();
    EXPECT_EQ(layer->setName(name), Acad::eOk);
    EXPECT_EQ(layer->setColor(indexColor(30)), Acad::eOk);
    EXPECT_EQ(layer->setLineWeight(AcDb::kLnWt050), Acad::eOk);
    EXPECT_EQ(layer->setIsPlottable(false), Acad::eOk);
    EXPECT_EQ(layer->setLinetypeObjectId(sample.in<AcDbLinetypeTable>(L"Continuous")),
              sample.in<AcDbLinetypeTable>(L"Continuous").isNull() ? Acad::eNullObjectId : Acad::eOk);
    return table->add(id, layer.object());
}

}  // namespace

TEST(DbLayers, ChangeOnlyTheirOwnTagsInOldDrawings) {
    Sample sample(oldDrawing());
    {
        LayerPointer pipe(sample.layer(L"pipe"), AcDb::kForWrite);
        ASSERT_EQ(pipe.openStatus(), Acad::eOk);
        EXPECT_TRUE(pipe->isOff());
        EXPECT_EQ(pipe->color(), indexColor(3));
        pipe->setIsOff(false);
        pipe->setIsFrozen(true);
        // An old drawing has no place for these; nothing changes.
        EXPECT_EQ(pipe->setLineWeight(AcDb::kLnWt050), Acad::eNotApplicable);
        EXPECT_EQ(pipe->setIsPlottable(false), Acad::eNotApplicable);
        EXPECT_EQ(pipe->setColor(trueColor(1, 2, 3)), Acad::eNotApplicable);
        EXPECT_EQ(pipe->setLineWeight(AcDb::kLnWtByLwDefault), Acad::eOk);
        EXPECT_EQ(pipe->setIsPlottable(true), Acad::eOk);
        LayerPointer wall(sample.layer(L"WALL"), AcDb::kForWrite);
        EXPECT_TRUE(wall->isLocked() && wall->VPDFLT() && !wall->isOff() && !wall->isFrozen());
        wall->setIsLocked(false);
        wall->setColor(indexColor(12));
        wall->setIsOff(true);
        LayerPointer zero(sample.layer(L"0"), AcDb::kForWrite);
        EXPECT_EQ(zero->setIsFrozen(true), Acad::eInvalidLayer) << "it is the current layer";
        EXPECT_EQ(zero->setColor(AcCmColor()), Acad::eInvalidInput) << "a layer cannot be by block";
    }
    EXPECT_EQ(sample.changes(),
              " -70=    64 -62=    -3 +70=    65 +62=     3 -70=    70 -62=     5 +70=    66 +62=   -12");
}

TEST(DbLayers, ChangeOnlyTheirOwnTagsInNewerDrawings) {
    Sample sample(newerDrawing());
    {
        LayerPointer pipe(sample.layer(L"PIPE"), AcDb::kForWrite);
        EXPECT_EQ(pipe->lineWeight(), AcDb::kLnWt025);
        EXPECT_EQ(pipe->setIsFrozen(true), Acad::eInvalidLayer) << "it is the current layer";
        pipe->setIsOff(true);
        pipe->setColor(trueColor(255, 0, 1));
        EXPECT_EQ(pipe->color(), trueColor(255, 0, 1));
        EXPECT_EQ(pipe->setLineWeight(static_cast<AcDb::LineWeight>(17)), Acad::eInvalidInput);
        pipe->setLineWeight(AcDb::kLnWt050);
        pipe->setIsPlottable(false);
    }
    EXPECT_EQ(sample.changes(), " -62=3 +62=-1 +420=16711681 -370=25 +290=0 +370=50");
    {
        LayerPointer pipe(sample.layer(L"PIPE"), AcDb::kForWrite);
        pipe->setColor(indexColor(3));
        pipe->setIsOff(false);
        EXPECT_EQ(pipe->color(), indexColor(3));
    }
    EXPECT_EQ(sample.changes(), " -370=25 +290=0 +370=50") << "a palette colour takes the true colour away";
}

TEST(DbLayers, EqualValuesTouchNothing) {
    for (const std::string& text : {oldDrawing(), newerDrawing()}) {
        Sample sample(text);
        AcDbLayerTablePointer table(sample.database.get());
        AcDbLayerTableIterator* made = nullptr;
        table->newIterator(made);
        const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
        int count = 0;
        for (; !iterator->done(); iterator->step(), ++count) {
            AcDbLayerTableRecord* layer = nullptr;
            ASSERT_EQ(iterator->getRecord(layer, AcDb::kForWrite), Acad::eOk);
            layer->setIsOff(layer->isOff());
            layer->setIsFrozen(layer->isFrozen());
            layer->setIsLocked(layer->isLocked());
            layer->setVPDFLT(layer->VPDFLT());
            layer->setColor(layer->color());
            layer->setLineWeight(layer->lineWeight());
            layer->setIsPlottable(layer->isPlottable());
            layer->setLinetypeObjectId(layer->linetypeObjectId());
            const ACHAR* name = nullptr;
            layer->getName(name);
            EXPECT_EQ(layer->setName(std::wstring(name).c_str()), Acad::eOk);
            layer->close();
        }
        EXPECT_GE(count, 2);
        sample.database->setClayer(sample.database->clayer());
        EXPECT_FALSE(DatabaseAccess::isModified(*sample.database));
        EXPECT_EQ(sample.text(), text);
    }
}

TEST(DbLayers, NewOnesTakeTheFormOfTheDrawing) {
    AcDbObjectId id;
    Sample old(oldDrawing());
    ASSERT_EQ(addLayer(old, L"\u7ED9\u6C34\U0001F4A7", id), Acad::eOk);
    EXPECT_EQ(old.layer(L"\u7ED9\u6C34\U0001F4A7"), id);
    // The character outside of the code page is written as an escape of two units; text is in the code page.
    EXPECT_EQ(
        old.changes(),
        " -70=     3 +70=     4 +0=LAYER +2=\xB8\xF8\xCB\xAE\\U+D83D\\U+DCA7 +70=     0 +62=    30 +6=CONTINUOUS");
    EXPECT_EQ(addLayer(old, L"Pipe", id), Acad::eDuplicateRecordName);
    EXPECT_TRUE(id.isNull());

    // Old drawings may carry handles without owners.
    Sample handled(
        dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1009;9=$HANDLING;70=1;9=$HANDSEED;5=A0;0=ENDSEC;"
                "0=SECTION;2=TABLES;0=TABLE;2=LAYER;70=1;0=LAYER;5=1F;2=0;70=0;62=7;6=CONTINUOUS;0=ENDTAB;"
                "0=ENDSEC;0=EOF"));
    ASSERT_EQ(addLayer(handled, L"J", id), Acad::eOk);
    EXPECT_EQ(handled.changes(), " -5=A0 +5=A1 -70=1 +70=2 +0=LAYER +5=A0 +2=J +70=0 +62=30 +6=Continuous");

    Sample newer(newerDrawing());
    // The plot style is that of the other layers, the material that they point to is not there.
    ASSERT_EQ(addLayer(newer, L"\u7ED9\u6C34", id), Acad::eOk);
    EXPECT_EQ(newer.changes(),
              " -5=50 +5=51 -70=2 +70=3 +0=LAYER +5=50 +330=2 +100=AcDbSymbolTableRecord +100=AcDbLayerTableRecord"
              " +2=\xE7\xBB\x99\xE6\xB0\xB4 +70=0 +62=30 +6=Continuous +290=0 +370=50 +390=F +348=0");
    AcDbHandle handle;
    LayerPointer added(id);
    added->getAcDbHandle(handle);
    EXPECT_EQ(handle, AcDbHandle(L"50"));
    EXPECT_EQ(added->ownerId(), newer.database->layerTableId());
}

TEST(DbLayers, AreAddedToDrawingsWithoutTables) {
    AcDbObjectId id;
    Sample bare(dxfText("0=SECTION;2=ENTITIES;0=POINT;8=A;10=0.0;20=0.0;0=ENDSEC;0=EOF"));
    AcDbLayerTablePointer table(bare.database.get());
    ASSERT_EQ(table.openStatus(), Acad::eOk);
    EXPECT_FALSE(table->has(L"0"));
    table.close();
    EXPECT_EQ(bare.changes(), "");
    ASSERT_EQ(addLayer(bare, L"A", id), Acad::eOk);
    EXPECT_EQ(acdbRegApp(L"PWX"), RTNORM);
    EXPECT_EQ(bare.changes(),
              " +2=TABLES +0=TABLE +2=LAYER +70=1 +0=LAYER +2=A +70=0 +62=30 +6=Continuous +0=ENDTAB"
              " +0=TABLE +2=APPID +70=1 +0=APPID +2=PWX +70=0 +0=ENDTAB +0=ENDSEC +0=SECTION");
    AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, bare.database.get());
    AcDbBlockTableRecordIterator* made = nullptr;
    ASSERT_EQ(space->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(iterator->getEntity(entity), Acad::eOk);
    EXPECT_EQ(entity->layerId(), id) << "the entity's layer now exists";
    entity->close();
    // What was written reads back as the same table.
    Sample again(bare.text());
    EXPECT_FALSE(again.layer(L"a").isNull());
    EXPECT_FALSE(again.in<AcDbRegAppTable>(L"pwx").isNull());
}

TEST(DbLayers, KeepNamesFindableThroughRenamingAndErasing) {
    Sample sample(newerDrawing());
    const AcDbObjectId id = sample.layer(L"PIPE");
    {
        LayerPointer pipe(id, AcDb::kForWrite);
        EXPECT_EQ(pipe->setName(L"0"), Acad::eDuplicateRecordName);
        EXPECT_EQ(pipe->setName(L"A|B"), Acad::eInvalidInput);
        EXPECT_EQ(pipe->setName(std::wstring(256, L'A').c_str()), Acad::eInvalidInput);
        EXPECT_EQ(pipe->erase(), Acad::eCannotBeErasedByCaller) << "it is the current layer";
        EXPECT_EQ(pipe->setName(L"J-1"), Acad::eOk);
    }
    EXPECT_EQ(sample.layer(L"j-1"), id);
    EXPECT_TRUE(sample.layer(L"PIPE").isNull());
    // What lies on the layer goes with it, in blocks too, and the current layer.
    EXPECT_EQ(sample.changes(), " -8=PIPE +8=J-1 -2=PIPE +2=J-1 -8=PIPE +8=J-1 -8=PIPE +8=J-1");
    EXPECT_EQ(sample.database->clayer(), id);

    sample.database->setClayer(sample.layer(L"0"));
    LayerPointer layer(id, AcDb::kForWrite);
    EXPECT_EQ(layer->erase(), Acad::eOk);
    EXPECT_TRUE(layer->isErased() && id.isErased());
    EXPECT_TRUE(sample.layer(L"J-1").isNull());
    EXPECT_TRUE(sample.byHandle(0x30).isNull()) << "the layer's extension dictionary goes with it";
    AcDbObjectPointer<AcDbEntity> line(sample.byHandle(0x2A));
    EXPECT_TRUE(line->layerId().isNull());
    EXPECT_EQ(taken(line->layer()), L"J-1");
    EXPECT_EQ(layer->erase(false), Acad::eOk);
    EXPECT_EQ(sample.layer(L"J-1"), id);
    EXPECT_EQ(line->layerId(), id);
    EXPECT_FALSE(sample.byHandle(0x30).isNull());
}

TEST(DbLayers, TellTheirSettingsInOrder) {
    Sample sample(oldDrawing());
    qrs::platform::CallRecorder recorder;
    AcDbObjectId id;
    ASSERT_EQ(addLayer(sample, L"J", id), Acad::eOk);
    const std::vector<std::string> expected{"AcDbLayerTableRecord::setName(J)",
                                            "AcDbLayerTableRecord::setColor(J, 30)",
                                            "AcDbLayerTableRecord::setLineWeight(J, 50)",
                                            "AcDbLayerTableRecord::setIsPlottable(J, 0)",
                                            "AcDbLayerTableRecord::setLinetypeObjectId(J, CONTINUOUS)",
                                            "AcDbSymbolTable::add(LAYER, J)"};
    EXPECT_EQ(recorder.calls(), expected);
}

TEST(DbLayers, LinetypesAndTextStylesAreMadeTheSameWay) {
    const auto addTo = [](Sample& sample) {
        AcDbObjectPointer<AcDbLinetypeTableRecord> linetype;
        linetype.create();
        linetype->setName(L"DASH");
        linetype->setComments(L"__ __");
        linetype->setPatternLength(3.0);
        EXPECT_EQ(linetype->setNumDashes(13), Acad::eOutOfRange);
        linetype->setNumDashes(2);
        linetype->setDashLengthAt(0, 2.0);
        linetype->setDashLengthAt(1, -1.0);
        EXPECT_EQ(linetype->setDashLengthAt(2, 1.0), Acad::eInvalidIndex);
        AcDbLinetypeTablePointer table(sample.database.get(), AcDb::kForWrite);
        EXPECT_EQ(table->add(linetype.object()), Acad::eOk);
        // A change after it lies in the drawing.
        EXPECT_EQ(linetype->setNumDashes(1), Acad::eOk);
        EXPECT_EQ(linetype->dashLengthAt(0), 2.0);
        EXPECT_EQ(linetype->dashLengthAt(1), 0.0);
    };
    Sample old(oldDrawing());
    addTo(old);
    EXPECT_EQ(old.changes(),
              " -70=     1 +70=     2 +0=LTYPE +2=DASH +70=     0 +3=__ __ +72=    65 +73=     1 +40=3.0 +49=2.0");
    Sample newer(newerDrawing());
    addTo(newer);
    EXPECT_NE(newer.changes().find("+73=1 +40=3.0 +49=2.0 +74=0"), std::string::npos) << newer.changes();

    AcDbObjectPointer<AcDbTextStyleTableRecord> style;
    style.create();
    EXPECT_EQ(style->setXScale(0.0), Acad::eInvalidInput);
    style->setName(L"HZ");
    style->setBigFontFileName(L"gbcbig.shx");
    style->setXScale(0.75);
    AcDbTextStyleTablePointer table(old.database.get(), AcDb::kForWrite);
    EXPECT_EQ(table->add(style.object()), Acad::eOk);
    EXPECT_EQ(taken([&] {
                  ACHAR* name = nullptr;
                  style->bigFontFileName(name);
                  return name;
              }()),
              L"gbcbig.shx");
    // The table is made between its neighbours.
    EXPECT_NE(
        old.text().find(dxfText("0=ENDTAB;0=TABLE;2=STYLE;70=1;0=STYLE;2=HZ;70=0;40=0.0;41=0.75;50=0.0;71=0;42=2.5;"
                                "3=txt;4=gbcbig.shx;0=ENDTAB;0=ENDSEC")),
        std::string::npos)
        << old.text();
}
