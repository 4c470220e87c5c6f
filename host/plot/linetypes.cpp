// Reads the table of linetypes.
#include "host/plot/linetypes.h"

#include <cmath>
#include <tuple>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/entity.h"
#include "host/platform/codepage.h"

namespace qrs::host::plot {

namespace {

namespace linetype = dxf::codes::linetype;
enum Carried { kUpright = 1, kText = 2, kShape = 4 };

std::wstring styleName(const dxf::Drawing& drawing, std::string_view handle) {
    const dxf::RecordId style = drawing.findHandle(dxf::toHandle(handle));
    dxf::Tag tag;
    if (style == dxf::kNoRecord || !drawing.findTag(style, dxf::codes::kName, tag)) return {};
    return readText(drawing, tag.value);
}

void take(const dxf::Drawing& drawing, const pick::Entity::Field& field, Linetype& result, long& shape) {
    const double value = pick::finiteOf(field.value).value_or(0.0);
    if (field.code == linetype::kDash) result.dashes.emplace_back().length = value;
    if (result.dashes.empty()) return;
    Dash& dash = result.dashes.back();
    const auto flags = static_cast<int>(dxf::toInteger(field.value));
    if (field.code == linetype::kCarried) {
        dash.isUpright = (flags & kUpright) != 0;
        shape = flags & kShape;
    }
    if (field.code == linetype::kShapeNumber && shape != 0) dash.shape = flags;
    if (field.code == linetype::kStyle) dash.style = styleName(drawing, field.value);
    if (field.code == linetype::kScale) dash.scale = value;
    if (field.code == linetype::kRotation) dash.rotation = value * pick::kRadiansPerDegree;
    if (field.code == linetype::kOffsetX) dash.offsetX = value;
    if (field.code == linetype::kOffsetY) dash.offsetY = value;
    if (field.code == linetype::kText) dash.text = readText(drawing, field.value);
}

}  // namespace

bool Dash::operator==(const Dash& other) const {
    const auto fields = [](const Dash& dash) {
        return std::tie(dash.length, dash.text, dash.shape, dash.style, dash.scale, dash.rotation, dash.isUpright,
                        dash.offsetX, dash.offsetY);
    };
    return fields(*this) == fields(other);
}

void Linetypes::read() const {
    isRead_ = true;
    const dxf::RecordId table = drawing_.findTable("LTYPE");
    if (table == dxf::kNoRecord) return;
    pick::Entity record;
    for (dxf::RecordId id = drawing_.next(table); id != dxf::kNoRecord; id = drawing_.next(id)) {
        if (drawing_.record(id).kind != dxf::RecordKind::TableRecord) break;
        record.read(drawing_, id);
        Linetype one;
        long shape = 0;
        for (const pick::Entity::Field& field : record.fields())
            take(drawing_, field, one, shape);
        for (const Dash& dash : one.dashes)
            one.length += std::fabs(dash.length);
        if (one.length > 0.0) linetypes_.emplace(platform::foldCase(record.text(dxf::codes::kName)), std::move(one));
    }
}

const Linetype* Linetypes::find(const std::wstring& foldedName) const {
    if (!isRead_) read();
    const auto found = linetypes_.find(foldedName);
    return found == linetypes_.end() ? nullptr : &found->second;
}

}  // namespace qrs::host::plot
