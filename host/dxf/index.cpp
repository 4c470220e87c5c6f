// What an index is made of: names the reader knows, and the fields of one record.
#include "host/dxf/index.h"

#include <algorithm>

#include "host/dxf/tags.h"

namespace qrs::dxf {

Index::Index() {
    for (const char* name : {"SECTION", "ENDSEC", "EOF", "TABLE", "ENDTAB", "BLOCK", "ENDBLK", "CLASS", "POLYLINE",
                             "INSERT", "VERTEX", "ATTRIB", "SEQEND", "DIMSTYLE", "LWPOLYLINE"}) {
        types.intern(name);
    }
}

std::uint16_t typeNumber(std::uint32_t interned) {
    return interned < kTypeUncounted ? static_cast<std::uint16_t>(interned) : kTypeUncounted;
}

RecordId Index::endOf(RecordId head) const {
    if (const auto found = newEnds.find(head); found != newEnds.end()) return found->second;
    const auto place =
        std::lower_bound(ends.begin(), ends.end(), head, [](const auto& pair, RecordId id) { return pair.first < id; });
    return place != ends.end() && place->first == head ? place->second : kNoRecord;
}

void Index::noteNew(RecordId id) {
    const Record& one = records[id];
    switch (one.kind) {
        case RecordKind::Section:
            sections.push_back(id);
            break;
        case RecordKind::Table:
            tables.push_back(id);
            break;
        case RecordKind::HeaderVariable:
            headerVariables.push_back(id);
            break;
        case RecordKind::EndSection:
        case RecordKind::EndTable:
        case RecordKind::EndBlock:
            if (one.owner != kNoRecord) newEnds[one.owner] = id;
            break;
        default:
            break;
    }
}

void FieldReader::begin(Record& record) {
    record_ = &record;
    record.handle = 0;
    record.layer = kNoName;
    record.flags &= static_cast<std::uint8_t>(~(kPaperSpace | kInvisible | kHasXdata));
    isEntity_ = false;
    handleCode_ = -1;
    switch (record.kind) {
        case RecordKind::Entity:
        case RecordKind::Block:
        case RecordKind::EndBlock:
            isEntity_ = true;
            handleCode_ = codes::kHandle;
            break;
        case RecordKind::TableRecord:
            handleCode_ = record.type == kTypeDimStyle ? codes::kDimStyleHandle : codes::kHandle;
            break;
        case RecordKind::Table:
        case RecordKind::EndTable:
        case RecordKind::Object:
            handleCode_ = codes::kHandle;
            break;
        default:  // code 5 of $HANDSEED and its like is a value, not the record's own handle
            break;
    }
    place_ = RecordPlace();
    hasHandle_ = false;
    hasLayer_ = false;
}

void RecordFields::begin(std::string_view type) {
    record_.type = typeNumber(index_.types.internCopy(trimmed(type)));
    fields_.begin(record_);
    isFirst_ = false;
}

}  // namespace qrs::dxf
