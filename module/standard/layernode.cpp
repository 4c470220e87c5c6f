// Layers and the layers of an attachment.
#include <algorithm>

#include "PipeNodes.h"
#include "standard/text.h"

bool LayerNode::IsContainLayerAttach(const CString& name) const {
    return std::find(LayerAttachSet.begin(), LayerAttachSet.end(), name) != LayerAttachSet.end();
}

void LayerAttachNode::AddPipeSystemLayerNode(const LayerNode& layer) {
    pipeSystemLayers_.push_back({layer.SystemName, layer.LayerType, layer.LayerName});
}

void LayerAttachNode::AddNonPipeSystemLayerNode(const LayerNode& layer) {
    nonPipeSystemLayers_.push_back(layer);
}

void LayerAttachNode::LayerNames(LayerTypeEnum which, CString& out, const CString& separator) const {
    qrs::standard::LayerNameList names;
    if ((which & kPipeSystemLayer) != 0) {
        for (const PipeLayerKey& layer : pipeSystemLayers_)
            names.add(layer.LayerName);
    }
    if ((which & kNonPipeSystemLayer) != 0) {
        for (const LayerNode& layer : nonPipeSystemLayers_)
            names.add(layer.LayerName);
    }
    out = names.joined(separator);
}
