// Reads the handles that entities are sorted by.
#include "host/pick/draworder.h"

#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/entity.h"

namespace qrs::host::pick {

DrawOrder::DrawOrder(const dxf::Drawing& drawing, const Block* space) : drawing_(drawing) {
    namespace sortents = dxf::codes::sortents;
    const dxf::RecordId objects = drawing.findSection("OBJECTS");
    if (!space || objects == dxf::kNoRecord || space->id >= drawing.recordCount()) return;
    const std::uint64_t spaceHandle = drawing.record(space->id).handle;
    Entity table;
    for (dxf::RecordId id = drawing.next(objects); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::Object) break;
        if (drawing.typeNameOf(id) != "SORTENTSTABLE") continue;
        table.read(drawing, id);
        std::uint64_t block = 0;
        std::uint64_t entity = 0;
        for (const Entity::Field& field : table.fields()) {
            if (field.code == sortents::kSpace)
                block = dxf::toHandle(field.value);  // the last one; before it stands the owner
            if (field.code == sortents::kEntity) entity = dxf::toHandle(field.value);
            if (field.code == sortents::kSortHandle && entity != 0 && block == spaceHandle)
                keys_[entity] = dxf::toHandle(field.value);
        }
    }
}

std::uint64_t DrawOrder::keyOf(dxf::RecordId id) const {
    const std::uint64_t handle = drawing_.record(id).handle;
    const auto found = keys_.find(handle);
    return found == keys_.end() ? handle : found->second;
}

void DrawOrder::sort(std::vector<dxf::RecordId>& ids) const {
    if (keys_.empty()) return;
    std::stable_sort(ids.begin(), ids.end(), [&](dxf::RecordId a, dxf::RecordId b) { return keyOf(a) < keyOf(b); });
}

}  // namespace qrs::host::pick
