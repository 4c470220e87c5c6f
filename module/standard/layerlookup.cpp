// Finds groups, systems and layer definitions of a standard.
#include "standard/layerlookup.h"

#include <algorithm>

#include "standard/holder.h"
#include "standard/systemindex.h"
#include "standard/text.h"

namespace qrs::standard {

SystemIndex& Standard::systems() const {
    if (index == nullptr || index->groupCount() != groups.size()) index = SystemIndex::over(groups);
    return *index;
}

PipeGroupNode* groupNamed(const Standard& standard, const CString& groupName) {
    const auto found = std::find_if(standard.groups.begin(), standard.groups.end(),
                                    [&](const auto& group) { return group->GroupName() == groupName; });
    return found != standard.groups.end() ? found->get() : nullptr;
}

PipeGroupNode* groupOfSystem(const Standard& standard, const CString& systemName) {
    for (const IndexEntry* entry : standard.systems().named(systemName)) {
        if (entry->group->IsIncludedSystem(systemName)) return entry->group;
    }
    return nullptr;
}

PipeNode* systemNamed(const Standard& standard, const CString& systemName) {
    const PipeGroupNode* group = groupOfSystem(standard, systemName);
    return group != nullptr ? group->FindPipeSystem(systemName) : nullptr;
}

LayerNode* layerDefinition(const Standard& standard, const CString& nameOrKey, const CString& layerType) {
    for (const IndexEntry* entry : standard.systems().named(nameOrKey)) {
        if (!equalNoCase(entry->system->PipeName, nameOrKey)) continue;
        if (LayerNode* layer = entry->system->FindLayerNode(layerType)) return layer;
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
    if (const FoundSystem found = systemWithLayer(standard, layerName); found.system != nullptr)
        return found.system->FindLayerNodeByLayerName(layerName);
    for (const auto& group : standard.otherLayers) {
        if (LayerNode* layer = group->FindLayerNodeByLayerName(layerName)) return layer;
    }
    return nullptr;
}

bool isLayerOfAnother(const Standard& standard, const CString& systemName, const CString& layerName) {
    return std::any_of(standard.groups.begin(), standard.groups.end(),
                       [&](const auto& group) { return !group->CanRenameLayerName(systemName, layerName); });
}

FoundSystem systemWithLayer(const Standard& standard, const CString& layerName) {
    for (const IndexEntry* entry : standard.systems().withLayer(layerName)) {
        if (entry->system->FindLayerNodeByLayerName(layerName) != nullptr) return {entry->system, entry->group};
    }
    return {};
}

FoundSystem systemWithLayer(const Standard& standard, const CString& layerType, const CString& layerName) {
    for (const IndexEntry* entry : standard.systems().withLayer(layerType, layerName)) {
        const LayerNode* layer = entry->system->FindLayerNode(layerType);
        if (layer != nullptr && equalNoCase(layer->LayerName, layerName)) return {entry->system, entry->group};
    }
    return {};
}

}  // namespace qrs::standard
