// The tags of the kinds of entities that can be made and changed, as data.
#pragma once

#include "host/drawing/objecttags.h"
#include "host/drawing/tableformat.h"

namespace qrs::host {

// The format of a kind of entity by its DXF name, what all entities share included; that alone for other kinds.
const RecordFormat& entityFormatOf(std::string_view dxfName);

// A tag by which a kind of entity names a record of a table.
struct NamingTag {
    const char* dxfName;  // empty: every kind
    int code;
    TableKind table;
    bool isOwner = false;  // a block without a name of its own that it names belongs to it
};
// All of them; what all kinds share comes last.
const std::vector<NamingTag>& namingTags();
// The table a tag of such an entity names a record of; null when it names none.
const NamingTag* namingTag(std::string_view dxfName, int code);

}  // namespace qrs::host
