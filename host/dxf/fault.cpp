// The places of faults.
#include "host/dxf/fault.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/dxf/codeform.h"
#include "host/dxf/tags.h"

namespace qrs::dxf {

namespace {

struct KindName {
    FaultKind kind;
    const char* one;
    const char* several;
};
constexpr KindName kKindNames[] = {
    {FaultKind::UnknownVersion, "unknown version", "unknown versions"},
    {FaultKind::CutLineEnd, "cut line end", "cut line ends"},
    {FaultKind::MissingEnd, "missing end", "missing ends"},
    {FaultKind::StrayRecord, "stray record", "stray records"},
    {FaultKind::WrongCount, "wrong count", "wrong counts"},
    {FaultKind::HandleTwice, "handle given twice", "handles given twice"},
    {FaultKind::DeadPointer, "pointer to nothing", "pointers to nothing"},
    {FaultKind::NoName, "missing name", "missing names"},
    {FaultKind::NoGroupCode, "number that is no group code", "numbers that are no group codes"},
    {FaultKind::ForeignNumber, "number that other programs do not read", "numbers that other programs do not read"},
};
static_assert(std::size(kKindNames) == kFaultKinds);

std::string placeOf(const Fault& fault) {
    return fault.line != 0 ? "line " + std::to_string(fault.line) : "byte " + std::to_string(fault.offset);
}

}  // namespace

std::string Fault::message() const {
    std::string place = placeOf(*this);
    if (handle != 0) place += ", handle " + handleText(handle);
    return place + ": " + text;
}

void Faults::add(std::size_t offset, RecordId record, FaultKind kind, std::string text) {
    Fault fault;
    fault.kind = kind;
    fault.offset = offset;
    fault.record = record;
    Sum& sum = sums_[static_cast<std::size_t>(kind)];
    if (sum.count++ == 0 || offset < sum.first.offset) sum.first = fault;
    if (all_.size() == kMost) {
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
        kinds += (kinds.empty() ? "" : ", ") + std::to_string(sum.count) + " " +
                 (sum.count == 1 ? name.one : name.several) + (sum.count == 1 ? " (" : " (first: ") +
                 placeOf(sum.first) + ")";
    }
    if (count == 0) return {};
    return std::to_string(count) + (count == 1 ? " error: " : " errors: ") + kinds;
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
    last.text = std::to_string(further_) + " further errors";
    all_.push_back(std::move(last));
}

std::uint64_t lineNumber(std::string_view bytes, std::size_t offset, char lineEnd) {
    if (lineEnd == kBinaryLineEnd) return 0;
    const auto begin = bytes.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size()));
    return static_cast<std::uint64_t>(std::count(begin, end, lineEnd)) + 1;
}

}  // namespace qrs::dxf
