// The symbol tables of drawing files, as data: their names, their records' classes and tags.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/drawing/objecttags.h"

namespace qrs::host {

// In the order in which files write the tables.
enum class TableKind : std::uint8_t { Viewport, Linetype, Layer, TextStyle, View, Ucs, RegApp, DimStyle, Block };
constexpr std::size_t kTableCount = 9;

// A tag a new record gets when its neighbours in the table have it; null value: the neighbour's.
struct SiblingTag {
    int code;
    const char* value;
};

struct TableFormat {
    TableKind kind;
    const char* name;            // of the table, and of its records
    const char* recordSubclass;  // after AcDbSymbolTableRecord, from AC1012 on
    int handleCode;
    RecordFormat record;
    const SiblingTag* siblingTags;
    std::size_t siblingTagCount;
};

const TableFormat& tableFormat(TableKind kind);
// Null when no table bears the name.
const TableFormat* findTableFormat(std::string_view name);

}  // namespace qrs::host
