// Everything a database keeps beside its drawing file: its number, names, tables, blocks, and the objects that are
// open.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "host/drawing/blocks.h"
#include "host/drawing/tables.h"
#include "host/dxf/drawing.h"
#include "host/objectarx/db/kinds.h"

namespace qrs::host {

class DatabaseState {
  public:
    DatabaseState(AcDbDatabase& owner, std::unique_ptr<dxf::Drawing> content);
    ~DatabaseState();
    DatabaseState(const DatabaseState&) = delete;
    DatabaseState& operator=(const DatabaseState&) = delete;

    // Null for null; null when no open drawing has the number.
    static DatabaseState* of(const AcDbDatabase* database) { return database ? database->state_.get() : nullptr; }
    static DatabaseState* byNumber(std::uint32_t number);
    // The drawing in which an entity's names mean something: its own, or the working database; null when there is none.
    static DatabaseState* ofNames(const AcDbEntity& entity);
    // Another drawing in place of the present one; not while objects are open.
    void replace(std::unique_ptr<dxf::Drawing> content);
    // After the drawing was changed underneath.
    void renew();
    bool hasOpenObjects() const { return !open_.empty(); }

    AcDbDatabase& database;
    const std::uint32_t number;
    std::filesystem::path path;  // native; empty for a new drawing
    std::wstring fileName;       // inner form
    std::wstring displayName;

    dxf::Drawing& drawing() const { return *drawing_; }
    SymbolTables& tables() { return *tables_; }
    BlockIndex& blocks() { return *blocks_; }

    // --- ids
    AcDbObjectId idOf(std::uint32_t record) const;
    // kNoRecord as well for tables that the file lacks and unnamed spaces.
    dxf::RecordId recordOf(std::uint32_t object) const;
    bool isObject(std::uint32_t object) const;
    bool isErased(std::uint32_t object) const;
    std::uint64_t handleOf(std::uint32_t object) const;
    std::uint32_t ownerOf(std::uint32_t object);  // kNoRecord when unknown
    static bool isTable(std::uint32_t object) { return object >= kTableIds && object < kTableIds + kTableCount; }
    static std::uint32_t tableId(TableKind kind) { return kTableIds + static_cast<std::uint32_t>(kind); }

    // --- the layer an entity names, and what is found by name in tables; kNoRecord when there is none
    dxf::RecordId layerOf(dxf::RecordId entity);
    dxf::RecordId layerNamed(dxf::NameId name);
    std::uint32_t findNamed(TableKind kind, std::wstring_view name);

    // --- objects
    Acad::ErrorStatus open(AcDbObject*& object, std::uint32_t record, AcDb::OpenMode mode, bool openErased);
    // True while a C++ object is made for one of a drawing.
    static bool isOpening() { return opening_; }
    static Acad::ErrorStatus close(AcDbObject& object);
    // A new object becomes the record's, open for writing.
    void adopt(AcDbObject& object, std::uint32_t record);
    static void forget(AcDbObject& object);
    // Puts a new entity behind the others of a block.
    Acad::ErrorStatus append(AcDbEntity& entity, std::uint32_t blockId);
    // Puts a new object that is no entity behind the others of the drawing.
    Acad::ErrorStatus appendObject(AcDbObject& object, std::uint64_t owner);
    // The dictionary all others lie under, made when the drawing has none; kNoRecord in one older than AC1012.
    dxf::RecordId ensureRootDictionary();
    // Copies entities into a block, see AcDbDatabase::deepCloneObjects.
    Acad::ErrorStatus clone(const AcDbObjectIdArray& ids, AcDbObjectId owner, AcDbIdMapping& idMap);
    // Moves an entity with what belongs to it, see AcDbEntity::transformBy.
    Acad::ErrorStatus transform(dxf::RecordId entity, const AcGeMatrix3d& matrix);
    // A new block, empty; its base point stands in the own tags.
    std::uint32_t addBlock(const DetachedTags& own, std::wstring_view wantedName);
    // Takes an object that is no entity out of the drawing, with what it owns.
    void eraseObject(dxf::RecordId object);
    // An object of a class that the drawing tells of came or went.
    void countInstance(dxf::RecordId object, int by);
    // The values of classes that applications bring, from the object's tags, and into them when it was modified.
    void readFields(AcDbObject& object);
    static void writeFields(AcDbObject& object);
    void writeOpenObjects();
    AcRxClass* classOf(std::uint32_t object);
    // The tags of an object outside any drawing; null for others.
    static DetachedTags* ownTags(const AcDbObject& object) { return object.own_.get(); }
    static std::uint32_t recordNumber(const AcDbObject& object) { return object.record_; }
    const RecordFormat& formatOf(std::uint32_t object) const;
    // Whether the id is that of a record of such a table, in whatever open drawing.
    static bool isRecordOf(AcDbObjectId id, TableKind kind);
    Acad::ErrorStatus erase(std::uint32_t object, bool erasing);

  private:
    const ObjectKind& kindOf(std::uint32_t object);
    static Acad::ErrorStatus addOpening(AcDbObject& object, AcDb::OpenMode mode);
    Acad::ErrorStatus bringBack(std::uint32_t object);
    void leave(std::uint32_t object, std::vector<dxf::RecordId> leaving);
    Acad::ErrorStatus spellTags(const DetachedTags& own, std::string_view dxfName, std::vector<dxf::NewTag>& tags);
    void addCommonTags(const std::vector<dxf::NewTag>& own, const Block& block, std::vector<dxf::NewTag>& tags) const;
    void addOwnTags(const std::vector<dxf::NewTag>& own, const RecordFormat& format,
                    std::vector<dxf::NewTag>& tags) const;
    Acad::ErrorStatus fieldTags(const AcDbObject& object, std::vector<dxf::NewTag>& tags);
    void tellOf(const AcRxClass& rxClass);
    dxf::RecordId classRecordOf(dxf::RecordId object);
    void gatherBlock(const Block& block, std::vector<dxf::RecordId>& leaving) const;
    void gatherExtension(dxf::RecordId record, std::vector<dxf::RecordId>& leaving) const;

    static bool opening_;
    std::unique_ptr<dxf::Drawing> drawing_;
    std::unique_ptr<SymbolTables> tables_;
    std::unique_ptr<BlockIndex> blocks_;
    std::unordered_map<std::uint32_t, AcDbObject*> open_;
    std::unordered_map<std::uint32_t, std::vector<dxf::RecordId>> erasedWith_;  // what left the drawing with an object
    std::vector<bool> erasedAlone_;                                             // by object: nothing left with it
    std::vector<dxf::RecordId> layerByName_;                                    // by NameId
    unsigned layerAge_ = 0;
    std::vector<dxf::RecordId> classByType_;      // the CLASS record of each type
    std::vector<const ObjectKind*> entityKinds_;  // by type, as of kindAge_
    unsigned kindAge_ = 0;
};

// The dictionary all others lie under; kNoRecord when the drawing has none.
dxf::RecordId rootDictionary(const dxf::Drawing& drawing);

// Coordinates from the tags code, code + 10 and code + 20; 0 for those missing.
AcGePoint3d readPoint(const ObjectTags& tags, int code);

// A copy for callers that release it with acutDelString.
ACHAR* newString(const std::wstring& text);

}  // namespace qrs::host
