// The places of faults.
#include "host/dxf/fault.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/dxf/codeform.h"
#include "host/dxf/tags.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;
using platform::untranslated;

namespace {

struct KindName {
    FaultKind kind;
    const char* one;
    const char* several;
};
constexpr KindName kKindNames[] = {
    {FaultKind::UnknownVersion, untranslated("unknown version"), untranslated("unknown versions")},
    {FaultKind::CutLineEnd, untranslated("cut line end"), untranslated("cut line ends")},
    {FaultKind::MissingEnd, untranslated("missing end"), untranslated("missing ends")},
    {FaultKind::StrayRecord, untranslated("stray record"), untranslated("stray records")},
    {FaultKind::WrongCount, untranslated("wrong count"), untranslated("wrong counts")},
    {FaultKind::HandleTwice, untranslated("handle given twice"), untranslated("handles given twice")},
    {FaultKind::DeadPointer, untranslated("pointer to nothing"), untranslated("pointers to nothing")},
    {FaultKind::NoName, untranslated("missing name"), untranslated("missing names")},
    {FaultKind::NoGroupCode, untranslated("number that is no group code"),
     untranslated("numbers that are no group codes")},
    {FaultKind::ForeignNumber, untranslated("number that other programs do not read"),
     untranslated("numbers that other programs do not read")},
    {FaultKind::BlockInItself, untranslated("block in itself"), untranslated("blocks in themselves")},
};
static_assert(std::size(kKindNames) == kFaultKinds);

std::string placeOf(const Fault& fault) {
    return fault.line != 0 ? translated("line %1", fault.line) : translated("byte %1", fault.offset);
}

}  // namespace

std::string Fault::message() const {
    return handle != 0 ? translated("%1, handle %2: %3", placeOf(*this), handleText(handle), text)
                       : translated("%1: %2", placeOf(*this), text);
}

void Faults::add(std::size_t offset, RecordId record, FaultKind kind, std::string text) {
    Fault fault;
    fault.kind = kind;
    fault.offset = offset;
    fault.record = record;
    Sum& sum = sums_[static_cast<std::size_t>(kind)];
    if (sum.count++ == 0 || offset < sum.first.offset) sum.first = fault;
    if (isFull()) {
        ++further_;
        return;
    }
    fault.text = std::move(text);
    all_.push_back(std::move(fault));
}

std::string Faults::summary() const {
    std::uint64_t count = 0;
    std::string kinds;
    for (const KindName& name : kKindNames) {
        const Sum& sum = sums_[static_cast<std::size_t>(name.kind)];
        if (sum.count == 0) continue;
        count += sum.count;
        if (!kinds.empty()) kinds += translated(", ");
        kinds += sum.count == 1
                     ? translated("1 %1 (%2)", translated(name.one), placeOf(sum.first))
                     : translated("%1 %2 (first: %3)", sum.count, translated(name.several), placeOf(sum.first));
    }
    if (count == 0) return {};
    return count == 1 ? translated("1 error: %1", kinds) : translated("%1 errors: %2", count, kinds);
}

void Faults::finish(std::string_view bytes, char lineEnd, const RecordStore& records) {
    std::stable_sort(all_.begin(), all_.end(), [](const Fault& a, const Fault& b) { return a.offset < b.offset; });
    std::vector<Fault*> placed;
    for (Fault& fault : all_) {
        placed.push_back(&fault);
        if (fault.record != kNoRecord) fault.handle = records[fault.record].handle;
    }
    for (Sum& sum : sums_)
        if (sum.count > 0) placed.push_back(&sum.first);
    std::stable_sort(placed.begin(), placed.end(),
                     [](const Fault* a, const Fault* b) { return a->offset < b->offset; });
    std::size_t counted = 0;
    std::uint64_t line = 1;
    for (Fault* fault : placed) {
        if (lineEnd == kBinaryLineEnd) break;
        // Each line is counted from the fault before.
        const auto offset = static_cast<std::size_t>(fault->offset);
        line += lineNumber(bytes.substr(counted), offset - counted, lineEnd) - 1;
        counted = offset;
        fault->line = line;
    }
    if (further_ == 0) return;
    Fault last = all_.back();
    last.record = kNoRecord;
    last.handle = 0;
    last.text = translated("%1 further errors", further_);
    all_.push_back(std::move(last));
}

std::uint64_t lineNumber(std::string_view bytes, std::size_t offset, char lineEnd) {
    if (lineEnd == kBinaryLineEnd) return 0;
    const auto begin = bytes.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size()));
    return static_cast<std::uint64_t>(std::count(begin, end, lineEnd)) + 1;
}

}  // namespace qrs::dxf
