// Pipe systems: own layers, and the types that borrow a layer of a more general type.
#include <algorithm>

#include "PipeNodes.h"
#include "standard/fields.h"
#include "standard/layerlist.h"
#include "standard/systemindex.h"

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

using TypeMap = std::map<CString, CString>;

const std::shared_ptr<const TypeMap>& defaultTypeMap() {
    static const std::shared_ptr<const TypeMap> map = [] {
        TypeMap types;
        for (const auto& [specificType, genericType] : kDefaultTypeMap)
            types[specificType] = genericType;
        return std::make_shared<const TypeMap>(std::move(types));
    }();
    return map;
}

// Everything but what says which layer it is: type and system.
void takeOverSettings(LayerNode& layer, const LayerNode& source) {
    const CString type = layer.LayerType;
    const CString system = layer.SystemName;
    layer = source;
    layer.LayerType = type;
    layer.SystemName = system;
}

}  // namespace

PipeNode::PipeNode() : typeMap_(defaultTypeMap()) {
    PipeName.owner_ = this;
    PipeOriginalName.owner_ = this;
}

PipeNode::~PipeNode() = default;

void PipeNode::NameChanges() {
    if (entry_ != nullptr) entry_->group->index_->change(*entry_);
}

void PipeNode::TakeLayer(std::unique_ptr<LayerNode> layer) {
    NameChanges();
    if (layer->SystemName.IsEmpty()) layer->SystemName = PipeName;
    layer->LayerName.owner_ = this;
    layersByType_[layer->LayerType] = {layer.get(), false};
    layers_.push_back(std::move(layer));
}

void PipeNode::AddLayerNode(LayerNode* layer) {
    if (layer == nullptr) return;
    TakeLayer(std::unique_ptr<LayerNode>(layer));
    UpdateLayerTypeMap();
}

void PipeNode::AddLayerNodes(std::vector<std::unique_ptr<LayerNode>> layers) {
    for (auto& layer : layers) {
        if (layer != nullptr) TakeLayer(std::move(layer));
    }
    UpdateLayerTypeMap();
}

void PipeNode::DelLayerNode(LayerNode* layer) {
    const auto own = std::find_if(layers_.begin(), layers_.end(), [layer](const auto& l) { return l.get() == layer; });
    if (layer == nullptr || own == layers_.end()) return;
    NameChanges();
    for (auto entry = layersByType_.begin(); entry != layersByType_.end();)
        entry = entry->second.layer == layer ? layersByType_.erase(entry) : std::next(entry);
    const CString type = layer->LayerType;
    layers_.erase(own);
    // As after reading the file again: another own layer of the type answers.
    if (LayerNode* other = qrs::standard::lastLayerOfType(layers_, type)) layersByType_[type] = {other, false};
    UpdateLayerTypeMap();
}

LayerNode* PipeNode::FindLayerNode(const CString& layerType) const {
    const auto found = layersByType_.find(layerType);
    return found != layersByType_.end() ? found->second.layer : nullptr;
}

LayerNode* PipeNode::OwnLayerOfType(const CString& layerType) const {
    const auto found = layersByType_.find(layerType);
    return found != layersByType_.end() && !found->second.isAlias ? found->second.layer : nullptr;
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
        return equalNoCase(entry.second.layer->LayerName, layerName);
    });
    return static_cast<int>(count);
}

bool PipeNode::IsAlias(const CString& layerType) const {
    const auto found = layersByType_.find(layerType);
    return found != layersByType_.end() && found->second.isAlias;
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
    for (const qrs::standard::PipeField& field : qrs::standard::kPipeFields) {
        if (field.tell != nullptr) field.tell(*this, info);
    }
    info.LayerNames.clear();
    for (const auto& [type, answer] : layersByType_) {
        if (includeAliases || !answer.isAlias) info.LayerNames[type] = answer.layer->LayerName;
    }
}

void PipeNode::SetLayerTypeMapping(const CString& specificType, const CString& genericType) {
    // Never the one that others look at as well.
    if (typeMap_.use_count() > 1) typeMap_ = std::make_shared<TypeMap>(*typeMap_);
    (*std::const_pointer_cast<TypeMap>(typeMap_))[specificType] = genericType;
}

void PipeNode::UpdateLayerTypeMap() {
    NameChanges();
    for (const auto& [specificType, genericType] : *typeMap_) {
        if (OwnLayerOfType(specificType) != nullptr) continue;
        // An own layer: an alias does not count as a layer of its type, or aliases would chain in the order of their
        // keys.
        if (LayerNode* generic = OwnLayerOfType(genericType)) {
            layersByType_[specificType] = {generic, true};
        } else {
            layersByType_.erase(specificType);
        }
    }
}

bool PipeNode::IsDefaultMapping(const CString& specificType) const {
    return qrs::standard::isDefaultMapping(*typeMap_, *defaultTypeMap(), specificType);
}

bool PipeNode::UpdateLayer(const LayerNode& source) {
    LayerNode* layer = OwnLayerOfType(source.LayerType);
    if (layer == nullptr) return false;
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
    for (const qrs::standard::PipeField& field : qrs::standard::kPipeFields)
        field.form.copy(*this, *source);
    std::map<const LayerNode*, LayerNode*> copies;
    std::vector<std::unique_ptr<LayerNode>> layers;
    for (const auto& layer : source->layers_) {
        layers.push_back(std::make_unique<LayerNode>(*layer));
        layers.back()->LayerName.owner_ = this;
        copies[layer.get()] = layers.back().get();
    }
    NameChanges();
    layersByType_.clear();
    for (const auto& [type, answer] : source->layersByType_)
        layersByType_[type] = {copies.at(answer.layer), answer.isAlias};
    layers_ = std::move(layers);
    typeMap_ = source->typeMap_;
}

PipeNode* PipeNode::Clone() const {
    auto copy = std::make_unique<PipeNode>();
    copy->CopyFrom(this);
    return copy.release();
}
