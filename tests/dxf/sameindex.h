// What one reading of a file, by one reader or by two, has found otherwise than another one.
#pragma once

#include <string>

#include "host/dxf/index.h"

namespace qrs::dxf {

// Empty when nothing differs.
inline std::string differenceOf(const Index& a, const Index& b) {
    const auto sameNames = [](const Interner& one, const Interner& two) {
        if (one.size() != two.size()) return false;
        for (std::uint32_t number = 0; number < one.size(); ++number) {
            if (one[number] != two[number]) return false;
        }
        return true;
    };
    if (a.records.size() != b.records.size()) return "count of records";
    for (RecordId id = 0; id < a.records.size(); ++id) {
        const Record& one = a.records[id];
        const Record& two = b.records[id];
        if (one.offset != two.offset || one.stored != two.stored || one.layer != two.layer ||
            one.handle != two.handle || one.owner != two.owner || one.type != two.type || one.kind != two.kind ||
            one.flags != two.flags || a.refers(id) != b.refers(id))
            return "record " + std::to_string(id);
    }
    if (!sameNames(a.types, b.types) || !sameNames(a.layers, b.layers)) return "names";
    if (a.sections != b.sections || a.tables != b.tables || a.headerVariables != b.headerVariables) return "heads";
    if (a.ends != b.ends) return "ends";
    if (a.greatestHandle != b.greatestHandle) return "greatest handle";
    if (a.faults.summary() != b.faults.summary() || a.faults.all().size() != b.faults.all().size())
        return "faults: " + a.faults.summary() + " / " + b.faults.summary();
    for (std::size_t i = 0; i < a.faults.all().size(); ++i) {
        const Fault& one = a.faults.all()[i];
        const Fault& two = b.faults.all()[i];
        if (one.kind != two.kind || one.offset != two.offset || one.record != two.record || one.text != two.text)
            return "fault " + std::to_string(i);
    }
    return {};
}

// Bytes as they are read by one reader, or by two of which the second begins after a place.
class Reading {
  public:
    Reading(std::string_view bytes, std::size_t second)
        : isDrawing_(buildIndex(bytes, nullptr, index_, reason_, second)) {}
    std::string differenceOf(const Reading& other) const {
        if (isDrawing_ != other.isDrawing_) return "one is refused";
        if (isDrawing_) return dxf::differenceOf(index_, other.index_);
        return reason_.offset == other.reason_.offset && reason_.text == other.reason_.text ? "" : "reasons of refusal";
    }

  private:
    Index index_;
    Fault reason_;
    bool isDrawing_;
};

}  // namespace qrs::dxf
