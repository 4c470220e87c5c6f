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

std::uint64_t lineNumber(std::string_view bytes, std::size_t offset, char lineEnd) {
    const auto begin = bytes.begin();
    return static_cast<std::uint64_t>(
               std::count(begin, begin + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size())), lineEnd)) +
           1;
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

void FieldReader::take(int code, std::string_view value, Interner& layers, bool copyNames) {
    Record& record = *record_;
    const Part part = place_.pass(code, value);
    if (part == Part::Xdata) record.flags |= kHasXdata;
    if (part != Part::Own) return;
    if (code == handleCode_) {
        if (!hasHandle_) record.handle = toHandle(value);
        hasHandle_ = true;
        return;
    }
    if (!isEntity_) return;
    switch (code) {
        case codes::kLayer:
            if (!hasLayer_) record.layer = copyNames ? layers.internCopy(value) : layers.intern(value);
            hasLayer_ = true;
            break;
        // Space and visibility stand in the part all entities share; behind it the codes may mean something else.
        case codes::kVisibility:
            if (place_.sections() <= 1 && toInteger(value) != 0) record.flags |= kInvisible;
            break;
        case codes::kPaperSpace:
            if (place_.sections() <= 1 && toInteger(value) == 1) record.flags |= kPaperSpace;
            break;
        default:
            break;
    }
}

}  // namespace qrs::dxf
