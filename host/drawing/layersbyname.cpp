// Layers by the numbers of the names that entities have for them.
#include "host/drawing/layersbyname.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;

namespace {
constexpr RecordId kNotLookedUp = kNoRecord - 1;
}  // namespace

RecordId LayersByName::find(dxf::NameId name) {
    if (age_ != tables_.layerAge()) {
        layers_.clear();
        age_ = tables_.layerAge();
    }
    if (name >= layers_.size()) layers_.resize(drawing_.nameCount(), kNotLookedUp);
    if (name >= layers_.size()) return kNoRecord;
    RecordId& layer = layers_[name];
    if (layer == kNotLookedUp)
        layer = tables_.find(TableKind::Layer, name == dxf::kNoName ? L"0" : readText(drawing_, drawing_.name(name)));
    return layer;
}

void LayersByName::findAll() {
    for (std::size_t name = 0; name < drawing_.nameCount(); ++name)
        find(static_cast<dxf::NameId>(name));
}

}  // namespace qrs::host
