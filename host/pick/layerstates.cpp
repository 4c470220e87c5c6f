// The states of layers, from the layer table.
#include "host/pick/layerstates.h"

#include "host/drawing/objecttags.h"
#include "host/dxf/groupcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host::pick {

namespace {

std::int64_t integerOf(const dxf::Drawing& drawing, dxf::RecordId id, int code, std::int64_t fallback) {
    dxf::Tag tag;
    return drawing.findTag(id, code, tag) ? dxf::toInteger(tag.value, fallback) : fallback;
}

}  // namespace

std::wstring layerName(const dxf::Drawing& drawing, dxf::NameId layer) {
    return layer == dxf::kNoName ? L"0" : readText(drawing, drawing.name(layer));
}

dxf::RecordId LayerStates::recordOf(std::wstring_view layer) const {
    if (tables_) return tables_->find(TableKind::Layer, layer);
    if (!records_) {
        records_.emplace();
        const dxf::RecordId table = drawing_.findTable("LAYER");
        for (dxf::RecordId id = table == dxf::kNoRecord ? table : drawing_.next(table); id != dxf::kNoRecord;
             id = drawing_.next(id)) {
            if (drawing_.record(id).kind != dxf::RecordKind::TableRecord) break;
            dxf::Tag tag;
            if (!drawing_.findTag(id, dxf::codes::kName, tag)) continue;
            records_->emplace(platform::foldCase(readText(drawing_, tag.value)), id);
        }
    }
    const auto found = records_->find(platform::foldCase(layer));
    return found == records_->end() ? dxf::kNoRecord : found->second;
}

void LayerStates::freeze(std::wstring_view layer) {
    frozen_.insert(platform::foldCase(layer));
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
    const dxf::RecordId record = recordOf(layer);
    if (record == dxf::kNoRecord) return -1;
    const bool isFrozen = (integerOf(drawing_, record, dxf::codes::kFlags, 0) & 1) != 0;
    const bool isFrozenHere = !frozen_.empty() && frozen_.count(platform::foldCase(layer)) != 0;
    const bool isOff = integerOf(drawing_, record, dxf::codes::kColor, 7) < 0;
    const bool isPlotted = integerOf(drawing_, record, dxf::codes::kPlottable, 1) != 0;
    return (isFrozen || isFrozenHere ? kFrozenLayer : 0) | (isOff ? kOffLayer : 0) | (layer == L"0" ? kLayerZero : 0) |
           (isPlotted ? 0 : kUnplottedLayer);
}

}  // namespace qrs::host::pick
