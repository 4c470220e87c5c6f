// The symbol tables of one drawing: their records by name, and new ones.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/drawing/tableformat.h"

namespace qrs::host {

// "ByLayer" and "ByBlock" need no record: old drawings have none for them.
bool isLogicalLinetype(std::wstring_view name);

// Speaks of the tables that have records of their own; blocks are found through BlockIndex.
class SymbolTables {
  public:
    explicit SymbolTables(dxf::Drawing& drawing) : drawing_(drawing) {}

    // The head of a table; kNoRecord when the file lacks it.
    dxf::RecordId head(TableKind kind) const { return drawing_.findTable(tableFormat(kind).name); }
    // The table a record belongs to; false when it belongs to none known.
    bool kindOf(dxf::RecordId record, TableKind& kind) const;
    // Records alive, in file order.
    std::vector<dxf::RecordId> records(TableKind kind) const;
    // By name without regard to case, the first of several; kNoRecord when there is none.
    dxf::RecordId find(TableKind kind, std::wstring_view name) const;
    std::wstring nameOf(dxf::RecordId record) const;

    // Puts a record into the table, after making the table where the file has none.
    dxf::RecordId add(TableKind kind, const DetachedTags& own);
    // Puts an application into the table "APPID" unless it is there.
    void registerApplication(std::wstring_view name);
    // A record was erased or brought back.
    void countChanged(TableKind kind, dxf::RecordId record, int by);
    void renamed(TableKind kind) {
        names_[static_cast<std::size_t>(kind)].built = false;
        ++layerAge_;
    }

    // Moves on whenever the names of layers may mean other records than before.
    unsigned layerAge() const { return layerAge_; }

  private:
    struct Names {
        bool built = false;
        std::unordered_map<std::wstring, dxf::RecordId> records;
    };

    dxf::RecordId makeHead(TableKind kind);
    dxf::RecordId siblingOf(TableKind kind) const;
    std::vector<dxf::NewTag> composed(const TableFormat& format, const DetachedTags& own, dxf::RecordId head);
    std::vector<dxf::NewTag> ownTags(const TableFormat& format, const DetachedTags& own, dxf::RecordId sibling) const;
    std::string sample(dxf::RecordId sibling, int code) const;

    dxf::Drawing& drawing_;
    mutable std::array<Names, kTableCount> names_;
    unsigned layerAge_ = 1;
};

}  // namespace qrs::host
