// Any bytes: they open or are refused with a message. What opens comes back byte for byte, also after edits that are
// taken back, and what is edited opens again with the same index. Two readers side by side answer as one does.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "host/dxf/drawing.h"
#include "tests/dxf/sameindex.h"

namespace {

using namespace qrs::dxf;
using qrs::fuzz::check;

// Walks everything; the records must lie end to end.
void walk(const Drawing& drawing, std::size_t size) {
    std::size_t total = 0;
    Tag tag;
    for (RecordId id = drawing.first(); id != kNoRecord; id = drawing.next(id)) {
        const Record& record = drawing.record(id);
        check(record.owner == kNoRecord || record.owner < id, "an owner after its record");
        check(record.offset == total, "records do not lie end to end");
        total += record.stored;
        std::uint32_t end = 0;
        for (TagCursor cursor = drawing.tags(id); cursor.next(tag);) {
            check(tag.begin >= end && tag.end > tag.begin && tag.end <= drawing.length(id), "tags overlap");
            end = tag.end;
            (void)drawing.encode(drawing.decode(tag.value));
        }
        if (record.handle != 0) check(drawing.findHandle(record.handle) <= id, "a handle that is not found");
        if (record.kind == RecordKind::Block || record.kind == RecordKind::Table) {
            check(drawing.endOf(id) != kNoRecord, "a head without an end");
        }
    }
    check(total == size, "records do not fill the file");
}

void sameIndex(const Drawing& edited) {
    qrs::platform::Error error;
    const auto again = Drawing::fromBytes(edited.toBytes(), "again", error);
    check(again != nullptr, error.message.c_str());
    RecordId theirs = again->first();
    for (RecordId ours = edited.first(); ours != kNoRecord; ours = edited.next(ours), theirs = again->next(theirs)) {
        check(theirs != kNoRecord, "fewer records after writing");
        const Record& a = edited.record(ours);
        const Record& b = again->record(theirs);
        // What is erased may have been what kept a stray VERTEX from its POLYLINE, so that flag may differ.
        constexpr unsigned kTold = kPaperSpace | kInvisible | kHasXdata;
        check(a.kind == b.kind && a.handle == b.handle && (a.flags & kTold) == (b.flags & kTold) &&
                  edited.typeNameOf(ours) == again->typeNameOf(theirs) && edited.name(a.layer) == again->name(b.layer),
              "the index after edits is not the index of what was written");
    }
    check(theirs == kNoRecord, "more records after writing");
}

// Every second tag gets another after it, every third the value of the one before.
void editAtOnce(Drawing& drawing, RecordId id) {
    std::vector<TagEdit> edits;
    std::string before;
    TagEdit edit;
    for (TagCursor cursor = drawing.tags(id); cursor.next(edit.tag);) {
        const std::size_t number = edits.size();
        // The first tag makes the record what it is; a value of another kind of code could not be written.
        edit.hasValue = number != 0 && number % 3 == 0 && edits.back().tag.code == edit.tag.code;
        edit.value = before;
        edit.after.clear();
        if (number % 2 == 1) edit.after.push_back({1, "\r"});
        before = std::string(edit.tag.value);
        edits.push_back(edit);
    }
    drawing.editTags(id, edits);
}

void edit(Drawing& drawing, std::uint32_t choice) {
    Tag tag;
    std::uint32_t number = 0;
    for (RecordId id = drawing.first(); id != kNoRecord; id = drawing.next(id)) {
        const RecordKind kind = drawing.record(id).kind;
        if (kind == RecordKind::TableRecord || kind == RecordKind::Entity) {
            const std::uint32_t what = (choice >> (number++ % 16 * 2)) & 3;
            if (what == 1 && (choice & 64) != 0) editAtOnce(drawing, id);
            if (what == 1 && drawing.findTag(id, 8, tag)) drawing.setValue(id, tag, "MOVED\n");
            if (what == 2) drawing.insertTags(id, drawing.length(id), {{1001, "QRS"}, {1000, "x"}});
            if (what == 3) drawing.eraseRecord(id);
        }
        if (kind == RecordKind::EndBlock && (choice & 16) != 0) {
            drawing.insertRecord(id, RecordKind::Entity,
                                 {{0, "VERTEX"}, {5, handleText(drawing.newHandle())}, {8, "NEW"}});
        }
        if (kind == RecordKind::Table && (choice & 32) != 0) drawing.adjustTableCount(id, 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
#if defined(QRS_FUZZ_BINARY)
    // Every input is a binary drawing, so that no time goes into finding the signature.
    if (bytes.substr(0, kBinarySignature.size()) != kBinarySignature) bytes.insert(0, kBinarySignature);
#endif
    const std::size_t second = bytes.size() / 4 * (1 + size % 3);
    const std::string difference = Reading(bytes, kAlone).differenceOf(Reading(bytes, second));
    check(difference.empty(), difference.c_str());
    qrs::platform::Error error;
    const auto drawing = Drawing::fromBytes(bytes, "input", error);
    if (drawing == nullptr) {
        check(error.message.size() > 7 && error.message.find('\n') == std::string::npos, "no message of one line");
        return 0;
    }
    check(drawing->toBytes() == bytes, "unchanged but not the same");
    walk(*drawing, bytes.size());
    for (const Fault& fault : drawing->faults())
        check(fault.offset <= bytes.size() && !fault.message().empty(), "a fault of no place");
    std::uint32_t choice = static_cast<std::uint32_t>(size);
    for (std::size_t i = 0; i < size; i += 7)
        choice = choice * 31 + data[i];
    drawing->beginStep(L"edit");
    edit(*drawing, choice);
    sameIndex(*drawing);
    if (drawing->lastStep() != nullptr) drawing->takeBack();
    check(drawing->toBytes() == bytes && !drawing->isModified(), "taken back but not the same");
    return 0;
}
