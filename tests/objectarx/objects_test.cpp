// Objects: opening and closing, walking blocks, common properties, extended data.
#include "acdbads.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbsymutl.h"
#include "dbxrecrd.h"
#include "support.h"

using namespace dbtest;

namespace {

// What a block shows, as DXF names.
std::wstring walked(const Sample& sample, const wchar_t* name) {
    AcDbBlockTableRecordPointer block(name, sample.database.get());
    if (block.openStatus() != Acad::eOk) return L"(none)";
    std::wstring names;
    AcDbBlockTableRecordIterator* made = nullptr;
    block->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(iterator->getEntity(entity), Acad::eOk);
        EXPECT_EQ(entity->ownerId(), block->objectId());
        names += std::wstring(names.empty() ? L"" : L" ") + entity->isA()->dxfName();
        entity->close();
    }
    return names;
}

}  // namespace

TEST(DbObjects, AreOpenForOneWriterOrManyReaders) {
    Sample sample(newerDrawing());
    const AcDbObjectId id = sample.byHandle(0x2A);
    AcDbEntity* first = nullptr;
    AcDbEntity* second = nullptr;
    EXPECT_EQ(acdbOpenObject(first, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(acdbOpenObject(first, AcDbObjectId(id.databaseNumber(), 0), AcDb::kForRead), Acad::eInvalidIndex);
    AcDbLayerTableRecord* layer = nullptr;
    EXPECT_EQ(acdbOpenObject(layer, id, AcDb::kForRead), Acad::eNotThatKindOfClass);
    EXPECT_EQ(layer, nullptr);

    ASSERT_EQ(acdbOpenObject(first, id, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(second, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(first, second) << "there is one object";
    EXPECT_EQ(first->setColorIndex(1), Acad::eNotOpenForWrite);
    EXPECT_EQ(first->erase(), Acad::eNotOpenForWrite);
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForRead);
    AcDbEntity* third = nullptr;
    EXPECT_EQ(acdbOpenObject(third, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(second->close(), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenObject(third, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(first->downgradeOpen(), Acad::eOk);
    EXPECT_EQ(first->downgradeOpen(), Acad::eNotOpenForWrite);
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_FALSE(DatabaseAccess::isModified(*sample.database));

    ASSERT_EQ(acdbOpenObject(first, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(first->erase(), Acad::eOk);
    first->close();
    EXPECT_EQ(acdbOpenObject(first, id, AcDb::kForRead), Acad::eWasErased);
    ASSERT_EQ(acdbOpenObject(first, id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(first->erase(false), Acad::eOk);
    EXPECT_EQ(sample.changes(), "") << "what was erased with it came back as well";
    sample.database.reset();
    EXPECT_EQ(first->close(), Acad::eNoDatabase) << "its drawing is closed";
    EXPECT_EQ(acdbOpenObject(first, id, AcDb::kForRead), Acad::eNoDatabase);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
}

TEST(DbObjects, LieInTheirSpacesAndBlocks) {
    Sample old(oldDrawing());
    EXPECT_EQ(walked(old, ACDB_MODEL_SPACE), L"LINE POLYLINE INSERT");
    EXPECT_EQ(walked(old, L"*PAPER_SPACE"), L"TEXT");
    EXPECT_EQ(walked(old, L"Pump"), L"CIRCLE");
    EXPECT_EQ(walked(old, L"VALVE"), L"(none)");
    Sample newer(newerDrawing());
    EXPECT_EQ(walked(newer, ACDB_MODEL_SPACE), L"LINE");
    EXPECT_EQ(walked(newer, ACDB_PAPER_SPACE), L"CIRCLE");
    EXPECT_EQ(walked(newer, L"PUMP"), L"POINT");
    AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(newer.database.get()));
    AcDbHandle handle;
    space->getAcDbHandle(handle);
    EXPECT_EQ(handle, AcDbHandle(0x1Fu));
    EXPECT_TRUE(space->isLayout());
    EXPECT_EQ(space->objectId(), newer.in<AcDbBlockTable>(L"*model_space"));

    // Erasing during a walk; a block goes with its content.
    AcDbBlockTableRecordPointer model(ACDB_MODEL_SPACE, old.database.get());
    AcDbBlockTableRecordIterator* made = nullptr;
    model->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(iterator->getEntity(entity, AcDb::kForWrite), Acad::eOk);
        if (entity->isA() == AcDbBlockReference::desc()) {
            AcDbBlockTableRecordPointer block(AcDbBlockReference::cast(entity)->blockTableRecord(), AcDb::kForWrite);
            EXPECT_EQ(block->origin(), AcGePoint3d(1, 2, 0));
            EXPECT_EQ(block->erase(), Acad::eOk);
        }
        entity->erase();
        entity->close();
    }
    EXPECT_EQ(walked(old, ACDB_MODEL_SPACE), L"");
    EXPECT_EQ(walked(old, L"PUMP"), L"(none)");
    const std::vector<std::string> left = tagsOf(old.text());
    EXPECT_EQ(std::count(left.begin(), left.end(), "0=VERTEX") + std::count(left.begin(), left.end(), "0=ENDBLK"), 0);
    EXPECT_EQ(std::count(left.begin(), left.end(), "1=sheet"), 1);
}

TEST(DbObjects, ShareTheirCommonProperties) {
    Sample old(oldDrawing());
    AcDbBlockTableRecordPointer model(ACDB_MODEL_SPACE, old.database.get());
    AcDbBlockTableRecordIterator* made = nullptr;
    model->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    AcDbEntity* line = nullptr;
    iterator->getEntity(line, AcDb::kForWrite);
    EXPECT_EQ(line->layerId(), old.layer(L"PIPE"));
    EXPECT_EQ(taken(line->layer()), L"PIPE") << "as the table spells it";
    EXPECT_EQ(line->setLayer(L"Pipe"), Acad::eOk);
    EXPECT_EQ(line->setLayer(L"NOWHERE"), Acad::eKeyNotFound);
    EXPECT_EQ(line->setLayer(line->objectId()), Acad::eInvalidLayer);
    EXPECT_TRUE(line->color().isByLayer());
    EXPECT_EQ(line->setColorIndex(256), Acad::eOk);
    EXPECT_EQ(line->setVisibility(AcDb::kVisible), Acad::eOk);
    EXPECT_EQ(line->setLinetype(L"bylayer"), Acad::eOk);
    EXPECT_EQ(line->setLineWeight(AcDb::kLnWt025), Acad::eNotApplicable);
    EXPECT_EQ(old.changes(), "");
    line->setColorIndex(5);
    line->setLinetype(L"continuous");
    line->close();
    iterator->step();
    AcDbEntity* polyline = nullptr;
    iterator->getEntity(polyline, AcDb::kForWrite);
    EXPECT_EQ(polyline->setLayer(L"0"), Acad::eOk);
    polyline->close();
    EXPECT_EQ(old.changes(), " +6=CONTINUOUS +62=5 -8=WALL +8=0 -8=WALL +8=0 -8=WALL +8=0 -8=WALL +8=0");
    iterator->step();
    AcDbEntity* insert = nullptr;
    iterator->getEntity(insert);
    EXPECT_TRUE(insert->layerId().isNull()) << "no table has its layer";
    EXPECT_EQ(taken(insert->layer()), L"LOST");
    insert->close();

    Sample newer(newerDrawing());
    AcDbObjectPointer<AcDbEntity> circle(newer.byHandle(0x2B), AcDb::kForWrite);
    EXPECT_EQ(circle->visibility(), AcDb::kInvisible);
    EXPECT_STREQ(circle->isA()->name(), L"AcDbCircle");
    AcCmColor color;
    color.setRGB(0, 255, 0);
    circle->setColor(color);
    circle->setVisibility(AcDb::kVisible);
    circle->setLayer(L"pipe");
    circle->setLineWeight(AcDb::kLnWt030);
    EXPECT_EQ(circle->color(), color);
    EXPECT_EQ(newer.changes(), " -8=0 -62=1 -60=1 +8=PIPE +62=3 +370=30 +60=0 +420=65280");
    EXPECT_EQ(circle->visibility(), AcDb::kVisible);
}

TEST(DbObjects, KeepExtendedDataByApplication) {
    Sample sample(newerDrawing());
    AcDbObjectPointer<AcDbEntity> line(sample.byHandle(0x2A), AcDb::kForWrite);
    EXPECT_EQ(told(line->xData()), L"1001=ACAD 1000=keep 1010=3 1001=PIPE-SERIAL 1000=JL-1");
    EXPECT_EQ(told(line->xData(L"pipe-serial")), L"1001=PIPE-SERIAL 1000=JL-1");
    EXPECT_EQ(line->xData(L"OTHER"), nullptr);

    const auto set = [&](resbuf* chain) { return line->setXData(Chain(chain).get()); };
    EXPECT_EQ(set(acutBuildList(1001, L"OTHER", 1000, L"x", 0)), Acad::eRegappIdNotFound);
    EXPECT_EQ(set(acutBuildList(1000, L"x", 0)), Acad::eBadDxfSequence);
    EXPECT_EQ(set(acutBuildList(1001, L"ACAD", 1002, L"{", 0)), Acad::eBadDxfSequence);
    EXPECT_EQ(set(acutBuildList(1001, L"ACAD", 8, L"0", 0)), Acad::eInvalidInput);
    EXPECT_EQ(set(acutBuildList(1001, L"ACAD", 1000, std::wstring(256, L'x').c_str(), 0)), Acad::eInvalidInput);
    resbuf* big = acutBuildList(1001, L"ACAD", 0);
    resbuf* last = big;
    for (int i = 0; i < 80; ++i, last = last->rbnext)
        last->rbnext = acutBuildList(1000, std::wstring(250, L'x').c_str(), 0);
    EXPECT_EQ(set(big), Acad::eXdataSizeExceeded);
    EXPECT_EQ(set(acutBuildList(1001, L"pipe-serial", 1000, L"JL-1", 0)), Acad::eOk) << "nothing new";
    EXPECT_FALSE(DatabaseAccess::isModified(*sample.database));

    EXPECT_EQ(set(acutBuildList(1001, L"pipe-serial", 1000, L"J\u2460\n^", 1070, -7, 0)), Acad::eOk);
    EXPECT_EQ(told(line->xData(L"PIPE-SERIAL")), L"1001=PIPE-SERIAL 1000=J\u2460\n^ 1070=-7");
    EXPECT_EQ(sample.changes(), " -1000=JL-1 +1000=J\xE2\x91\xA0^J^  +1070=-7");
    EXPECT_EQ(acdbRegApp(L"OTHER"), RTNORM);
    EXPECT_EQ(acdbRegApp(L"other"), RTERROR);
    ads_point point = {1.5, 2.0, 9.0};
    EXPECT_EQ(set(acutBuildList(1001, L"OTHER", 1010, point, 1001, L"PIPE-SERIAL", 0)), Acad::eOk);
    EXPECT_EQ(told(line->xData()), L"1001=ACAD 1000=keep 1010=3 1001=OTHER 1010=9");
    EXPECT_EQ(set(acutBuildList(1001, L"OTHER", 0)), Acad::eOk);
    EXPECT_EQ(set(acutBuildList(1001, L"ACAD", 0)), Acad::eOk);
    EXPECT_EQ(line->xData(), nullptr);
}

TEST(DbObjects, AreFoundByHandleNameAndDictionary) {
    Sample sample(newerDrawing());
    ads_name name;
    EXPECT_EQ(acdbHandEnt(L"02a", name), RTNORM);
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
    EXPECT_EQ(id, sample.byHandle(0x2A));
    EXPECT_EQ(acdbHandEnt(L"10", name), RTERROR) << "a layer is no entity";
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eNullObjectId);
    EXPECT_EQ(sample.byHandle(2), sample.database->layerTableId());

    AcDbDictionary* root = nullptr;
    ASSERT_EQ(sample.database->getNamedObjectsDictionary(root, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(root->getAt(L"NONE", id), Acad::eKeyNotFound);
    ASSERT_EQ(root->getAt(L"NOTES", id), Acad::eOk);
    root->close();
    AcDbObjectPointer<AcDbXrecord> record(id);
    resbuf* chain = nullptr;
    ASSERT_EQ(record->rbChain(&chain), Acad::eOk);
    const resbuf* last = chain->rbnext->rbnext->rbnext;
    EXPECT_EQ(AcDbObjectId::fromOldId(last->resval.rlname[0]), sample.byHandle(0x2A));
    EXPECT_EQ(told(chain), L"1=text 70=7 10=3 330=");
}

TEST(DbObjects, TellWhatBelongsToThem) {
    std::string text = newerDrawing();
    const std::string group = dxfText("102={ACAD_XDICTIONARY;360=31;102=}");
    text.insert(text.find(group), dxfText("102={ACAD_REACTORS;330=32;330=ABCD;330=11;102=}"));
    Sample sample(text);
    AcDbObjectPointer<AcDbEntity> line(sample.byHandle(0x2A), AcDb::kForWrite);
    ASSERT_EQ(line.openStatus(), Acad::eOk);
    EXPECT_EQ(line->extensionDictionary(), sample.byHandle(0x31));
    // A layer of the same owner: both groups stay as they are.
    EXPECT_EQ(line->setLayer(L"0"), Acad::eOk);
    line.close();
    EXPECT_EQ(sample.changes(), " -8=PIPE +8=0");

    const AcDbObjectPointer<AcDbEntity> circle(sample.byHandle(0x2B));
    EXPECT_TRUE(circle->extensionDictionary().isNull());
}
