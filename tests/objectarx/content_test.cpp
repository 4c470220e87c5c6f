// New entities, blocks and records; copies; frozen layers of viewports; references; layouts.
#include "support.h"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "../folder.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dblayout.h"
#include "dbxrecrd.h"
#include "gemat3d.h"
#include "host/objectarx/db/entitywalk.h"

using namespace dbtest;
namespace fs = std::filesystem;

namespace {

constexpr double kQuarter = 1.57079632679489661923;

AcDbObjectId addBlock(AcDbDatabase& database, const wchar_t* name, const AcGePoint3d& origin) {
    AcDbObjectPointer<AcDbBlockTableRecord> block;
    block.create();
    EXPECT_EQ(block->setName(name), Acad::eOk);
    EXPECT_EQ(block->setOrigin(origin), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(AcDbBlockTablePointer(&database, AcDb::kForWrite)->add(id, block), Acad::eOk);
    return id;
}

template <class Entity>
AcDbObjectId append(AcDbObjectId block, Entity* made) {
    AcDbObjectId id;
    AcDbObjectPointer<Entity> entity;
    entity.acquire(made);
    AcDbBlockTableRecordPointer space(block, AcDb::kForWrite);
    EXPECT_EQ(space->appendAcDbEntity(id, entity.object()), Acad::eOk);
    return id;
}

// A block with a text, a line and a circle, and a reference to it, with everything that can be set.
void drawAll(AcDbDatabase& database, AcDbObjectId space, AcDbObjectId style) {
    const AcDbObjectId block = addBlock(database, L"VALVE", {1.0, 2.0, 0.0});
    append(block, new AcDbLine({0.0, 0.0, 0.0}, {3.0, 4.5, 0.0}));
    append(block, new AcDbCircle({1.0, 1.0, 0.0}, 0.25));
    auto* text = new AcDbText({5.0, 6.0, 0.0}, L"\u7ACB\u7BA1 JL-1", style, 3.5, kQuarter);
    EXPECT_EQ(text->setWidthFactor(0.7), Acad::eOk);
    EXPECT_EQ(text->setHorizontalMode(AcDb::kTextCenter), Acad::eOk);
    EXPECT_EQ(text->setVerticalMode(AcDb::kTextVertMid), Acad::eOk);
    EXPECT_EQ(text->setAlignmentPoint({7.0, 8.0, 0.0}), Acad::eOk);
    EXPECT_EQ(text->setHeight(std::nan("")), Acad::eInvalidInput);
    append(space, text);
    auto* reference = new AcDbBlockReference({10.0, 20.0, 0.0}, block);
    EXPECT_EQ(reference->setScaleFactors(AcGeScale3d(2.0)), Acad::eOk);
    EXPECT_EQ(reference->setRotation(kQuarter), Acad::eOk);
    const AcDbObjectId id = append(space, reference);
    const AcDbObjectPointer<AcDbBlockReference> opened(id);
    EXPECT_EQ(opened->blockTableRecord(), block);
}

AcDbObjectIdArray listOf(std::initializer_list<AcDbObjectId> ids) {
    AcDbObjectIdArray list;
    for (const AcDbObjectId& id : ids)
        list.append(id);
    return list;
}

// The tags of an object in a drawing's text, each after a blank.
std::string recordOf(const std::string& text, AcDbObjectId id) {
    wchar_t handle[17];
    id.handle().getIntoAsciiBuffer(handle, 17);
    std::string wanted = "5=";
    for (const wchar_t* digit = handle; *digit != L'\0'; ++digit)
        wanted += static_cast<char>(*digit);
    std::string record;
    bool isIt = false;
    for (const std::string& tag : tagsOf(text)) {
        if (tag.compare(0, 2, "0=") == 0) {
            if (isIt) return record;
            record.clear();
        }
        isIt = isIt || tag == wanted;
        record += " " + tag;
    }
    return record;
}

// One drawing of one entity; the tags of the form "code=value" words that differ when it was transformed.
std::string drawingOf(const std::string& entity) {
    return dxfText(
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1015;0=ENDSEC;0=SECTION;2=TABLES;0=TABLE;2=LAYER;70=1;"
        "0=LAYER;2=0;70=0;62=7;0=ENDTAB;0=ENDSEC;0=SECTION;2=ENTITIES;" +
        entity + ";0=ENDSEC;0=EOF");
}

std::string transformed(const std::string& tags, const AcGeMatrix3d& matrix, Acad::ErrorStatus wanted = Acad::eOk) {
    Sample sample(drawingOf(tags));
    AcDbObjectPointer<AcDbEntity> entity(sample.byHandle(0x2A), AcDb::kForWrite);
    EXPECT_EQ(entity->transformBy(matrix), wanted);
    return sample.changes();
}

// What moving a mirrored entity changes in the drawing.
template <class Entity>
std::string moved(const std::string& tags, AcGePoint3d (Entity::*get)() const,
                  Acad::ErrorStatus (Entity::*set)(const AcGePoint3d&)) {
    Sample sample(drawingOf(tags + ";210=0.0;220=0.0;230=-1.0"));
    AcDbObjectPointer<Entity> entity(sample.byHandle(0x2A), AcDb::kForWrite);
    EXPECT_LT((entity.object()->*get)().distanceTo({102.0, 3.0, 1.0}), 1e-12) << tags;
    EXPECT_EQ((entity.object()->*set)({5.0, 3.0, 1.0}), Acad::eOk);
    return sample.changes();
}

}  // namespace

TEST(DatabaseContent, NewEntitiesTakeTheFormOfTheirDrawing) {
    Sample old(oldDrawing());
    drawAll(*old.database, old.in<AcDbBlockTable>(ACDB_MODEL_SPACE), AcDbObjectId());
    EXPECT_EQ(old.changes(),
              " +0=BLOCK +8=0 +2=VALVE +70=0 +10=1.0 +20=2.0 +30=0.0 +3=VALVE"
              " +0=LINE +8=0 +10=0.0 +20=0.0 +30=0.0 +11=3.0 +21=4.5 +31=0.0"
              " +0=CIRCLE +8=0 +10=1.0 +20=1.0 +30=0.0 +40=0.25 +0=ENDBLK +8=0"
              " +0=TEXT +8=0 +10=5.0 +20=6.0 +30=0.0 +40=3.5 +1=\xC1\xA2\xB9\xDC JL-1 +50=90.0 +41=0.7 +72=1 +11=7.0"
              " +21=8.0 +31=0.0 +73=2 +0=INSERT +8=0 +2=VALVE +10=10.0 +20=20.0 +30=0.0 +41=2.0 +42=2.0 +43=2.0"
              " +50=90.0");

    Sample newer(newerDrawing());
    const AcDbObjectId space = newer.in<AcDbBlockTable>(ACDB_MODEL_SPACE);
    append(space, new AcDbText({1.0, 2.0, 0.0}, L"x"));
    const AcDbObjectId block = addBlock(*newer.database, L"*U", {});
    EXPECT_EQ(newer.changes(),
              " -5=50 +5=54 -70=3 +70=4 +0=BLOCK_RECORD +5=51 +330=1 +100=AcDbSymbolTableRecord"
              " +100=AcDbBlockTableRecord +2=*U1 +340=0 +0=BLOCK +5=52 +330=51 +100=AcDbEntity +8=0 +100=AcDbBlockBegin"
              " +2=*U1 +70=1 +10=0.0 +20=0.0 +30=0.0 +3=*U1 +1= +0=ENDBLK +5=53 +330=51 +100=AcDbEntity +8=0"
              " +100=AcDbBlockEnd +0=TEXT +5=50 +330=1F +100=AcDbEntity +8=0 +100=AcDbText +10=1.0 +20=2.0 +30=0.0"
              " +40=2.5 +1=x +100=AcDbText");
    AcDbObjectPointer<AcDbBlockReference> lost;
    lost.create();
    AcDbObjectId id;
    EXPECT_EQ(AcDbBlockTableRecordPointer(block, AcDb::kForWrite)->appendAcDbEntity(id, lost.object()),
              Acad::eKeyNotFound);
}

TEST(DatabaseContent, CopiesKeepEveryTag) {
    Sample sample(newerDrawing());
    const AcDbObjectId block = addBlock(*sample.database, L"COPY", {});
    const std::string before = sample.text();
    AcDbIdMapping copies;
    ASSERT_EQ(sample.database->deepCloneObjects(listOf({sample.byHandle(0x2A), sample.byHandle(0x2B)}), block, copies),
              Acad::eOk);
    std::string told;
    for (const unsigned original : {0x2Au, 0x2Bu}) {
        AcDbObjectId copy;
        AcDbIdPair pair(sample.byHandle(original), AcDbObjectId(), false);
        ASSERT_TRUE(copies.compute(pair));
        copy = pair.value();
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(copy)->ownerId(), block);
        told += recordOf(sample.text(), copy);
    }
    EXPECT_EQ(told,
              " 0=LINE 5=53 330=50 100=AcDbEntity 8=PIPE 100=AcDbLine 10=0.0 20=0.0 11=1.0 21=0.0 1001=ACAD 1000=keep"
              " 1010=1.0 1020=2.0 1030=3.0 1001=PIPE-SERIAL 1000=JL-1"
              " 0=CIRCLE 5=54 330=50 100=AcDbEntity 8=0 62=1 60=1 100=AcDbCircle 10=0.0 20=0.0 40=1.0");
    EXPECT_EQ(sample.database->deepCloneObjects(listOf({sample.byHandle(0x32)}), block, copies),
              Acad::eWrongObjectType);

    // Attributes follow their reference; the space is told by the entity.
    Sample old(oldDrawing());
    AcDbBlockTableRecordIterator* made = nullptr;
    AcDbBlockTableRecordPointer(ACDB_MODEL_SPACE, old.database.get())->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    iterator->step();
    AcDbObjectId polyline;
    iterator->getEntityId(polyline);
    ASSERT_EQ(old.database->deepCloneObjects(listOf({polyline}), old.in<AcDbBlockTable>(ACDB_PAPER_SPACE), copies),
              Acad::eOk);
    EXPECT_EQ(old.changes(),
              " +0=POLYLINE +67=     1 +8=WALL +66=1 +10=0.0 +20=0.0 +0=VERTEX +67=     1 +8=WALL +10=0.0 +20=0.0"
              " +0=VERTEX +67=     1 +8=WALL +10=1.0 +20=0.0 +0=SEQEND +67=     1 +8=WALL");
}

TEST(DatabaseContent, TransformationsChangeTheNumbersTheyTouch) {
    // What applications keep in groups is none of the entity's.
    const std::string head = ";5=2A;102={X;10=7.0;40=7.0;50=7.0;102=};100=AcDbEntity;8=0;";
    const AcGeMatrix3d move = AcGeMatrix3d::translation({10.0, 20.0, 5.0});
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kQuarter, AcGeVector3d::kZAxis);
    const AcGeMatrix3d twice = AcGeMatrix3d::scaling(2.0);
    AcGeMatrix3d mirror;
    mirror(0, 0) = -1.0;

    EXPECT_EQ(transformed("0=LINE" + head + "100=AcDbLine;10=1;20=  2.50;11=3;21=4;31=0.0", move),
              " -10=1 -20=  2.50 -11=3 -21=4 -31=0.0 +10=11.0 +20=22.5 +30=5.0 +11=13.0 +21=24.0 +31=5.0");
    EXPECT_EQ(transformed("0=INSERT" + head + "100=AcDbBlockReference;2=P;10=1.0;20=0.0;30=0.0", twice),
              " -10=1.0 +10=2.0 +41=2.0 +42=2.0 +43=2.0");
    // A wheel around a quarter: the angle stays between 0 and 360.
    EXPECT_EQ(
        transformed("0=ARC" + head + "100=AcDbCircle;10=0.0;20=0.0;30=1.0;40=2.0;100=AcDbArc;50=300.0;51=10.0", turn),
        " -50=300.0 -51=10.0 +50=30.0 +51=100.0");
    // Mirrored, its plane is seen from the other side: from 10 to 40 degrees there is from 140 to 170 here.
    EXPECT_EQ(
        transformed("0=ARC" + head + "100=AcDbCircle;10=3.0;20=0.0;30=0.0;40=2.0;100=AcDbArc;50=10.0;51=40.0", mirror),
        " +210=0.0 +220=0.0 +230=-1.0");
    EXPECT_EQ(transformed(
                  "0=MTEXT" + head + "100=AcDbMText;10=3.0;20=0.0;30=0.0;40=2.0;1=x;101=Embedded Object;11=3.0;21=0.0",
                  mirror),
              " -10=3.0 +10=-3.0 +210=0.0 +220=0.0 +230=-1.0 -11=3.0 +11=-3.0");
    // A plane that looks along the x axis: 7 above it is 17 when moved by 10.
    EXPECT_EQ(transformed("0=LWPOLYLINE" + head +
                              "100=AcDbPolyline;90=2;70=0;38=7.0;10=0.0;20=0.0;10=1.0;20=0.0;210=1.0;220=0.0;230=0.0",
                          move),
              " -38=7.0 -10=0.0 -20=0.0 -10=1.0 -20=0.0 +38=17.0 +10=20.0 +20=5.0 +10=21.0 +20=5.0");
    EXPECT_EQ(
        transformed("0=HATCH" + head +
                        "100=AcDbHatch;10=0.0;20=0.0;30=0.0;210=0.0;220=0.0;230=1.0;2=ANSI31;70=0;71=0;91=1;92=1;"
                        "93=2;72=1;10=1.0;20=0.0;11=2.0;21=0.0;72=2;10=0.0;20=1.0;40=3.0;50=10.0;51=350.0;73=0;97="
                        "0;75=0;76=1;52=0.0;41=1.0;77=0;78=1;53=45.0;43=1.0;44=0.0;45=0.0;46=3.0;79=0;98=1;10=5.0;"
                        "20=0.0",
                    turn * twice),
        " -10=1.0 -20=0.0 -11=2.0 -21=0.0 -72=2 -20=1.0 -40=3.0 -50=10.0 -51=350.0 +20=2.0 +11=0.0 +21=4.0 +72=2"
        " +10=-2.0 +20=0.0 +40=6.0 +50=280.0 +51=260.0 -52=0.0 -41=1.0 +52=90.0 +41=2.0 -53=45.0 -43=1.0 -44=0.0"
        " -45=0.0 -46=3.0 +53=135.0 +43=0.0 +44=2.0 +45=-6.0 +46=0.0 -10=5.0 -20=0.0 +10=0.0 +20=10.0");
    AcGeMatrix3d skewed;
    skewed(0, 1) = 0.5;
    EXPECT_EQ(transformed("0=LINE" + head + "10=1.0;20=2.0", skewed, Acad::eCannotScaleNonUniformly), "");
    EXPECT_EQ(transformed("0=3DSOLID" + head + "1=x", move, Acad::eNotApplicable), "");
    EXPECT_EQ(
        transformed("0=DIMENSION" + head + "100=AcDbDimension;2=*D1;10=0.0;20=0.0;30=0.0", turn, Acad::eNotApplicable),
        "");
}

TEST(DatabaseContent, PointsAreThoseOfTheWorld) {
    const std::string head = ";5=2A;100=AcDbEntity;8=0;";
    const std::string point = "10=-102.0;20=3.0;30=-1.0";
    const std::string changes = " -10=-102.0 +10=-5.0";
    EXPECT_EQ(moved<AcDbCircle>("0=CIRCLE" + head + "100=AcDbCircle;" + point + ";40=1.0", &AcDbCircle::center,
                                &AcDbCircle::setCenter),
              changes);
    EXPECT_EQ(moved<AcDbBlockReference>("0=INSERT" + head + "100=AcDbBlockReference;2=P;" + point,
                                        &AcDbBlockReference::position, &AcDbBlockReference::setPosition),
              changes);
    EXPECT_EQ(moved<AcDbText>("0=TEXT" + head + "100=AcDbText;" + point + ";40=1.0;1=x", &AcDbText::position,
                              &AcDbText::setPosition),
              changes);
}

TEST(DatabaseContent, ViewportsFreezeLayersAsTheirDrawingWritesThem) {
    std::string text = newerDrawing();
    const std::string sheet = dxfText(
        "0=VIEWPORT;5=2C;330=1B;100=AcDbEntity;67=1;8=0;100=AcDbViewport;10=1.0;20=1.0;"
        "40=2.0;41=2.0;69=2;90=32864;331=10;340=0;1=;281=0");
    text.insert(text.find("  0\nENDSEC", text.find("CIRCLE")), sheet);
    Sample sample(text);
    AcDbObjectPointer<AcDbViewport> viewport(sample.byHandle(0x2C), AcDb::kForWrite);
    EXPECT_TRUE(viewport->isLayerFrozenInViewport(sample.layer(L"0")));
    EXPECT_FALSE(viewport->isLayerFrozenInViewport(sample.layer(L"PIPE")));
    ASSERT_EQ(viewport->freezeLayersInViewport(listOf({sample.layer(L"PIPE"), sample.layer(L"0")})), Acad::eOk);
    EXPECT_EQ(sample.changes(), " +331=11");
    ASSERT_EQ(viewport->thawLayersInViewport(listOf({sample.layer(L"0")})), Acad::eOk);
    AcDbObjectIdArray frozen;
    viewport->getFrozenLayerList(frozen);
    ASSERT_EQ(frozen.length(), 1);
    EXPECT_EQ(frozen[0], sample.layer(L"PIPE"));
    EXPECT_EQ(viewport->freezeLayersInViewport(listOf({sample.byHandle(0x2A)})), Acad::eInvalidLayer);
    ASSERT_EQ(viewport->thawLayersInViewport(frozen), Acad::eOk);
    ASSERT_EQ(viewport->freezeLayersInViewport(listOf({sample.layer(L"0")})), Acad::eOk);
    EXPECT_EQ(sample.changes(), "") << "the list as it was";

    // Thawing many takes a time like freezing them.
    AcDbObjectIdArray many;
    for (int i = 0; i < 3000; ++i) {
        AcDbLayerTableRecordPointer layer;
        layer.create();
        layer->setName((L"many" + std::to_wstring(i)).c_str());
        AcDbLayerTablePointer(sample.database.get(), AcDb::kForWrite)->add(layer.object());
        many.append(layer->objectId());
    }
    const std::clock_t start = std::clock();
    ASSERT_EQ(viewport->freezeLayersInViewport(many), Acad::eOk);
    const std::clock_t frozenAt = std::clock();
    ASSERT_EQ(viewport->thawLayersInViewport(many), Acad::eOk);
    EXPECT_LT(std::clock() - frozenAt, 20 * (frozenAt - start) + CLOCKS_PER_SEC / 10);
    EXPECT_TRUE(viewport->isLayerFrozenInViewport(sample.layer(L"0")));

    text = oldDrawing();
    const std::string view =
        "0=VIEWPORT;8=0;67=1;10=1.0;20=1.0;40=2.0;41=2.0;68=2;69=2;1001=ACAD;1000=MVIEW;1002={;1070=16;1040=0.5;1002={;"
        "1003=wall;1002=};1002=};1001=OTHER;1000=MVIEW;1002={;1002={;1003=PIPE;1002=};1002=}";
    text.insert(text.find("  0\nENDSEC", text.find("INSERT")), dxfText(view + ";0=VIEWPORT;8=0;67=1;69=3"));
    Sample old(text);
    AcDbBlockTableRecordIterator* made = nullptr;
    AcDbBlockTableRecordPointer(ACDB_PAPER_SPACE, old.database.get())->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    iterator->step();
    AcDbObjectId id;
    iterator->getEntityId(id);
    iterator->step();
    AcDbObjectId bare;
    iterator->getEntityId(bare);
    AcDbObjectPointer<AcDbViewport> named(id, AcDb::kForWrite);
    EXPECT_TRUE(named->isLayerFrozenInViewport(old.layer(L"WALL")));
    EXPECT_FALSE(named->isLayerFrozenInViewport(old.layer(L"PIPE")));
    ASSERT_EQ(named->freezeLayersInViewport(listOf({old.layer(L"PIPE")})), Acad::eOk);
    ASSERT_EQ(named->thawLayersInViewport(listOf({old.layer(L"WALL")})), Acad::eOk);
    EXPECT_EQ(old.changes(), " -1003=wall +1003=PIPE");
    EXPECT_EQ(
        AcDbObjectPointer<AcDbViewport>(bare, AcDb::kForWrite)->freezeLayersInViewport(listOf({old.layer(L"PIPE")})),
        Acad::eNotApplicable);
}

TEST(DatabaseContent, DictionariesAndRecordsOfValues) {
    std::string text = newerDrawing();
    const std::string entry = dxfText("3=Notes;350=32;");
    ASSERT_NE(text.find(entry), std::string::npos);
    // What an application keeps in a group is no entry.
    Sample sample(text.insert(text.find(entry) + entry.size(), dxfText("102={X;3=MARKS;350=2A;102=};")));
    AcDbDictionary* root = nullptr;
    ASSERT_EQ(sample.database->getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    AcDbObjectPointer<AcDbDictionary> dictionary;
    dictionary.acquire(root);
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbXrecord> record;
        record.create();
        const AcGePoint3d point(1.0, 2.0, 3.0);
        const Chain chain(acutBuildList(1, L"\u6392\u6C34", 70, 7, 40, 2.5, 10, asDblArray(point), 90, 70000, RTNONE));
        ASSERT_EQ(record->setFromRbChain(*chain), Acad::eOk);
        ASSERT_EQ(dictionary->setAt(L"Marks", record.object(), id), Acad::eOk);
        ASSERT_EQ(record->setFromRbChain(*chain), Acad::eOk);
        resbuf* read = nullptr;
        ASSERT_EQ(record->rbChain(&read), Acad::eOk);
        const Chain again(read);
        EXPECT_STREQ(again->resval.rstring, L"\u6392\u6C34");
        const Chain wrong(acutBuildList(1, L"x", 1070, 7, RTNONE));
        EXPECT_EQ(record->setFromRbChain(*wrong), Acad::eInvalidInput);
    }
    EXPECT_EQ(sample.changes(),
              " -5=50 +5=51 +3=Marks +350=50 +0=XRECORD +5=50 +330=C +100=AcDbXrecord +280=1"
              " +1=\xE6\x8E\x92\xE6\xB0\xB4 +70=7 +40=2.5 +10=1.0 +20=2.0 +30=3.0 +90=70000");
    {
        // Under a name that is taken: the object it had goes.
        AcDbObjectPointer<AcDbXrecord> record;
        record.create();
        AcDbObjectId other;
        ASSERT_EQ(dictionary->setAt(L"marks", record.object(), other), Acad::eOk);
        EXPECT_TRUE(id.isErased());
    }
    EXPECT_EQ(dictionary->remove(L"MARKS"), Acad::eOk);
    EXPECT_EQ(dictionary->remove(L"MARKS"), Acad::eKeyNotFound);
    EXPECT_EQ(sample.changes(), " -5=50 +5=52");

    AcDbObjectPointer<AcDbEntity> circle(sample.byHandle(0x2B), AcDb::kForWrite);
    EXPECT_EQ(circle->releaseExtensionDictionary(), Acad::eKeyNotFound);
    ASSERT_EQ(circle->createExtensionDictionary(), Acad::eOk);
    EXPECT_EQ(circle->releaseExtensionDictionary(), Acad::eOk);
    EXPECT_EQ(sample.changes(), " -5=50 +5=53") << "nothing of it is left";
    ASSERT_EQ(circle->createExtensionDictionary(), Acad::eOk);
    const AcDbObjectId extension = circle->extensionDictionary();
    EXPECT_EQ(AcDbObjectPointer<AcDbDictionary>(extension)->ownerId(), circle->objectId());
    AcDbObjectId hung;
    {
        AcDbObjectPointer<AcDbXrecord> record;
        record.create();
        AcDbObjectPointer<AcDbDictionary> its(extension, AcDb::kForWrite);
        ASSERT_EQ(its->setAt(L"HUNG", record.object(), hung), Acad::eOk);
    }
    EXPECT_EQ(circle->releaseExtensionDictionary(), Acad::eNotApplicable) << "it is not empty";
    EXPECT_EQ(circle->erase(), Acad::eOk);
    EXPECT_TRUE(extension.isErased() && hung.isErased());

    Sample old(oldDrawing());
    EXPECT_EQ(old.database->getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eNotApplicable);
    EXPECT_EQ(old.changes(), "");
}

TEST(DatabaseContent, CountsWhatNeedsARecord) {
    Sample old(oldDrawing());
    Adesk::UInt32 counts[4] = {9, 9, 9, 9};
    // Block contents and vertices count, spelled in whatever case; the sheet's text and three heads lie on "0".
    ASSERT_EQ(
        old.database->countHardReferences(
            listOf({old.layer(L"PIPE"), old.layer(L"WALL"), old.layer(L"0"), old.in<AcDbBlockTable>(L"PUMP")}), counts),
        Acad::eOk);
    EXPECT_EQ(counts[0], 2u);
    EXPECT_EQ(counts[1], 4u);
    EXPECT_EQ(counts[2], 3u);
    EXPECT_EQ(counts[3], 1u);

    std::string text = newerDrawing();
    text.insert(text.find("  0\nENDSEC", text.find("CIRCLE")),
                dxfText("0=VIEWPORT;5=2C;330=1B;100=AcDbEntity;67=1;8=0;100=AcDbViewport;69=2;331=11;341=11;"
                        "0=QRS_PIPE;5=2D;330=1F;100=AcDbEntity;8=0;100=TDbPipe;340=11;341=11;1001=ACAD;1003=PIPE"));
    Sample sample(text);
    ASSERT_EQ(sample.database->countHardReferences(
                  listOf({sample.layer(L"PIPE"), sample.in<AcDbLinetypeTable>(L"Continuous")}), counts),
              Acad::eOk);
    EXPECT_EQ(counts[0], 3u) << "the line, the block's point, the pipe once; not the viewport";
    EXPECT_EQ(counts[1], 2u) << "both layers";
    ASSERT_EQ(
        qrs::host::countOtherReferences(
            *sample.database, listOf({sample.layer(L"PIPE"), sample.in<AcDbLinetypeTable>(L"Continuous")}), counts),
        Acad::eOk);
    EXPECT_EQ(counts[0], 1u) << "the pipe's handle alone";
    EXPECT_EQ(counts[1], 2u) << "both layers";
    EXPECT_EQ(old.database->countHardReferences(listOf({sample.layer(L"PIPE")}), counts), Acad::eWrongDatabase);
}

TEST(DatabaseContent, LayoutsTellTheirBlocks) {
    AcDbDatabase database;
    AcDbDictionary* opened = nullptr;
    ASSERT_EQ(database.getLayoutDictionary(opened, AcDb::kForRead), Acad::eOk);
    AcDbObjectPointer<AcDbDictionary> layouts;
    layouts.acquire(opened);
    for (const wchar_t* name : {L"Model", L"Layout1"}) {
        AcDbObjectId id;
        ASSERT_EQ(layouts->getAt(name, id), Acad::eOk);
        const AcDbObjectPointer<AcDbLayout> layout(id);
        ACHAR* told = nullptr;
        layout->getLayoutName(told);
        EXPECT_EQ(taken(told), name);
        const AcDbBlockTableRecordPointer block(layout->getBlockTableRecordId());
        EXPECT_EQ(block->getLayoutId(), id);
        const ACHAR* blockName = nullptr;
        block->getName(blockName);
        EXPECT_STREQ(blockName, layout->modelType() ? ACDB_MODEL_SPACE : ACDB_PAPER_SPACE);
        EXPECT_EQ(layout->getTabOrder(), layout->modelType() ? 0 : 1);
    }
}

TEST(DatabaseContent, AuditorsFindNothingNew) {
    const Folder scratch;
    const auto run = [&](const std::string& task) {
        const std::string script = std::string(QRS_SOURCE_DIR) + "/tests/standard/drawings.py";
        return fs::exists("/usr/bin/python3") &&
               std::system(("/usr/bin/python3 '" + script + "' " + task + " '" + scratch.path().string() + "' > '" +
                            (scratch / "told.txt").string() + "'")
                               .c_str()) == 0;
    };
    if (!run("make")) GTEST_SKIP() << "no auditor here";
    std::vector<fs::path> made;
    for (const auto& entry : fs::directory_iterator(scratch.path()))
        if (entry.path().extension() == ".dxf") made.push_back(entry.path());
    for (const fs::path& file : made) {
        qrs::platform::Error error;
        const std::unique_ptr<AcDbDatabase> database = DatabaseAccess::open(file, error);
        ASSERT_TRUE(database) << error.message;
        acdbHostApplicationServices()->setWorkingDatabase(database.get());
        AcDbObjectId space;
        AcDbBlockTablePointer(database.get())->getAt(ACDB_MODEL_SPACE, space);
        drawAll(*database, space, AcDbObjectId());
        AcDbObjectId block;
        AcDbBlockTablePointer(database.get())->getAt(L"VALVE", block);
        AcDbObjectIdArray drawn;
        AcDbBlockTableRecordIterator* walk = nullptr;
        AcDbBlockTableRecordPointer(block)->newIterator(walk);
        for (AcDbObjectId id; walk->getEntityId(id) == Acad::eOk; walk->step())
            drawn.append(id);
        delete walk;
        AcDbIdMapping copies;
        ASSERT_EQ(database->deepCloneObjects(drawn, addBlock(*database, L"*U", {}), copies), Acad::eOk);
        AcDbDictionary* root = nullptr;
        if (database->getNamedObjectsDictionary(root, AcDb::kForWrite) == Acad::eOk) {
            AcDbObjectPointer<AcDbXrecord> record;
            record.create();
            AcDbObjectId id;
            EXPECT_EQ(root->setAt(L"QRS_TEST", record.object(), id), Acad::eOk);
            root->close();
            EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(drawn[0], AcDb::kForWrite)->createExtensionDictionary(), Acad::eOk);
        }
        const std::string name = file.stem().string();
        ASSERT_TRUE(DatabaseAccess::save(*database, scratch / (name + ".after.dxf"), false, error)) << error.message;
        fs::rename(file, scratch / (name + ".before.dxf"));
    }
    ASSERT_TRUE(run("compare"));
    std::ifstream told(scratch / "told.txt");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(told), {}), "");
}
