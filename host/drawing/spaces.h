// The entities of a drawing's spaces: of its model, and of each of its sheets.
#pragma once

#include "host/drawing/blocks.h"
#include "host/dxf/drawing.h"

namespace qrs::host {

// A space, by where its entities lie: those of the model and of the sheet that was shown last in the ENTITIES section,
// told apart by a mark; those of every other sheet in a block of its own.
struct EntitySpace {
    Space kind = Space::Model;
    dxf::RecordId head = dxf::kNoRecord;  // of that block; the kind is None then

    bool operator==(const EntitySpace& other) const { return kind == other.kind && head == other.head; }
};
constexpr EntitySpace kModelSpace{Space::Model, dxf::kNoRecord};
constexpr EntitySpace kShownSheet{Space::Paper, dxf::kNoRecord};

// The space of a block that is one; a space of None without head for another block.
EntitySpace spaceOf(const Block& block);

// True for an entity that lies in a layout, not in a block definition.
bool liesInLayout(const dxf::Drawing& drawing, dxf::RecordId id);
bool liesInSpace(const dxf::Drawing& drawing, EntitySpace space, dxf::RecordId id);

// The main entities of a space, in drawing order.
template <typename Take>
void forEachEntityOfSpace(const dxf::Drawing& drawing, EntitySpace space, Take&& take) {
    const bool hasBlock = space.head != dxf::kNoRecord;
    const dxf::RecordId head = hasBlock ? space.head : drawing.findSection("ENTITIES");
    if (head == dxf::kNoRecord || (!hasBlock && space.kind == Space::None)) return;
    const dxf::RecordId end = drawing.endOf(head);
    for (dxf::RecordId id = drawing.next(head); id != end && id != dxf::kNoRecord; id = drawing.next(id)) {
        const dxf::Record& record = drawing.record(id);
        if (record.kind != dxf::RecordKind::Entity || (record.flags & dxf::kSubEntity) != 0) continue;
        const bool onPaper = (record.flags & dxf::kPaperSpace) != 0;
        if (hasBlock || onPaper == (space.kind == Space::Paper)) take(id);
    }
}

// The main entities of all layouts (no vertices, no attributes): those of the model and of the sheet shown last in
// drawing order, then those of the other sheets.
template <typename Take>
void forEachEntity(const dxf::Drawing& drawing, Take&& take) {
    for (const char* section : {"ENTITIES", "BLOCKS"}) {
        const dxf::RecordId head = drawing.findSection(section);
        if (head == dxf::kNoRecord) continue;
        for (dxf::RecordId id = drawing.next(head); id != dxf::kNoRecord; id = drawing.next(id)) {
            const dxf::Record& record = drawing.record(id);
            if (record.kind == dxf::RecordKind::EndSection) break;
            if (record.kind == dxf::RecordKind::Entity && !(record.flags & dxf::kSubEntity) &&
                liesInLayout(drawing, id))
                take(id);
        }
    }
}

}  // namespace qrs::host
