// Whole drawings: a new one, header variables, real files.
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <tuple>

#include "../folder.h"
#include "dbents.h"
#include "qrs_looks.h"
#include "support.h"

using namespace dbtest;
namespace fs = std::filesystem;

namespace {

resbuf value(short type) {
    resbuf made{};
    made.restype = type;
    return made;
}

resbuf textValue(std::wstring& text) {
    resbuf made = value(RTSTR);
    made.resval.rstring = text.data();
    return made;
}

Acad::ErrorStatus setVariable(const Sample& sample, const wchar_t* name, std::wstring text) {
    return qrs::host::setHeaderVariable(sample.database.get(), name, textValue(text));
}

Acad::ErrorStatus setVariable(const Sample& sample, const wchar_t* name, int number) {
    resbuf made = value(RTSHORT);
    made.resval.rint = static_cast<short>(number);
    return qrs::host::setHeaderVariable(sample.database.get(), name, made);
}

std::wstring textVariable(const Sample& sample, const wchar_t* name) {
    resbuf result{};
    return qrs::host::headerVariable(sample.database.get(), name, result) == Acad::eOk && result.restype == RTSTR
               ? taken(result.resval.rstring)
               : L"(none)";
}

// Opens everything, asks everything; what a drawing says must not matter.
std::size_t lookAtAll(AcDbDatabase& database) {
    std::size_t count = 0;
    AcDbBlockTablePointer blocks(&database);
    AcDbBlockTableIterator* madeBlocks = nullptr;
    blocks->newIterator(madeBlocks);
    const std::unique_ptr<AcDbBlockTableIterator> block(madeBlocks);
    for (; !block->done(); block->step()) {
        AcDbBlockTableRecord* record = nullptr;
        if (block->getRecord(record) != Acad::eOk) continue;
        AcDbBlockTableRecordIterator* made = nullptr;
        record->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        for (; !iterator->done(); iterator->step(), ++count) {
            AcDbEntity* entity = nullptr;
            if (iterator->getEntity(entity, AcDb::kForWrite) != Acad::eOk) {
                ADD_FAILURE() << "an entity that cannot be opened";
                continue;
            }
            EXPECT_EQ(entity->ownerId(), record->objectId());
            entity->setLayer(entity->layerId());
            entity->setColor(entity->color());
            entity->setVisibility(entity->visibility());
            entity->setLinetype(taken(entity->linetype()).c_str());
            const Chain chain(entity->xData());
            entity->close();
        }
        record->close();
    }
    return count;
}

}  // namespace

TEST(DbDrawing, ANewOneIsWholeAndReadsBack) {
    AcDbDatabase made;
    const std::string text = DatabaseAccess::bytes(made);
    Sample again(text);
    EXPECT_EQ(again.database->clayer(), again.database->layerZero());
    EXPECT_TRUE(again.database->tilemode());
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbLayerTableRecord> layer;
        layer.create();
        layer->setName(L"PIPE");
        AcDbLayerTablePointer table(again.database.get(), AcDb::kForWrite);
        ASSERT_EQ(table->add(id, layer.object()), Acad::eOk);
    }
    EXPECT_EQ(again.database->setClayer(id), Acad::eOk);
    EXPECT_EQ(acdbRegApp(L"PWX-ENT-TYPE"), RTNORM);

    const Folder folder;
    const fs::path file = folder / "new.dxf";
    qrs::platform::Error error;
    ASSERT_TRUE(DatabaseAccess::save(*again.database, file, false, error)) << error.message;
    AcDbDatabase read(false);
    EXPECT_EQ(read.dxfIn(file.wstring().c_str()), Acad::eOk);
    EXPECT_FALSE(read.clayer().isNull());
    EXPECT_EQ(read.dxfIn((file.wstring() + L".none").c_str()), Acad::eFileNotFound);
    // Another program's opinion, where it is installed.
    const std::string audit = "/usr/bin/python3 -m ezdxf audit '" + file.string() + "' 2>/dev/null";
    if (std::system("/usr/bin/python3 -c 'import ezdxf' >/dev/null 2>&1") == 0) {
        const std::string listing = (folder / "audit.txt").string();
        EXPECT_EQ(std::system((audit + " > '" + listing + "'").c_str()), 0);
        const std::string all = fileBytes(listing);
        EXPECT_NE(all.find("No errors found"), std::string::npos) << all;
    }
}

TEST(DbDrawing, HeaderVariablesAreSystemVariables) {
    Sample sample(newerDrawing());
    EXPECT_EQ(textVariable(sample, L"clayer"), L"PIPE");
    EXPECT_EQ(textVariable(sample, L"CECOLOR"), L"BYLAYER");
    EXPECT_EQ(setVariable(sample, L"CLAYER", L"pipe"), Acad::eOk);
    EXPECT_EQ(setVariable(sample, L"CLAYER", L"NOWHERE"), Acad::eInvalidInput);
    EXPECT_EQ(setVariable(sample, L"TILEMODE", 2), Acad::eOutOfRange);
    EXPECT_EQ(setVariable(sample, L"TILEMODE", L"1"), Acad::eInvalidInput);
    EXPECT_EQ(setVariable(sample, L"TILEMODE", 1), Acad::eOk);
    EXPECT_EQ(setVariable(sample, L"ACADVER", L"AC1009"), Acad::eIsWriteProtected);
    EXPECT_EQ(setVariable(sample, L"NOSUCH", 1), Acad::eKeyNotFound);
    EXPECT_EQ(sample.changes(), "") << "equal and refused values write nothing";
    EXPECT_EQ(setVariable(sample, L"CLAYER", L"0"), Acad::eOk);
    EXPECT_EQ(setVariable(sample, L"TILEMODE", 0), Acad::eOk);
    EXPECT_EQ(setVariable(sample, L"CECOLOR", L"7"), Acad::eOk);
    EXPECT_EQ(sample.database->setLtscale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(sample.database->setLtscale(50.0), Acad::eOk);
    EXPECT_EQ(sample.changes(), " -8=PIPE +8=0 +9=$TILEMODE +70=0 +9=$CECOLOR +62=7 +9=$LTSCALE +40=50.0");
    EXPECT_FALSE(sample.database->tilemode());

    // A frozen layer cannot become current; a drawing without a header gets one, in front.
    AcDbObjectPointer<AcDbLayerTableRecord> pipe(sample.layer(L"PIPE"), AcDb::kForWrite);
    EXPECT_EQ(pipe->setIsFrozen(true), Acad::eOk);
    EXPECT_EQ(setVariable(sample, L"CLAYER", L"PIPE"), Acad::eInvalidLayer);
    Sample bare(dxfText("999=made by hand;0=SECTION;2=ENTITIES;0=ENDSEC;0=EOF"));
    EXPECT_EQ(setVariable(bare, L"FILLMODE", 0), Acad::eOk);
    EXPECT_EQ(bare.changes(), " +2=HEADER +9=$FILLMODE +70=0 +0=ENDSEC +0=SECTION");
    EXPECT_EQ(bare.text().rfind("999\nmade by hand\n", 0), 0u);
    EXPECT_EQ(setVariable(bare, L"LWDISPLAY", 1), Acad::eNotApplicable);
}

TEST(DbDrawing, ColoursKnowThePalette) {
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(1), 0xFF0000u);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(21), 0xFF9F7Fu);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(22), 0xA52900u);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(90), 0x00FF00u);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(130), 0x00FFFFu);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(170), 0x0000FFu);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(240), 0xFF003Fu);
    AcCmColor color;
    EXPECT_TRUE(color.isByBlock());
    EXPECT_EQ(color.setColorIndex(258), Acad::eOutOfRange);
    color.setColorIndex(256);
    EXPECT_TRUE(color.isByLayer());
    color.setRGB(254, 1, 1);
    EXPECT_EQ(color.colorIndex(), 1);
    AcCmColor red;
    red.setColorIndex(1);
    EXPECT_NE(color, red);
    EXPECT_EQ(red.red(), 255);
}

// Names that the drawing has and others, by text and by handle.
TEST(SideBySide, TwoReadersHearWhatOneDoes) {
    std::string tags =
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=TABLES;0=TABLE;2=LAYER;0=LAYER;5=10;2=PIPE;70=0;"
        "0=ENDTAB;0=TABLE;2=STYLE;0=STYLE;5=11;2=NOTES;70=0;0=ENDTAB;0=ENDSEC;0=SECTION;2=ENTITIES;";
    for (int i = 0; i < 7000; ++i) {
        const std::string name = std::to_string(i / 70);
        tags += "0=LINE;8=pipe;6=" + name + ";0=MULTILEADER;8=" + name + ";172=2;343=" + (i % 2 == 0 ? "11" : name) +
                ";0=TEXT;8=0;7=" + name + ";62=1;";
    }
    qrs::platform::Error error;
    const auto database = DatabaseAccess::openBytes(dxfText(tags + "0=ENDSEC;0=EOF"), "drawing", error);
    ASSERT_TRUE(database) << error.message;
    using Told = std::vector<std::tuple<AcDbObjectId, AcDbObjectId, std::wstring, std::wstring, std::wstring, bool>>;
    const auto note = [](Told& told, const TEntityLook& look) {
        told.emplace_back(look.id, look.layer, look.layerName, look.linetype, look.textStyle, look.hasOwnColor);
    };
    Told whole, first, second;
    TEntityLooks::Tell(
        database.get(), [&](const TEntityLook& look) { note(first, look); },
        [&](const TEntityLook& look) { note(second, look); });
    // Only now, since what one reader looks up would be known to the two.
    TEntityLooks looks(database.get());
    for (TEntityLook look; looks.Next(look);)
        note(whole, look);
    EXPECT_EQ(second.empty(), std::thread::hardware_concurrency() < 2);
    first.insert(first.end(), second.begin(), second.end());
    EXPECT_EQ(whole.size(), 21000u);
    EXPECT_TRUE(first == whole);
}

TEST(DbDrawing, RealFilesAreWalkedWithoutChangingThem) {
    const fs::path corpus = fs::path(QRS_SOURCE_DIR).parent_path() / "shared" / "corpus" / "dxf";
    if (!fs::exists(corpus)) GTEST_SKIP() << "no corpus";
    std::size_t files = 0;
    std::size_t entities = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() != ".dxf") continue;
        qrs::platform::Error error;
        const std::unique_ptr<AcDbDatabase> database = DatabaseAccess::open(entry.path(), error);
        if (!database) continue;
        ++files;
        entities += lookAtAll(*database);
        AcDbLayerTablePointer layers(database.get());
        AcDbLayerTableIterator* made = nullptr;
        layers->newIterator(made);
        const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
        for (; !iterator->done(); iterator->step()) {
            AcDbObjectId id;
            iterator->getRecordId(id);
            AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
            ASSERT_EQ(layer.openStatus(), Acad::eOk);
            layer->setIsFrozen(layer->isFrozen());
            layer->setColor(layer->color());
        }
        EXPECT_FALSE(DatabaseAccess::isModified(*database)) << entry.path();
    }
    EXPECT_GT(files, 50u);
    EXPECT_GT(entities, 10000u);
}
