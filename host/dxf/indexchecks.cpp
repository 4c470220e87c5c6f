// What is wrong in a file although it can be cut into records.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "host/dxf/binary.h"
#include "host/dxf/blocknesting.h"
#include "host/dxf/indexer.h"
#include "host/dxf/references.h"
#include "host/dxf/tags.h"
#include "host/dxf/tagsweep.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

namespace {

// Records that tables hold without counting them: the linetypes ByLayer and ByBlock, the blocks of model and paper
// space, the editor's own application.
struct Uncounted {
    std::string_view name;
    int records;
};
constexpr Uncounted kUncounted[] = {{"LTYPE", 2}, {"BLOCK_RECORD", 3}, {"APPID", 1}};

}  // namespace

// The first value of a code in the open record or table head; empty when it has none.
std::string Indexer::valueIn(const char* place, const char* end, int code, const char*& found) const {
    std::string value;
    for (RawTag tag{}; place != end && cut(place, tag) == Cut::Tag; place = tag.next) {
        if (tag.code != code) continue;
        found = place;
        if (index_.lineEnd == kBinaryLineEnd) {
            appendValueText(tag, value);
        } else {
            value = trimmed(textOf(tag));
        }
        break;
    }
    return value;
}

// The count in a table's head is the most it may hold, so a greater one is none the worse.
void Indexer::checkCount(const char* at) {
    const char* const head = start_ + index_.records[group_].offset;
    const char* const headEnd = lastId() == group_ ? at : start_ + index_.records[group_ + 1].offset;
    const char* place = head;
    const char* ignored = head;
    const std::string name = valueIn(head, headEnd, codes::kName, ignored);
    const std::string value = valueIn(head, headEnd, codes::kTableCount, place);
    if (value.empty()) return;
    std::int64_t count = lastId() - group_;
    for (const Uncounted& table : kUncounted) {
        if (table.name == name) count = std::max(std::int64_t{0}, count - table.records);
    }
    if (toInteger(value, -1) >= count) return;
    fault(place, group_, FaultKind::WrongCount,
          translated("the table says %1 records and holds %2", value, lastId() - group_));
}

// The vertices of a polyline are as many as it says.
void Indexer::checkVertices(const char* at) {
    const char* const begin = start_ + current_->offset;
    const char* counted = nullptr;
    std::int64_t count = 0;
    LineEnds ends;
    RawTag tag{};
    for (const char* place = begin; place != at; place = tag.next) {
        const bool isNear =
            kFastTags && index_.lineEnd != kBinaryLineEnd && static_cast<std::size_t>(end_ - place) >= LineEnds::kReach;
        const bool isCut = isNear && cache_.fastTag(place, index_.lineEnd, ends, tag) != nullptr;
        if (!isCut && cut(place, tag) != Cut::Tag) break;
        count += tag.code == codes::kPoint;
        if (tag.code == codes::kVertexCount && counted == nullptr) counted = place;
    }
    if (counted == nullptr) return;
    const std::string value = valueIn(counted, at, codes::kVertexCount, counted);
    if (toInteger(value, count) == count) return;
    fault(counted, lastId(), FaultKind::WrongCount,
          translated("the polyline says %1 vertices and has %2", value, count));
}

// Looks for pointers to nothing once more, for their places, when there are any.
void Indexer::checkPointers() {
    if (pointedTo_.isPartOf(given_)) return;
    const bool isText = index_.lineEnd != kBinaryLineEnd;
    TagSweep sweep({start_, static_cast<std::size_t>(end_ - start_)}, index_.lineEnd);
    for (RecordId id = 0; id < index_.records.size(); ++id) {
        const Record& record = index_.records[id];
        if (!hasPointers(record.kind)) continue;
        const char* place = start_ + record.offset;
        const char* const recordEnd = place + record.stored;
        ReferencePlace references(index_.types[record.type]);
        const auto next = [&](RawTag& tag) {
            return isText ? sweep.next(tag) : place != recordEnd && cut(place, tag) == Cut::Tag;
        };
        sweep.begin({place, record.stored});
        for (RawTag tag{}; next(tag); place = tag.next) {
            const ReferenceRule* rule = references.pass(tag.code, textOf(tag));
            if (!rule || rule->loss == Loss::Stays || !isResolved(referenceOf(tag.code))) continue;
            const std::uint64_t handle = toHandle(textOf(tag));
            if (handle == 0 || given_.has(handle)) continue;
            fault(place, id, FaultKind::DeadPointer,
                  index_.faults.isFull()
                      ? std::string()
                      : translated("group code %1 points to %2, which no record is", tag.code, handleText(handle)));
        }
    }
}

// Blocks that show themselves, on their own or by way of others. What is shown of them ends at the second time.
void Indexer::checkBlocks() {
    constexpr std::string_view kAlsoShow[] = {"DIMENSION", "ACAD_TABLE"};
    const auto showsBlock = [&](const Record& record) {
        if (record.type == kTypeInsert) return true;
        return std::find(std::begin(kAlsoShow), std::end(kAlsoShow), index_.types[record.type]) != std::end(kAlsoShow);
    };
    BlockNesting nesting;
    for (const auto& [head, end] : index_.ends) {
        if (index_.records[head].kind != RecordKind::Block) continue;
        const auto nameOf = [&](RecordId id) {
            const char* const place = start_ + index_.records[id].offset;
            const char* ignored = place;
            return valueIn(place, place + index_.records[id].stored, codes::kName, ignored);
        };
        bool isNamed = false;
        for (RecordId id = head + 1; id < end; ++id) {
            if (!showsBlock(index_.records[id])) continue;
            if (!std::exchange(isNamed, true)) nesting.beginBlock(nameOf(head));
            nesting.addShown(nameOf(id), id);
        }
    }
    for (const auto& [id, name] : nesting.cycles())
        fault(start_ + index_.records[id].offset, id, FaultKind::BlockInItself,
              translated("the block %1 lies in itself", printable(name)));
}

// Looks for numbers as they are written where the comma stands for the point. Programs read them as far as the comma,
// or refuse the file. Done in steps while the bytes are still near.
void Indexer::checkNumbers(const char* end) {
    if (index_.lineEnd == kBinaryLineEnd) return;
    const char* at = numbersChecked_ == nullptr ? start_ : numbersChecked_;
    while (at < end) {
        const auto* comma = static_cast<const char*>(std::memchr(at, ',', static_cast<std::size_t>(end - at)));
        if (comma == nullptr) break;
        checkNumber(comma);
        at = comma + 1;
    }
    numbersChecked_ = std::max(end, at);
}

void Indexer::checkNumber(const char* comma) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char* begin = comma;
    while (begin != start_ && isDigit(begin[-1]))
        --begin;
    const char* end = comma + 1;
    while (end != end_ && isDigit(*end))
        ++end;
    if (begin == comma || end == comma + 1) return;
    const char* lineBegin = begin;
    while (lineBegin != start_ && (lineBegin[-1] == ' ' || lineBegin[-1] == '-' || lineBegin[-1] == '+'))
        --lineBegin;
    while (end != end_ && (*end == ' ' || *end == '\r'))
        ++end;
    if (lineBegin == start_ || lineBegin[-1] != index_.lineEnd || (end != end_ && *end != index_.lineEnd)) return;
    const char* codeBegin = lineBegin - 1;
    while (codeBegin != start_ && codeBegin[-1] != index_.lineEnd)
        --codeBegin;
    RawTag tag{};
    if (cutTag(codeBegin, end_, index_.lineEnd, tag) != Cut::Tag || isTextual(valueKindOf(tag.code))) return;
    fault(lineBegin, kNoRecord, FaultKind::ForeignNumber,
          translated("group code %1 has the value %2, which other programs do not read as a number", tag.code,
                     printable(trimmed(textOf(tag)))));
}

// Line ends of two bytes, and the last one has only its first: the file was cut off there.
void Indexer::checkLastLine() {
    if (index_.lineEnd != '\n' || end_ == start_ || end_[-1] != '\r') return;
    fault(end_ - 1, kNoRecord, FaultKind::CutLineEnd, translated("the file is cut off between CR and LF"));
}

}  // namespace qrs::dxf
