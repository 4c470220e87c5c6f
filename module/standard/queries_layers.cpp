// Layers of the standard: their definitions, lists of their names, and what a layer belongs to.
#include "dbobjptr.h"
#include "PipeSystemTool.h"
#include "standard/holder.h"
#include "standard/layerlookup.h"
#include "standard/text.h"

using qrs::standard::currentDefinition;
using qrs::standard::currentStandard;
using qrs::standard::equalNoCase;
using qrs::standard::LayerNameList;
using qrs::standard::Standard;

namespace {

// The types of pipe layers; the place of a type here is the kind that IsPipeLayer tells.
constexpr const wchar_t* kPipeLayerTypes[] = {L"管线", L"立管", L"扣弯"};

constexpr const wchar_t* kSystemLayerTypes[] = {L"管线", L"立管",   L"阀门", L"文字",   L"标注",
                                                L"设备", L"电动阀", L"喷头", L"消火栓", L"井"};

// --- collecting names

void addLayer(const PipeNode& system, const CString& layerType, LayerNameList& names) {
    if (const LayerNode* layer = system.FindLayerNode(layerType)) names.add(layer->LayerName);
}

void addPipeLayers(const PipeNode& system, LayerNameList& names) {
    for (const wchar_t* type : kPipeLayerTypes)
        addLayer(system, type, names);
}

void addLayers(const PipeGroupNode& group, const CString& layerType, LayerNameList& names) {
    const int count = group.GetSystemNum();
    for (int i = 0; i < count; ++i)
        addLayer(*group.FindPipeSystem(i), layerType, names);
}

void addLayersOfStandard(const Standard& standard, const CString& layerType, LayerNameList& names) {
    for (const auto& group : standard.groups)
        addLayers(*group, layerType, names);
    // The layers of such a group bear keys, not types; the group itself stands for the type.
    for (const auto& group : standard.otherLayers) {
        if (!group->IsLayerType(layerType)) continue;
        for (int i = 0; i < group->GetLayerNum(); ++i)
            names.add(group->FindLayerNode(i)->LayerName);
    }
}

void addPipeLayersOfSystem(const Standard& standard, const CString& systemName, LayerNameList& names) {
    if (const PipeNode* system = qrs::standard::systemNamed(standard, systemName)) addPipeLayers(*system, names);
}

void addPipeLayersOfGroup(const Standard& standard, const CString& groupName, LayerNameList& names) {
    const PipeGroupNode* group = qrs::standard::groupNamed(standard, groupName);
    if (group == nullptr) return;
    for (int i = 0; i < group->GetSystemNum(); ++i)
        addPipeLayers(*group->FindPipeSystem(i), names);
}

void addLayersOfGroup(const Standard& standard, const CString& groupName, const CString& layerType,
                      LayerNameList& names) {
    if (const PipeGroupNode* group = qrs::standard::groupNamed(standard, groupName))
        addLayers(*group, layerType, names);
}

// Adds what one name (of a system or a group) stands for.
using AddByName = void (*)(const Standard&, const CString&, LayerNameList&);

CString joinedByNames(const CString* names, int count, const CString& separator, AddByName addByName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr || names == nullptr) return {};
    LayerNameList list;
    for (int i = 0; i < count; ++i)
        addByName(*standard, names[i], list);
    return list.joined(separator);
}

void appendByNames(const std::vector<CString>& names, std::vector<CString>& out, AddByName addByName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    LayerNameList list(out);
    for (const CString& name : names)
        addByName(*standard, name, list);
    list.appendTo(out);
}

// --- from a layer to its system

// The name of the layer of that id. False when it cannot be opened.
bool readLayerName(AcDbObjectId layer, CString& name) {
    const AcDbLayerTableRecordPointer record(layer, AcDb::kForRead);
    const ACHAR* text = nullptr;
    if (record.openStatus() != Acad::eOk || record->getName(text) != Acad::eOk) return false;
    name = text;
    return true;
}

// The first pipe layer of that name, and which of the types it has. Groups come before types: in a group "立管" may
// answer although a later group has such a layer of "管线".
const LayerNode* findPipeLayer(const Standard& standard, const CString& layerName, int& kind) {
    qrs::standard::FoundSystem first;
    int type = 0;
    for (const wchar_t* const layerType : kPipeLayerTypes) {
        const qrs::standard::FoundSystem found = qrs::standard::systemWithLayer(standard, layerType, layerName);
        if (found.system != nullptr && (first.system == nullptr || found.group->IsBefore(*first.group))) {
            first = found;
            kind = type;
        }
        ++type;
    }
    return first.system != nullptr ? first.system->FindLayerNode(kPipeLayerTypes[kind]) : nullptr;
}

// The target layer of the first system in which a layer of that name answers for the source type.
const LayerNode* layerOfSameSystem(const CString& sourceType, const CString& layerName, const CString& targetType,
                                   bool create) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return nullptr;
    // The search ends with this system, also when it has no target layer.
    const PipeNode* system = qrs::standard::systemWithLayer(*standard, sourceType, layerName).system;
    const LayerNode* target = system != nullptr ? system->FindLayerNode(targetType) : nullptr;
    if (target != nullptr && create) target->CreateLayer();
    return target;
}

}  // namespace

namespace PipeSystemTool {

CString GetLinetypeName(const CString& systemName, const CString& layerType) {
    const LayerNode* layer = currentDefinition(systemName, layerType);
    return layer != nullptr ? layer->LineStyle : CString();
}

CString GetLayerRemark(const CString& systemName, const CString& layerType) {
    const LayerNode* layer = currentDefinition(systemName, layerType);
    return layer != nullptr ? layer->Remark : CString();
}

bool GetAllLayerInfo(std::vector<LayerNode>& out) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return false;
    out.clear();
    const auto add = [&out](const auto& owner) {
        for (int i = 0; i < owner.GetLayerNum(); ++i)
            out.push_back(*owner.FindLayerNode(i));
    };
    for (const auto& group : standard->groups)
        for (int i = 0; i < group->GetSystemNum(); ++i)
            add(*group->FindPipeSystem(i));
    for (const auto& group : standard->otherLayers)
        add(*group);
    return true;
}

bool ContainLayer(const CString& layerName, const CString& systemName, const CString& layerType) {
    // Names are compared, so an empty one is that of a definition that does not exist.
    return currentStandard() != nullptr && equalNoCase(GetLayerName(systemName, layerType, false), layerName);
}

bool SystemGroupContainLayer(const CString& groupName, const CString& layerName, const CString& layerType) {
    const Standard* standard = currentStandard();
    const PipeGroupNode* group = standard != nullptr ? qrs::standard::groupNamed(*standard, groupName) : nullptr;
    return group != nullptr && group->FindLayerNodeByLayerType(layerType, layerName) != nullptr;
}

CString GetLayerNames(const CString& layerType, const CString& separator) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    LayerNameList names;
    addLayersOfStandard(*standard, layerType, names);
    return names.joined(separator);
}

bool GetLayerNames(const CString& layerType, std::vector<CString>& out) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return false;
    LayerNameList names(out);
    addLayersOfStandard(*standard, layerType, names);
    names.appendTo(out);
    // Says that there was a standard to ask, not that it had such layers: callers look at the list for that.
    return true;
}

CString GetPipeLayers(const CString& systemName, const CString& separator) {
    return GetPipeLayers(&systemName, 1, separator);
}

CString GetPipeLayers(const CString* systemNames, int count, const CString& separator) {
    return joinedByNames(systemNames, count, separator, addPipeLayersOfSystem);
}

void GetPipeLayers(const std::vector<CString>& systemNames, std::vector<CString>& out) {
    appendByNames(systemNames, out, addPipeLayersOfSystem);
}

CString GetSystemGroupPipeLayers(const CString& groupName, const CString& separator) {
    return GetSystemGroupPipeLayers(&groupName, 1, separator);
}

CString GetSystemGroupPipeLayers(const CString* groupNames, int count, const CString& separator) {
    return joinedByNames(groupNames, count, separator, addPipeLayersOfGroup);
}

void GetSystemGroupPipeLayers(const std::vector<CString>& groupNames, std::vector<CString>& out) {
    appendByNames(groupNames, out, addPipeLayersOfGroup);
}

CString GetSystemGroupLayers(const CString& groupName, const CString& layerType, const CString& separator) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    LayerNameList names;
    addLayersOfGroup(*standard, groupName, layerType, names);
    return names.joined(separator);
}

void GetSystemGroupLayers(const CString& groupName, const CString& layerType, std::vector<CString>& out) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    LayerNameList names(out);
    addLayersOfGroup(*standard, groupName, layerType, names);
    names.appendTo(out);
}

void GetSystemLayerType(std::vector<CString>& out) {
    // The list is fixed, and yet it is asked of the standard: without one there are no pipe systems to have layers.
    if (currentStandard() != nullptr) out.assign(std::begin(kSystemLayerTypes), std::end(kSystemLayerTypes));
}

CString GetPipeSystemNameByLayer(const CString& layerName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    const PipeNode* system = qrs::standard::systemWithLayer(*standard, layerName).system;
    return system != nullptr ? system->PipeName : CString();
}

CString GetPipeSystemNameByLayer(AcDbObjectId layer) {
    CString name;
    return currentStandard() != nullptr && readLayerName(layer, name) ? GetPipeSystemNameByLayer(name) : CString();
}

CString GetPipeSystemNameByLayer(const CString& layerName, const CString& layerType) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    const PipeNode* system = qrs::standard::systemWithLayer(*standard, layerType, layerName).system;
    return system != nullptr ? system->FindLayerNode(layerType)->SystemName : CString();
}

CString GetPipeSystemNameByLayer(AcDbObjectId layer, const CString& layerType) {
    CString name;
    const bool isKnown = currentStandard() != nullptr && readLayerName(layer, name);
    return isKnown ? GetPipeSystemNameByLayer(name, layerType) : CString();
}

CString GetPipeSystemNameByPipeLayer(const CString& layerName) {
    const Standard* standard = currentStandard();
    int kind = 0;
    const LayerNode* layer = standard != nullptr ? findPipeLayer(*standard, layerName, kind) : nullptr;
    return layer != nullptr ? layer->SystemName : CString();
}

CString GetPipeSystemNameByPipeLayer(AcDbObjectId layer) {
    CString name;
    return currentStandard() != nullptr && readLayerName(layer, name) ? GetPipeSystemNameByPipeLayer(name) : CString();
}

CString GetPipeSystemGroupName(const CString& layerName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    const PipeGroupNode* group = qrs::standard::systemWithLayer(*standard, layerName).group;
    return group != nullptr ? group->GroupName() : CString();
}

CString GetLayerByVPipeLayer(const CString& vPipeLayerName, const CString& targetType, bool create) {
    const LayerNode* layer = layerOfSameSystem(L"立管", vPipeLayerName, targetType, create);
    return layer != nullptr ? layer->LayerName : CString();
}

CString GetLayerByPipeLayer(const CString& pipeLayerName, const CString& targetType, bool create) {
    layerOfSameSystem(L"管线", pipeLayerName, targetType, create);
    // Unlike GetLayerByVPipeLayer it never hands the name back: callers came to rely on the empty answer.
    return {};
}

bool IsPipeLayer(const CString& layerName, int* kind) {
    const Standard* standard = currentStandard();
    int found = 0;
    if (standard != nullptr && findPipeLayer(*standard, layerName, found) != nullptr && kind != nullptr) *kind = found;
    // False for pipe layers too: callers go by the kind, and those that test the result rely on its being false.
    return false;
}

void GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    for (const auto& group : standard->groups)
        group->GetLayerAttachInfo(attachment, info);
    for (const auto& group : standard->otherLayers)
        group->GetLayerAttachInfo(attachment, info);
}

}  // namespace PipeSystemTool
