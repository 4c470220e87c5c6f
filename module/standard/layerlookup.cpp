// Finds groups, systems and layer definitions of a standard.
#include "standard/layerlookup.h"

#include <algorithm>

#include "standard/holder.h"
#include "standard/text.h"

namespace qrs::standard {

PipeGroupNode* groupNamed(const Standard& standard, const CString& groupName) {
    const auto found = std::find_if(standard.groups.begin(), standard.groups.end(),
                                    [&](const auto& group) { return group->GroupName() == groupName; });
    return found != standard.groups.end() ? found->get() : nullptr;
}

PipeGroupNode* groupOfSystem(const Standard& standard, const CString& systemName) {
    const auto found = std::find_if(standard.groups.begin(), standard.groups.end(),
                                    [&](const auto& group) { return group->IsIncludedSystem(systemName); });
    return found != standard.groups.end() ? found->get() : nullptr;
}

PipeNode* systemNamed(const Standard& standard, const CString& systemName) {
    for (const auto& group : standard.groups) {
        if (PipeNode* system = group->FindPipeSystem(systemName)) return system;
    }
    return nullptr;
}

LayerNode* layerDefinition(const Standard& standard, const CString& nameOrKey, const CString& layerType) {
    for (const auto& group : standard.groups) {
        if (LayerNode* layer = group->FindLayerNode(nameOrKey, layerType)) return layer;
    }
    for (const auto& group : standard.otherLayers) {
        if (!group->IsLayerType(layerType)) continue;
        if (LayerNode* layer = group->FindLayerNode(nameOrKey)) return layer;
    }
    return nullptr;
}

LayerNode* currentDefinition(const CString& nameOrKey, const CString& layerType) {
    const Standard* standard = currentStandard();
    return standard != nullptr ? layerDefinition(*standard, nameOrKey, layerType) : nullptr;
}

LayerNode* independentLayer(const Standard& standard, const CString& layerKey) {
    for (const auto& group : standard.otherLayers) {
        if (LayerNode* layer = group->FindLayerNode(layerKey)) return layer;
    }
    return nullptr;
}

LayerNode* layerNamed(const Standard& standard, const CString& layerName) {
    for (const auto& group : standard.groups) {
        if (LayerNode* layer = group->FindLayerNode(layerName)) return layer;
    }
    for (const auto& group : standard.otherLayers) {
        if (LayerNode* layer = group->FindLayerNodeByLayerName(layerName)) return layer;
    }
    return nullptr;
}

PipeNode* systemOfLayer(const PipeGroupNode& group, const CString& layerType, const CString& layerName) {
    const int count = group.GetSystemNum();
    for (int i = 0; i < count; ++i) {
        PipeNode* system = group.FindPipeSystem(i);
        const LayerNode* layer = system->FindLayerNode(layerType);
        if (layer != nullptr && equalNoCase(layer->LayerName, layerName)) return system;
    }
    return nullptr;
}

}  // namespace qrs::standard
