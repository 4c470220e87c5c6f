// The places of faults.
#include "host/dxf/fault.h"

#include <algorithm>
#include <utility>

#include "host/dxf/codeform.h"
#include "host/dxf/tags.h"

namespace qrs::dxf {

std::string Fault::message() const {
    std::string place = line != 0 ? "line " + std::to_string(line) : "byte " + std::to_string(offset);
    if (handle != 0) place += ", handle " + handleText(handle);
    return place + ": " + text;
}

void Faults::add(std::size_t offset, RecordId record, std::string text) {
    if (all_.size() == kMost) {
        ++further_;
        return;
    }
    Fault fault;
    fault.offset = offset;
    fault.record = record;
    fault.text = std::move(text);
    all_.push_back(std::move(fault));
}

void Faults::finish(std::string_view bytes, char lineEnd, const RecordStore& records) {
    std::stable_sort(all_.begin(), all_.end(), [](const Fault& a, const Fault& b) { return a.offset < b.offset; });
    std::size_t counted = 0;
    std::uint64_t line = 1;
    for (Fault& fault : all_) {
        // Each line is counted from the fault before.
        if (lineEnd != kBinaryLineEnd) {
            const auto offset = static_cast<std::size_t>(fault.offset);
            line += lineNumber(bytes.substr(counted), offset - counted, lineEnd) - 1;
            counted = offset;
            fault.line = line;
        }
        if (fault.record != kNoRecord) fault.handle = records[fault.record].handle;
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
