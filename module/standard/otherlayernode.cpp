// Groups of layers that belong to no pipe system.
#include "PipeNodes.h"
#include "standard/layerlist.h"

OtherLayerNode::OtherLayerNode(const CString& groupName) : name_(groupName) {}

OtherLayerNode::~OtherLayerNode() = default;

bool OtherLayerNode::IsLayerType(const CString& name) const {
    return name_ == name;
}

void OtherLayerNode::AddLayerNode(LayerNode* layer) {
    if (layer != nullptr) layers_.emplace_back(layer);
}

LayerNode* OtherLayerNode::FindLayerNode(const CString& layerKey) const {
    if (LayerNode* layer = qrs::standard::lastLayerOfType(layers_, layerKey)) return layer;
    const auto mapped = typeMap_.find(layerKey);
    return mapped != typeMap_.end() ? qrs::standard::lastLayerOfType(layers_, mapped->second) : nullptr;
}

LayerNode* OtherLayerNode::FindLayerNode(int index) const {
    return qrs::standard::layerAt(layers_, index);
}

LayerNode* OtherLayerNode::FindLayerNodeByLayerName(const CString& layerName) const {
    return qrs::standard::layerNamed(layers_, layerName);
}

int OtherLayerNode::GetLayerNum() const {
    return static_cast<int>(layers_.size());
}

void OtherLayerNode::GetAllLayer(LayerNameMap& layers) const {
    qrs::standard::addLayers(layers_, layers);
}

void OtherLayerNode::GetAllLayerName(std::vector<CString>& names) const {
    qrs::standard::addLayerNames(layers_, names);
}

void OtherLayerNode::GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const {
    for (const auto& layer : layers_) {
        if (layer->IsContainLayerAttach(attachment)) info.AddNonPipeSystemLayerNode(*layer);
    }
}

void OtherLayerNode::AddMapping(const CString& layerKey, const CString& mappedKey, bool isDefault) {
    typeMap_[layerKey] = mappedKey;
    if (isDefault) defaultMap_[layerKey] = mappedKey;
}

bool OtherLayerNode::IsDefaultMapping(const CString& layerKey) const {
    return qrs::standard::isDefaultMapping(typeMap_, defaultMap_, layerKey);
}

bool OtherLayerNode::RenameLayerName(const CString& groupName, const CString& oldName, const CString& newName) {
    if (!IsLayerType(groupName)) return false;
    LayerNode* layer = FindLayerNodeByLayerName(oldName);
    if (layer == nullptr) return false;
    layer->LayerName = newName;
    return true;
}

void OtherLayerNode::CopyFrom(const OtherLayerNode* source) {
    if (source == nullptr || source == this) return;
    std::vector<std::unique_ptr<LayerNode>> layers;
    for (const auto& layer : source->layers_)
        layers.push_back(std::make_unique<LayerNode>(*layer));
    layers_ = std::move(layers);
    name_ = source->name_;
    typeMap_ = source->typeMap_;
    defaultMap_ = source->defaultMap_;
}
