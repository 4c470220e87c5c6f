// Pipe systems: own layers, and the types that borrow a layer of a more general type.
#include <algorithm>

#include "PipeNodes.h"
#include "standard/layerlist.h"

using qrs::standard::equalNoCase;

namespace {

// What a specific type falls back to in every new system: specific type, generic type.
constexpr const wchar_t* kDefaultTypeMap[][2] = {
    {L"立管编号", L"标注"}, {L"标高", L"标注"},     {L"尺寸", L"标注"},     {L"入户管号", L"标注"},
    {L"管底标注", L"标注"}, {L"井底标注", L"标注"}, {L"管道坡度", L"标注"}, {L"多管标注", L"标注"},
    {L"排水附件", L"设备"}, {L"给水附件", L"设备"}, {L"井文字", L"文字"},   {L"管径文字", L"文字"},
    {L"管线文字", L"文字"}, {L"扣弯", L"管线"},     {L"套管标注", L"标注"}, {L"坐标", L"标注"},
    {L"管线流向", L"标注"}, {L"井标注线", L"标注"},
};

// Everything but what says which layer it is: type and system.
void takeOverSettings(LayerNode& layer, const LayerNode& source) {
    const CString type = layer.LayerType;
    const CString system = layer.SystemName;
    layer = source;
    layer.LayerType = type;
    layer.SystemName = system;
}

}  // namespace

PipeNode::PipeNode() {
    for (const auto& [specificType, genericType] : kDefaultTypeMap)
        typeMap_[specificType] = genericType;
    defaultMap_ = typeMap_;
}

PipeNode::~PipeNode() = default;

void PipeNode::AddLayerNode(LayerNode* layer) {
    if (layer == nullptr) return;
    layers_.emplace_back(layer);
    if (layer->SystemName.IsEmpty()) layer->SystemName = PipeName;
    layersByType_[layer->LayerType] = layer;
    aliases_.erase(layer->LayerType);
    UpdateLayerTypeMap();
}

void PipeNode::DelLayerNode(LayerNode* layer) {
    const auto own = std::find_if(layers_.begin(), layers_.end(), [layer](const auto& l) { return l.get() == layer; });
    if (layer == nullptr || own == layers_.end()) return;
    for (auto entry = layersByType_.begin(); entry != layersByType_.end();) {
        if (entry->second == layer) {
            aliases_.erase(entry->first);
            entry = layersByType_.erase(entry);
        } else {
            ++entry;
        }
    }
    const CString type = layer->LayerType;
    layers_.erase(own);
    // As after reading the file again: another own layer of the type answers.
    if (LayerNode* other = qrs::standard::lastLayerOfType(layers_, type)) layersByType_.emplace(type, other);
    UpdateLayerTypeMap();
}

LayerNode* PipeNode::FindLayerNode(const CString& layerType) const {
    const auto found = layersByType_.find(layerType);
    return found != layersByType_.end() ? found->second : nullptr;
}

LayerNode* PipeNode::FindLayerNode(int index) const {
    return qrs::standard::layerAt(layers_, index);
}

LayerNode* PipeNode::FindLayerNodeByLayerName(const CString& layerName) const {
    return qrs::standard::layerNamed(layers_, layerName);
}

int PipeNode::GetLayerNum() const {
    return static_cast<int>(layers_.size());
}

int PipeNode::CountLayer(const CString& layerName) const {
    const auto count = std::count_if(layersByType_.begin(), layersByType_.end(), [&layerName](const auto& entry) {
        return equalNoCase(entry.second->LayerName, layerName);
    });
    return static_cast<int>(count);
}

bool PipeNode::IsAlias(const CString& layerType) const {
    return aliases_.count(layerType) > 0;
}

void PipeNode::GetAllLayer(LayerNameMap& layers) const {
    qrs::standard::addLayers(layers_, layers);
}

void PipeNode::GetAllLayerName(std::vector<CString>& names) const {
    qrs::standard::addLayerNames(layers_, names);
}

void PipeNode::GetLayerTypes(std::set<CString>& types) const {
    for (const auto& layer : layers_)
        types.insert(layer->LayerType);
}

void PipeNode::GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const {
    for (const auto& layer : layers_) {
        if (layer->IsContainLayerAttach(attachment)) info.AddPipeSystemLayerNode(*layer);
    }
}

void PipeNode::GetPipeInfo(PipeInfoNode& info, bool includeAliases) const {
    info.PipeName = PipeName;
    info.PipeOriginalName = PipeOriginalName;
    info.LineWidth = LineWidth;
    info.Dim = Dim;
    info.Material = Material;
    info.OutdoorMaterial = OutdoorMaterial;
    info.VPipeType = VPipeType;
    info.VPipeRaidus = VPipeRaidus;
    info.VPipeRaidus1 = VPipeRaidus1;
    info.VPipeRaidus2 = VPipeRaidus2;
    info.WaterFlowStatus = WaterFlowStatus;
    info.Remark = Remark;
    info.Status = static_cast<Adesk::UInt32>(Status);
    info.LayerNames.clear();
    for (const auto& [type, layer] : layersByType_) {
        if (includeAliases || !IsAlias(type)) info.LayerNames[type] = layer->LayerName;
    }
}

void PipeNode::SetLayerTypeMapping(const CString& specificType, const CString& genericType) {
    typeMap_[specificType] = genericType;
}

void PipeNode::UpdateLayerTypeMap() {
    for (const auto& [type, generic] : aliases_)
        layersByType_.erase(type);
    aliases_.clear();
    // Only own layers are in the map now. The new aliases are entered after the walk: an alias met during it would
    // count as a layer of its type, and aliases would chain in the order of their keys.
    for (const auto& [specificType, genericType] : typeMap_) {
        if (layersByType_.count(specificType) == 0 && layersByType_.count(genericType) > 0) {
            aliases_[specificType] = genericType;
        }
    }
    std::map<CString, LayerNode*> borrowed;
    for (const auto& [type, generic] : aliases_)
        borrowed[type] = layersByType_.at(generic);
    layersByType_.insert(borrowed.begin(), borrowed.end());
}

bool PipeNode::IsDefaultMapping(const CString& specificType) const {
    return qrs::standard::isDefaultMapping(typeMap_, defaultMap_, specificType);
}

bool PipeNode::UpdateLayer(const LayerNode& source) {
    LayerNode* layer = FindLayerNode(source.LayerType);
    if (layer == nullptr || IsAlias(source.LayerType)) return false;
    takeOverSettings(*layer, source);
    return true;
}

void PipeNode::UpdateLayerTo(PipeNode* target) const {
    if (target == nullptr || target == this) return;
    for (const auto& layer : layers_) {
        if (target->UpdateLayer(*layer)) continue;
        auto copy = std::make_unique<LayerNode>(*layer);
        copy->SystemName = target->PipeName;
        target->AddLayerNode(copy.release());
    }
}

void PipeNode::CopyFrom(const PipeNode* source) {
    if (source == nullptr || source == this) return;
    PipeOriginalName = source->PipeOriginalName;
    PipeName = source->PipeName;
    LineWidth = source->LineWidth;
    Dim = source->Dim;
    Material = source->Material;
    OutdoorMaterial = source->OutdoorMaterial;
    VPipeType = source->VPipeType;
    VPipeRaidus = source->VPipeRaidus;
    VPipeRaidus1 = source->VPipeRaidus1;
    VPipeRaidus2 = source->VPipeRaidus2;
    WaterFlowStatus = source->WaterFlowStatus;
    Remark = source->Remark;
    CanDel = source->CanDel;
    CanName = source->CanName;
    Status = source->Status;
    std::map<const LayerNode*, LayerNode*> copies;
    std::vector<std::unique_ptr<LayerNode>> layers;
    for (const auto& layer : source->layers_) {
        layers.push_back(std::make_unique<LayerNode>(*layer));
        copies[layer.get()] = layers.back().get();
    }
    layersByType_.clear();
    for (const auto& [type, layer] : source->layersByType_)
        layersByType_[type] = copies.at(layer);
    layers_ = std::move(layers);
    typeMap_ = source->typeMap_;
    aliases_ = source->aliases_;
    defaultMap_ = source->defaultMap_;
}

PipeNode* PipeNode::Clone() const {
    auto copy = std::make_unique<PipeNode>();
    copy->CopyFrom(this);
    return copy.release();
}
