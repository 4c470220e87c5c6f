// What the numbers in object ids stand for.
//
// The number of an object is that of its record in the drawing. What files do not hold as a record has a number above
// all records: the tables, which are there even where a file lacks them, and the two spaces where nothing names them
// (see blocks.h).
#pragma once

#include <cstdint>
#include <string_view>

#include "host/drawing/blocks.h"
#include "host/drawing/tables.h"

namespace qrs::host {

constexpr std::uint32_t kTableIds = 0xFFFFFF00u;

constexpr std::uint32_t tableId(TableKind kind) {
    return kTableIds + static_cast<std::uint32_t>(kind);
}
constexpr bool isTableId(std::uint32_t object) {
    return object >= kTableIds && object < kTableIds + kTableCount;
}
constexpr TableKind tableKindOf(std::uint32_t tableId) {
    return static_cast<TableKind>(tableId - kTableIds);
}

class ObjectIds {
  public:
    ObjectIds(const dxf::Drawing& drawing, const SymbolTables& tables, const BlockIndex& blocks)
        : drawing_(drawing), tables_(tables), blocks_(blocks) {}

    // The object of a record; kNoRecord for no record, and for the head of an unknown table.
    std::uint32_t of(dxf::RecordId record) const {
        const bool isTable = record < drawing_.recordCount() && drawing_.record(record).kind == dxf::RecordKind::Table;
        return isTable ? ofTable(record) : record;
    }
    // kNoRecord as well for tables that the file lacks and for unnamed spaces.
    dxf::RecordId recordOf(std::uint32_t object) const;
    bool isObject(std::uint32_t object) const;
    bool isErased(std::uint32_t object) const;
    // Whether it is a record of such a table.
    bool isRecordOf(std::uint32_t object, TableKind kind) const;
    // 0 where there is none.
    std::uint64_t handleOf(std::uint32_t object) const;
    // kNoRecord when unknown.
    std::uint32_t ownerOf(std::uint32_t object) const;
    // What bears a name in a table; kNoRecord when nothing does.
    std::uint32_t find(TableKind kind, std::wstring_view name) const;
    // The order of the object's tags.
    const RecordFormat& formatOf(std::uint32_t object) const;

  private:
    std::uint32_t ofTable(dxf::RecordId head) const;

    const dxf::Drawing& drawing_;
    const SymbolTables& tables_;
    const BlockIndex& blocks_;
};

}  // namespace qrs::host
