// The layouts of a drawing.
#include "host/drawing/layouts.h"

#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"

namespace qrs::host {

namespace {

// The plot settings come first in the object; both halves have a name and an owner.
Layout readLayout(const dxf::Drawing& drawing, const BlockIndex& blocks, dxf::RecordId id) {
    Layout layout{{}, nullptr, 0};
    dxf::RecordWalk walk(drawing.tags(id));
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;) {
        if (!walk.isOwn() || walk.section() != "AcDbLayout") continue;
        if (tag.code == dxf::codes::kText) layout.name = drawing.decode(tag.value);
        if (tag.code == dxf::codes::layout::kTab) layout.tab = static_cast<int>(dxf::toInteger(tag.value));
        if (tag.code == dxf::codes::layout::kBlock)
            layout.block = blocks.byId(drawing.findHandle(dxf::toHandle(tag.value)));
    }
    return layout;
}

}  // namespace

std::vector<Layout> layoutsOf(const dxf::Drawing& drawing, const BlockIndex& blocks) {
    std::vector<Layout> layouts;
    const Block* model = blocks.bySpace(Space::Model);
    if (model) layouts.push_back({L"Model", model, 0});
    const dxf::RecordId section = drawing.findSection("OBJECTS");
    if (section != dxf::kNoRecord) {
        const dxf::RecordId end = drawing.endOf(section);
        for (dxf::RecordId id = drawing.next(section); id != end && id != dxf::kNoRecord; id = drawing.next(id)) {
            if (drawing.record(id).kind != dxf::RecordKind::Object || drawing.typeNameOf(id) != "LAYOUT") continue;
            Layout layout = readLayout(drawing, blocks, id);
            if (layout.block && layout.block != model) layouts.push_back(std::move(layout));
        }
    }
    const Block* paper = blocks.bySpace(Space::Paper);
    if (paper && layouts.size() == 1) layouts.push_back({{}, paper, 1});
    return layouts;
}

}  // namespace qrs::host
