// What belongs to one database: its drawing file and what that holds, the objects that are open, its names.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "host/drawing/contents.h"
#include "host/drawing/eraser.h"
#include "host/dxf/drawing.h"
#include "host/objectarx/db/kinds.h"
#include "host/objectarx/db/openobjects.h"

namespace qrs::host {

class DatabaseState {
  public:
    DatabaseState(AcDbDatabase& owner, std::unique_ptr<dxf::Drawing> content);
    ~DatabaseState();
    DatabaseState(const DatabaseState&) = delete;
    DatabaseState& operator=(const DatabaseState&) = delete;

    // Null for null; null when no open drawing has the number.
    static DatabaseState* of(const AcDbDatabase* database) { return database ? database->hostState() : nullptr; }
    static DatabaseState* byNumber(std::uint32_t number);
    // The drawing in which an entity's names mean something: its own, or the working database; null when there is none.
    static DatabaseState* ofNames(const AcDbEntity& entity);
    // Another drawing in place of the present one; not while objects are open.
    void replace(std::unique_ptr<dxf::Drawing> content);
    // After the drawing was changed underneath: what was known of it is forgotten.
    void renew();
    // Before the drawing is written, and before a step of undo ends: open objects are written into it, pictures follow
    // their layers, and nothing in it points to what was erased.
    void settle();
    // The layer has another colour or weight.
    void layerChanged(std::uint32_t layer) { changedLayers_.insert(layer); }

    AcDbDatabase& database;
    const std::uint32_t number;
    std::filesystem::path path;  // native; empty for a new drawing
    std::wstring fileName;       // inner form
    std::wstring displayName;

    dxf::Drawing& drawing() const { return *drawing_; }
    Contents& contents() const { return *contents_; }
    SymbolTables& tables() const { return contents_->tables(); }
    const BlockIndex& blocks() const { return contents_->blocks(); }
    const ObjectIds& ids() const { return contents_->ids(); }
    ObjectKinds& kinds() const { return *kinds_; }
    OpenObjects& objects() { return objects_; }

    // The id of a record's object; null for kNoRecord.
    AcDbObjectId idOf(std::uint32_t record) const;
    // Whether the id is that of a record of such a table, in whatever open drawing.
    static bool isRecordOf(AcDbObjectId id, TableKind kind);

    // Copies entities into a block, see AcDbDatabase::deepCloneObjects.
    Acad::ErrorStatus clone(const AcDbObjectIdArray& ids, AcDbObjectId owner, AcDbIdMapping& idMap);
    Eraser& eraser() { return *eraser_; }
    Acad::ErrorStatus erase(std::uint32_t object, bool erasing);

  private:
    Acad::ErrorStatus bringBack(std::uint32_t object);

    std::unique_ptr<dxf::Drawing> drawing_;
    std::unique_ptr<Contents> contents_;
    std::unique_ptr<ObjectKinds> kinds_;
    OpenObjects objects_;
    std::unique_ptr<Eraser> eraser_;
    std::set<std::uint32_t> changedLayers_;  // since it settled
};

// Coordinates from the tags code, code + 10 and code + 20; 0 for those missing.
AcGePoint3d readPoint(const ObjectTags& tags, int code);

// A copy for callers that release it with acutDelString.
ACHAR* newString(const std::wstring& text);

}  // namespace qrs::host
