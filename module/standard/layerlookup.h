// Finds groups, systems and layer definitions of a standard. Everything here is null on a miss.
//
// System names, group names, layer types and layer keys are exact, layer names are compared without regard to case;
// groups are searched in order, the first hit wins.
#pragma once

#include "standard/standard.h"

namespace qrs::standard {

// The first group of that name.
PipeGroupNode* groupNamed(const Standard& standard, const CString& groupName);
// The first group that has a system of that name.
PipeGroupNode* groupOfSystem(const Standard& standard, const CString& systemName);
// That group's system.
PipeNode* systemNamed(const Standard& standard, const CString& systemName);

// The definition of a layer by the name of its pipe system (here without regard to case) and its type; where no system
// answers, by its key and the name of its group of other layers.
LayerNode* layerDefinition(const Standard& standard, const CString& nameOrKey, const CString& layerType);

// The same of the current standard; null when there is none.
LayerNode* currentDefinition(const CString& nameOrKey, const CString& layerType);

// The layer of that key in the first group of other layers that has one.
LayerNode* independentLayer(const Standard& standard, const CString& layerKey);

// The first definition of that name: pipe systems, then groups of other layers.
LayerNode* layerNamed(const Standard& standard, const CString& layerName);

// Whether a system of another name (compared without regard to case) has an own layer of that name.
bool isLayerOfAnother(const Standard& standard, const CString& systemName, const CString& layerName);

// The first system that has an own layer of that name, and its group.
struct FoundSystem {
    PipeNode* system = nullptr;
    const PipeGroupNode* group = nullptr;
};
FoundSystem systemWithLayer(const Standard& standard, const CString& layerName);
// The first system in which a layer of that name answers for the type, and its group.
FoundSystem systemWithLayer(const Standard& standard, const CString& layerType, const CString& layerName);

}  // namespace qrs::standard
