// Whatever was changed, taking it back gives the drawing its bytes again.
#include "support.h"

#include <filesystem>
#include <fstream>
#include <random>

#include "../folder.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbxrecrd.h"
#include "gemat3d.h"

using namespace dbtest;
namespace dxf = qrs::dxf;
namespace fs = std::filesystem;

namespace {

// Changes of all kinds, of things found by chance.
class Editing {
  public:
    Editing(AcDbDatabase& database, unsigned seed) : database_(database), random_(seed) {}

    void change() {
        using Change = void (Editing::*)();
        static constexpr Change kChanges[] = {
            &Editing::addLayer, &Editing::changeLayer, &Editing::moveEntity,  &Editing::erase,     &Editing::addText,
            &Editing::addBlock, &Editing::addRecord,   &Editing::setVariable, &Editing::transform, &Editing::bringBack};
        (this->*kChanges[upTo(std::size(kChanges))])();
    }

  private:
    std::size_t upTo(std::size_t end) { return random_() % end; }
    std::wstring freshName() { return L"NEW-" + std::to_wstring(++names_); }

    template <class Table>
    AcDbObjectIdArray recordsOf() const {
        AcDbObjectIdArray ids;
        typename Table::Iterator* made = nullptr;
        AcDbSymbolTablePointer<Table>(&database_)->newIterator(made);
        const std::unique_ptr<typename Table::Iterator> iterator(made);
        for (AcDbObjectId id; iterator->getRecordId(id) == Acad::eOk; iterator->step())
            ids.append(id);
        return ids;
    }
    AcDbObjectId anyLayer() {
        const AcDbObjectIdArray ids = recordsOf<AcDbLayerTable>();
        return ids[static_cast<int>(upTo(static_cast<std::size_t>(ids.length())))];
    }
    AcDbObjectId space() const {
        AcDbObjectId id;
        AcDbBlockTablePointer(&database_)->getAt(ACDB_MODEL_SPACE, id);
        return id;
    }
    AcDbObjectId anyEntity() {
        AcDbObjectIdArray ids;
        AcDbBlockTableRecordIterator* made = nullptr;
        AcDbBlockTableRecordPointer(space())->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        for (AcDbObjectId id; iterator->getEntityId(id) == Acad::eOk; iterator->step())
            ids.append(id);
        return ids.isEmpty() ? AcDbObjectId() : ids[static_cast<int>(upTo(static_cast<std::size_t>(ids.length())))];
    }

    void addLayer() {
        AcDbObjectPointer<AcDbLayerTableRecord> layer;
        layer.create();
        layer->setName(freshName().c_str());
        AcDbLayerTablePointer(&database_, AcDb::kForWrite)->add(layer);
    }
    void changeLayer() {
        AcDbLayerTableRecordPointer layer(anyLayer(), AcDb::kForWrite);
        layer->setIsOff(!layer->isOff());
        if (upTo(4) == 0) layer->setName(freshName().c_str());
    }
    void moveEntity() {
        AcDbEntityPointer entity(anyEntity(), AcDb::kForWrite);
        if (entity.openStatus() != Acad::eOk) return;
        entity->setLayer(anyLayer());
        entity->setColorIndex(static_cast<Adesk::UInt16>(upTo(256)));
    }
    void erase() {
        AcDbObjectPointer<AcDbObject> object(upTo(3) == 0 ? anyLayer() : anyEntity(), AcDb::kForWrite);
        if (object.openStatus() == Acad::eOk && object->erase() == Acad::eOk) erased_ = object->objectId();
    }
    void bringBack() {
        AcDbObjectPointer<AcDbObject> object(erased_, AcDb::kForWrite, true);
        if (object.openStatus() == Acad::eOk) object->erase(false);
    }
    void addText() {
        AcDbObjectPointer<AcDbText> text;
        text.create();
        text->setTextString(freshName().c_str());
        AcDbBlockTableRecordPointer(space(), AcDb::kForWrite)->appendAcDbEntity(text.object());
    }
    void addBlock() {
        AcDbObjectPointer<AcDbBlockTableRecord> block;
        block.create();
        block->setName(freshName().c_str());
        AcDbObjectId id;
        AcDbBlockTablePointer(&database_, AcDb::kForWrite)->add(id, block);
        block.close();
        AcDbObjectIdArray ids;
        if (const AcDbObjectId one = anyEntity(); !one.isNull()) ids.append(one);
        AcDbIdMapping copies;
        database_.deepCloneObjects(ids, id, copies);
    }
    void addRecord() {
        AcDbDictionary* root = nullptr;
        if (database_.getNamedObjectsDictionary(root, AcDb::kForWrite) != Acad::eOk) return;
        AcDbObjectPointer<AcDbDictionary> dictionary;
        dictionary.acquire(root);
        AcDbObjectPointer<AcDbXrecord> record;
        record.create();
        AcDbObjectId id;
        dictionary->setAt(upTo(2) == 0 ? L"SAME" : freshName().c_str(), record.object(), id);
    }
    void setVariable() {
        database_.setLtscale(1.0 + static_cast<double>(upTo(1000)));
        database_.setClayer(anyLayer());
    }
    void transform() {
        AcDbEntityPointer entity(anyEntity(), AcDb::kForWrite);
        if (entity.openStatus() == Acad::eOk) entity->transformBy(AcGeMatrix3d::translation({1.5, 2.5, 0.0}));
    }

    AcDbDatabase& database_;
    std::mt19937 random_;
    AcDbObjectId erased_;
    int names_ = 0;
};

// Steps of a few changes; one of them that changes nothing; taken back in reverse, with something done in between.
void editAndTakeBack(const std::string& bytes, unsigned seed) {
    const Sample sample(bytes);
    Editing editing(*sample.database, seed);
    std::vector<std::string> states;
    for (int step = 0; step < 6; ++step) {
        DatabaseAccess::beginStep(*sample.database, L"STEP");
        const std::string before = sample.text();
        for (unsigned change = 0; change < 1 + seed % 5; ++change)
            editing.change();
        if (sample.text() != before) states.push_back(before);
    }
    DatabaseAccess::beginStep(*sample.database, L"NOTHING");
    std::wstring name;
    bool goesOn = true;
    while (DatabaseAccess::takeBack(*sample.database, name)) {
        EXPECT_EQ(name, L"STEP");
        ASSERT_FALSE(states.empty()) << seed;
        // Changes that cancel each other make a step as well.
        while (sample.text() != states.back() && DatabaseAccess::takeBack(*sample.database, name)) {
        }
        ASSERT_EQ(sample.text(), states.back()) << seed;
        states.pop_back();
        if (std::exchange(goesOn, false)) {
            DatabaseAccess::beginStep(*sample.database, L"STEP");
            const std::string before = sample.text();
            editing.change();
            if (sample.text() != before) states.push_back(before);
        }
    }
    EXPECT_TRUE(states.empty()) << seed;
    EXPECT_EQ(sample.text(), bytes) << seed;
    EXPECT_FALSE(DatabaseAccess::isModified(*sample.database));
    // What is found by name and handle is that of the drawing as it is.
    Sample fresh(bytes);
    for (const wchar_t* layer : {L"0", L"PIPE", L"NEW-1"})
        EXPECT_EQ(sample.layer(layer).isNull(), fresh.layer(layer).isNull());
}

}  // namespace

TEST(DatabaseUndo, AnyChangesAreTakenBackToTheByte) {
    std::vector<std::string> drawings{oldDrawing(), newerDrawing()};
    // The last one is binary.
    for (const char* name : {"examples/building.dxf", "examples/building-r12.dxf",
                             "../shared/corpus/dxf/mozman__ezdxf/integration_tests/data/bin_dxf_r14.dxf"}) {
        std::ifstream file(fs::path(QRS_SOURCE_DIR) / name, std::ios::binary);
        if (file) drawings.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    for (std::size_t i = 0; i < drawings.size(); ++i)
        for (unsigned seed = 0; seed < (i < 2 ? 150u : 10u); ++seed)
            editAndTakeBack(drawings[i], seed);
}

TEST(DatabaseUndo, SavingIsNotTakenBack) {
    const Sample sample(newerDrawing());
    const Folder scratch;
    const fs::path file = scratch / "saved.dxf";
    DatabaseAccess::beginStep(*sample.database, L"SET");
    sample.database->setLtscale(7.0);
    qrs::platform::Error error;
    ASSERT_TRUE(DatabaseAccess::save(*sample.database, file, false, error)) << error.message;
    EXPECT_FALSE(DatabaseAccess::isModified(*sample.database));
    std::wstring name;
    ASSERT_TRUE(DatabaseAccess::takeBack(*sample.database, name));
    EXPECT_EQ(sample.text(), newerDrawing());
    EXPECT_TRUE(DatabaseAccess::isModified(*sample.database)) << "the file has what was taken back";
    EXPECT_FALSE(DatabaseAccess::takeBack(*sample.database, name));
}
