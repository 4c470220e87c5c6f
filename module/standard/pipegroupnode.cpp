// Groups of pipe systems: a list in display order and an index by name.
#include <algorithm>

#include "PipeNodes.h"
#include "qrs_pipewire.h"
#include "standard/layerlist.h"
#include "standard/systemindex.h"

using qrs::standard::equalNoCase;

PipeGroupNode::PipeGroupNode(const CString& groupName, bool canRename)
    : name_(groupName), canName_(canRename), index_(qrs::standard::SystemIndex::over(*this)) {}

PipeGroupNode::~PipeGroupNode() {
    // Its own index goes with it.
    if (index_.use_count() > 1) index_->forget(*this);
}

void PipeGroupNode::TakeSystem(std::unique_ptr<PipeNode> system) {
    system->entry_ = std::make_unique<qrs::standard::IndexEntry>();
    system->entry_->system = system.get();
    system->entry_->group = this;
    system->entry_->place = GetSystemNum();
    index_->add(*system->entry_);
    systems_.push_back(std::move(system));
}

// The system is the one of that name from here on; another one that was stays in the list.
void PipeGroupNode::SetName(const CString& name, PipeNode& system) {
    byName_[name] = &system;
    system.entry_->nameInGroup = name;
    index_->change(*system.entry_);
}

void PipeGroupNode::AddPipeSystem(PipeNode* system) {
    if (system == nullptr) return;
    TakeSystem(std::unique_ptr<PipeNode>(system));
    SetName(system->PipeName, *system);
}

bool PipeGroupNode::DeletePipeSystem(const CString& name) {
    const auto entry = byName_.find(name);
    if (entry == byName_.end()) return false;
    PipeNode* const system = entry->second;
    byName_.erase(entry);
    index_->remove(*system->entry_);
    const auto place = systems_.begin() + system->entry_->place;
    system->entry_.reset();
    // The caller owns the system from here on.
    static_cast<void>(place->release());
    for (auto later = systems_.erase(place); later != systems_.end(); ++later)
        --(*later)->entry_->place;
    return true;
}

bool PipeGroupNode::MovePipeSystem(const CString& name, bool up, bool& found) {
    const int index = GetSystemIndex(name);
    if (index < 0) return false;
    found = true;
    const int other = up ? index - 1 : index + 1;
    if (other < 0 || other >= GetSystemNum()) return false;
    for (const auto& [from, to] : {std::pair(index, other), std::pair(other, index)}) {
        qrs::standard::IndexEntry& entry = *systems_[static_cast<std::size_t>(from)]->entry_;
        index_->change(entry);
        entry.place = to;
    }
    std::swap(systems_[static_cast<std::size_t>(index)], systems_[static_cast<std::size_t>(other)]);
    return true;
}

bool PipeGroupNode::RenamePipeSystem(const CString& oldName, const CString& newName) {
    return Rename(oldName, newName, false);
}

// Differs from RenamePipeSystem on purpose: callers with names typed by a person also reach layers whose system name
// is written in another case.
bool PipeGroupNode::RenameSystemName(const CString& oldName, const CString& newName) {
    return Rename(oldName, newName, true);
}

bool PipeGroupNode::Rename(const CString& oldName, const CString& newName, bool ignoreCaseInLayers) {
    const auto entry = byName_.find(oldName);
    if (entry == byName_.end()) return false;
    // Copies: either name may be a reference to the very field that is about to change.
    const CString from = oldName;
    const CString to = newName;
    PipeNode* system = entry->second;
    system->PipeName = to;
    // The own layers are all there are: an alias shows one of them.
    for (int i = 0; i < system->GetLayerNum(); ++i) {
        LayerNode* layer = system->FindLayerNode(i);
        const bool same = ignoreCaseInLayers ? equalNoCase(layer->SystemName, from) : layer->SystemName == from;
        if (same) layer->SystemName = to;
    }
    byName_.erase(entry);
    SetName(to, *system);
    return true;
}

PipeNode* PipeGroupNode::FindPipeSystem(const CString& name) const {
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : nullptr;
}

PipeNode* PipeGroupNode::FindPipeSystem(int index) const {
    return index >= 0 && index < GetSystemNum() ? systems_[static_cast<std::size_t>(index)].get() : nullptr;
}

PipeNode* PipeGroupNode::FindPipeSystemByLayerName(const CString& layerName) const {
    for (const auto* entry : index_->withLayer(layerName).of(*this)) {
        if (entry->system->FindLayerNodeByLayerName(layerName) != nullptr) return entry->system;
    }
    return nullptr;
}

int PipeGroupNode::GetSystemNum() const {
    return static_cast<int>(systems_.size());
}

bool PipeGroupNode::IsEmpty() const {
    return systems_.empty();
}

int PipeGroupNode::GetSystemIndex(const CString& name) const {
    for (const auto* entry : index_->named(name).of(*this)) {
        if (entry->system->PipeName == name) return entry->place;
    }
    return -1;
}

bool PipeGroupNode::GetSystemInfo(int index, PipeBasicNode& info) const {
    const PipeNode* system = FindPipeSystem(index);
    if (system == nullptr) return false;
    info.PipeName = system->PipeName;
    info.PipeOriginalName = system->PipeOriginalName;
    info.Dim = system->Dim;
    info.Remark = system->Remark;
    info.CanDel = system->CanDel;
    info.CanName = system->CanName;
    return true;
}

void PipeGroupNode::GetAllPipeSystemNames(std::vector<CString>& names) const {
    // System names are exact keys: two that differ in case are two systems, and both are listed.
    std::set<CString> known(names.begin(), names.end());
    for (const auto& system : systems_) {
        if (known.insert(system->PipeName).second) names.push_back(system->PipeName);
    }
}

bool PipeGroupNode::IsIncludedSystem(const CString& name) const {
    return byName_.count(name) > 0;
}

void PipeGroupNode::GetPipeGroupInfo(PipeClassificationNode& info, bool includeAliases) const {
    info.GroupName = name_;
    info.CanName = canName_;
    info.Systems.assign(systems_.size(), {});
    for (std::size_t i = 0; i < systems_.size(); ++i)
        systems_[i]->GetPipeInfo(info.Systems[i], includeAliases);
}

bool PipeGroupNode::CanRenameLayerName(const CString& systemName, const CString& layerName) const {
    const auto systems = index_->withLayer(layerName).of(*this);
    return std::none_of(systems.begin(), systems.end(), [&](const auto* entry) {
        return !equalNoCase(entry->system->PipeName, systemName) &&
               entry->system->FindLayerNodeByLayerName(layerName) != nullptr;
    });
}

int PipeGroupNode::CountLayer(const CString& layerName) const {
    int count = 0;
    for (const auto* entry : index_->withLayer(layerName).of(*this))
        count += entry->system->CountLayer(layerName);
    return count;
}

bool PipeGroupNode::OldSystemNameToCurrentName(const CString& oldName, CString& current) const {
    for (const auto* entry : index_->onceNamed(oldName).of(*this)) {
        if (entry->system->PipeOriginalName != oldName) continue;
        current = entry->system->PipeName;
        return true;
    }
    return false;
}

void PipeGroupNode::ConvertOldSysNameToCurrentName() const {
    for (const auto& system : systems_) {
        if (system->PipeOriginalName.IsEmpty()) continue;
        SetPipeSystemName(system->PipeOriginalName.GetString(), system->PipeName.GetString());
    }
}

LayerNode* PipeGroupNode::FindLayerNode(const CString& systemName, const CString& layerType) const {
    for (const auto* entry : index_->named(systemName).of(*this)) {
        if (!equalNoCase(entry->system->PipeName, systemName)) continue;
        if (LayerNode* layer = entry->system->FindLayerNode(layerType)) return layer;
    }
    return nullptr;
}

LayerNode* PipeGroupNode::FindLayerNode(const CString& layerName) const {
    const PipeNode* system = FindPipeSystemByLayerName(layerName);
    return system != nullptr ? system->FindLayerNodeByLayerName(layerName) : nullptr;
}

LayerNode* PipeGroupNode::FindLayerNodeByLayerType(const CString& layerType, const CString& layerName) const {
    for (const auto* entry : index_->withLayer(layerType, layerName).of(*this)) {
        LayerNode* layer = entry->system->FindLayerNode(layerType);
        if (layer != nullptr && equalNoCase(layer->LayerName, layerName)) return layer;
    }
    return nullptr;
}

bool PipeGroupNode::GetLayerNameByLayerTypeLayerName(const CString& layerType, const CString& layerName,
                                                     const CString& targetType, CString& out) const {
    for (const auto* entry : index_->withLayer(layerType, layerName).of(*this)) {
        const LayerNode* layer = entry->system->FindLayerNode(layerType);
        if (layer == nullptr || !equalNoCase(layer->LayerName, layerName)) continue;
        const LayerNode* target = entry->system->FindLayerNode(targetType);
        out = target != nullptr ? target->LayerName : CString();
        return true;
    }
    return false;
}

void PipeGroupNode::GetAllLayer(LayerNameMap& layers) const {
    for (const auto& system : systems_)
        system->GetAllLayer(layers);
}

void PipeGroupNode::GetAllLayerName(std::vector<CString>& names) const {
    // One list for all systems: each of them would look through the names again.
    qrs::standard::LayerNameList list(names);
    for (const auto& system : systems_) {
        for (int i = 0; i < system->GetLayerNum(); ++i)
            list.add(system->FindLayerNode(i)->LayerName);
    }
    list.appendTo(names);
}

void PipeGroupNode::GetLayerTypes(std::set<CString>& types) const {
    for (const auto& system : systems_)
        system->GetLayerTypes(types);
}

void PipeGroupNode::GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const {
    for (const auto& system : systems_)
        system->GetLayerAttachInfo(attachment, info);
}

void PipeGroupNode::InitLayers(LayerNameMap& layers) {
    for (const auto& system : systems_)
        system->UpdateLayerTypeMap();
    GetAllLayer(layers);
}

bool PipeGroupNode::UpdateLayer(const LayerNode& source) {
    bool updated = false;
    for (const auto& system : systems_) {
        if (!source.SystemName.IsEmpty() && system->PipeName != source.SystemName) continue;
        updated = system->UpdateLayer(source) || updated;
    }
    return updated;
}

void PipeGroupNode::UpdateLayerTo(PipeGroupNode* target) const {
    if (target == nullptr || target == this) return;
    for (const auto& system : systems_)
        system->UpdateLayerTo(target->FindPipeSystem(system->PipeName));
}

void PipeGroupNode::CopyFrom(const PipeGroupNode* source) {
    if (source == nullptr || source == this) return;
    std::vector<std::unique_ptr<PipeNode>> systems;
    std::map<const PipeNode*, PipeNode*> copies;
    for (const auto& system : source->systems_) {
        systems.emplace_back(system->Clone());
        copies[system.get()] = systems.back().get();
    }
    index_->clear();
    systems_.clear();
    byName_.clear();
    for (auto& system : systems)
        TakeSystem(std::move(system));
    for (const auto& [name, system] : source->byName_)
        SetName(name, *copies.at(system));
    name_ = source->name_;
    canName_ = source->canName_;
}
