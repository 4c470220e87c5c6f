// What systems and groups of other layers alike do with the layers they own.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "PipeNodes.h"
#include "standard/text.h"

namespace qrs::standard {

using LayerList = std::vector<std::unique_ptr<LayerNode>>;

inline LayerNode* layerAt(const LayerList& layers, int index) {
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < layers.size();
    return inside ? layers[static_cast<std::size_t>(index)].get() : nullptr;
}

inline LayerNode* layerNamed(const LayerList& layers, const CString& name) {
    const auto found = std::find_if(layers.begin(), layers.end(),
                                    [&name](const auto& layer) { return equalNoCase(layer->LayerName, name); });
    return found != layers.end() ? found->get() : nullptr;
}

// Of several layers of one type the last one answers.
inline LayerNode* lastLayerOfType(const LayerList& layers, const CString& type) {
    const auto found =
        std::find_if(layers.rbegin(), layers.rend(), [&type](const auto& layer) { return layer->LayerType == type; });
    return found != layers.rend() ? found->get() : nullptr;
}

inline void addLayers(const LayerList& layers, LayerNameMap& map) {
    for (const auto& layer : layers)
        map.emplace(layer->LayerName, layer.get());
}

inline void addLayerNames(const LayerList& layers, std::vector<CString>& names) {
    LayerNameList list(names);
    for (const auto& layer : layers)
        list.add(layer->LayerName);
    list.appendTo(names);
}

// Whether a map and the map of its beginnings both have the key and give the same for it.
inline bool isDefaultMapping(const std::map<CString, CString>& map, const std::map<CString, CString>& defaults,
                             const CString& key) {
    const auto now = map.find(key);
    const auto then = defaults.find(key);
    return now != map.end() && then != defaults.end() && now->second == then->second;
}

}  // namespace qrs::standard
