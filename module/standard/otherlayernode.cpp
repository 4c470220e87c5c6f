// Groups of layers that belong to no pipe system.
#include "PipeNodes.h"
#include "standard/layerlist.h"

namespace qrs::standard {

// The layers of one group by name and by key.
struct LayerLookUp {
    LayerNameMap byName;                  // the first of each name
    std::map<CString, LayerNode*> byKey;  // the last of each key
};

}  // namespace qrs::standard

OtherLayerNode::OtherLayerNode(const CString& groupName) : name_(groupName) {}

OtherLayerNode::~OtherLayerNode() = default;

void OtherLayerNode::NameChanges() {
    lookUp_.reset();
}

const qrs::standard::LayerLookUp& OtherLayerNode::LookUp() const {
    if (lookUp_ == nullptr) {
        lookUp_ = std::make_unique<qrs::standard::LayerLookUp>();
        qrs::standard::addLayers(layers_, lookUp_->byName);
        for (const auto& layer : layers_)
            lookUp_->byKey[layer->LayerType] = layer.get();
    }
    return *lookUp_;
}

bool OtherLayerNode::IsLayerType(const CString& name) const {
    return name_ == name;
}

void OtherLayerNode::TakeLayer(std::unique_ptr<LayerNode> layer) {
    NameChanges();
    layer->LayerType.owner_ = this;
    layer->LayerName.owner_ = this;
    layers_.push_back(std::move(layer));
}

void OtherLayerNode::AddLayerNode(LayerNode* layer) {
    if (layer != nullptr) TakeLayer(std::unique_ptr<LayerNode>(layer));
}

LayerNode* OtherLayerNode::FindLayerNode(const CString& layerKey) const {
    const auto& layers = LookUp().byKey;
    auto found = layers.find(layerKey);
    if (found == layers.end()) {
        const auto mapped = typeMap_.find(layerKey);
        if (mapped != typeMap_.end()) found = layers.find(mapped->second);
    }
    return found != layers.end() ? found->second : nullptr;
}

LayerNode* OtherLayerNode::FindLayerNode(int index) const {
    return qrs::standard::layerAt(layers_, index);
}

LayerNode* OtherLayerNode::FindLayerNodeByLayerName(const CString& layerName) const {
    const LayerNameMap& layers = LookUp().byName;
    const auto found = layers.find(layerName);
    return found != layers.end() ? found->second : nullptr;
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
    NameChanges();
    layers_.clear();
    for (const auto& layer : source->layers_)
        TakeLayer(std::make_unique<LayerNode>(*layer));
    name_ = source->name_;
    typeMap_ = source->typeMap_;
    defaultMap_ = source->defaultMap_;
}
