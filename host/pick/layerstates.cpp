// The states of layers, from the layer table.
#include "host/pick/layerstates.h"

#include "host/platform/codepage.h"

namespace qrs::host::pick {

namespace {

std::int64_t integerOf(const dxf::Drawing& drawing, dxf::RecordId id, int code, std::int64_t fallback) {
    dxf::Tag tag;
    return drawing.findTag(id, code, tag) ? dxf::toInteger(tag.value, fallback) : fallback;
}

}  // namespace

std::wstring layerName(const dxf::Drawing& drawing, dxf::NameId layer) {
    return layer == dxf::kNoName ? L"0" : drawing.decode(dxf::trimmed(drawing.name(layer)));
}

LayerStates::LayerStates(const dxf::Drawing& drawing) : drawing_(drawing) {
    constexpr int kName = 2;
    constexpr int kFlags = 70;
    constexpr int kColor = 62;  // negative when the layer is off
    const dxf::RecordId table = drawing.findTable("LAYER");
    if (table == dxf::kNoRecord) return;
    for (dxf::RecordId id = drawing.next(table); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::TableRecord) break;
        dxf::Tag tag;
        const std::wstring name =
            drawing.findTag(id, kName, tag) ? drawing.decode(dxf::trimmed(tag.value)) : std::wstring();
        const int frozen = (integerOf(drawing, id, kFlags, 0) & 1) != 0 ? kFrozenLayer : 0;
        const int off = integerOf(drawing, id, kColor, 7) < 0 ? kOffLayer : 0;
        states_[platform::foldCase(name)] = frozen | off | (name == L"0" ? kLayerZero : 0);
    }
}

void LayerStates::freeze(std::wstring_view layer) {
    states_[platform::foldCase(layer)] |= kFrozenLayer;
    known_.clear();
}

int LayerStates::ofName(dxf::NameId layer) const {
    const auto [known, fresh] = known_.emplace(layer, 0);
    if (!fresh) return known->second;
    const std::wstring name = layerName(drawing_, layer);
    const int state = find(name);
    known->second = state >= 0 ? state : name == L"0" ? int{kLayerZero} : 0;
    return known->second;
}

int LayerStates::find(std::wstring_view layer) const {
    const auto found = states_.find(platform::foldCase(layer));
    return found == states_.end() ? -1 : found->second;
}

}  // namespace qrs::host::pick
