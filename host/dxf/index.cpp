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
            handleCode_ = 5;
            break;
        case RecordKind::TableRecord:
            // Code 5 of a dimension style is the name of an arrow block, so its handle moved to 105.
            handleCode_ = record.type == kTypeDimStyle ? 105 : 5;
            break;
        case RecordKind::Table:
        case RecordKind::EndTable:
        case RecordKind::Object:
            handleCode_ = 5;
            break;
        default:  // code 5 of $HANDSEED and its like is a value, not the record's own handle
            break;
    }
    subclasses_ = 0;
    inGroup_ = false;
    hasHandle_ = false;
    hasLayer_ = false;
    inEmbedded_ = false;
}

void FieldReader::take(int code, std::string_view value, Interner& layers, bool copyNames) {
    Record& record = *record_;
    if (code >= 1000) {
        record.flags |= kHasXdata;
        return;
    }
    if ((record.flags & kHasXdata) != 0) return;
    if (code == 102) {
        value = trimmed(value);
        if (!value.empty() && value.front() == '{') inGroup_ = true;
        if (!value.empty() && value.front() == '}') inGroup_ = false;
        return;
    }
    if (code == 101) inEmbedded_ = true;
    // What an embedded object says of itself is not said of the record.
    if (inGroup_ || inEmbedded_) return;
    if (code == handleCode_) {
        if (!hasHandle_) record.handle = toHandle(value);
        hasHandle_ = true;
        return;
    }
    if (!isEntity_) return;
    switch (code) {
        case 8:
            if (!hasLayer_) record.layer = copyNames ? layers.internCopy(value) : layers.intern(value);
            hasLayer_ = true;
            break;
        case 100:
            ++subclasses_;
            break;
        // Space and visibility stand in the part all entities share; behind it the codes may mean something else.
        case 60:
            if (subclasses_ <= 1 && toInteger(value) != 0) record.flags |= kInvisible;
            break;
        case 67:
            if (subclasses_ <= 1 && toInteger(value) == 1) record.flags |= kPaperSpace;
            break;
        default:
            break;
    }
}

}  // namespace qrs::dxf
