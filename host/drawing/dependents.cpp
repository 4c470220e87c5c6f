// Records that cannot be without others.
#include "host/drawing/dependents.h"

#include <algorithm>

#include "host/drawing/lostreferences.h"
#include "host/dxf/references.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

Dependents::Dependents(const dxf::Drawing& drawing) {
    for (RecordId id = 0; id < drawing.recordCount(); ++id) {
        const RecordKind kind = drawing.record(id).kind;
        const bool isObject = kind == RecordKind::Object || kind == RecordKind::Other;
        if (isObject && !drawing.isErased(id)) add(drawing, id);
    }
    std::sort(all_.begin(), all_.end(), [](const Dependent& a, const Dependent& b) { return a.on < b.on; });
}

void Dependents::add(const dxf::Drawing& drawing, RecordId record) {
    dxf::ReferencePlace place(drawing.typeNameOf(record));
    dxf::Tag tag;
    for (dxf::TagCursor cursor = drawing.tags(record); cursor.next(tag);) {
        const dxf::ReferenceRule* rule = place.pass(tag.code, tag.value);
        if (!rule || rule->isLayerName) continue;
        const bool isList = rule->emptied == dxf::Emptied::Record;
        if (!isList && rule->loss != dxf::Loss::Record) continue;
        const std::uint64_t handle = dxf::toHandle(tag.value);
        if (handle != 0) all_.push_back({handle, record, isList});
        if (isList) ++left_[record];
    }
}

std::vector<Dependents::Dependent> Dependents::of(const GoneRecords& gone) const {
    std::vector<Dependent> found;
    for (const Dependent& one : all_)
        if (gone.has(one.on)) found.push_back(one);
    return found;
}

std::vector<Dependents::Dependent> Dependents::of(std::uint64_t handle) const {
    const auto first = std::lower_bound(all_.begin(), all_.end(), handle,
                                        [](const Dependent& one, std::uint64_t on) { return one.on < on; });
    auto last = first;
    while (last != all_.end() && last->on == handle)
        ++last;
    return {first, last};
}

bool Dependents::loses(const Dependent& dependent) {
    return !dependent.isList || --left_[dependent.record] == 0;
}

}  // namespace qrs::host
