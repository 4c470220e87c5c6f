// The one standard of the process.
#include "standard/holder.h"

#include <utility>

namespace qrs::standard {
namespace {

std::unique_ptr<StandardHolder>& holder() {
    static std::unique_ptr<StandardHolder> only;
    return only;
}

}  // namespace

StandardHolder& StandardHolder::instance() {
    if (!holder()) holder().reset(new StandardHolder);
    return *holder();
}

void StandardHolder::release() {
    holder().reset();
}

void StandardHolder::adopt(Standard standard, const CString& path) {
    layers_.clear();
    standard_ = std::move(standard);
    path_ = path;
    loaded_ = true;
}

void StandardHolder::initLayers() {
    layers_.clear();
    for (const auto& group : standard_.groups)
        group->InitLayers(layers_);
    for (const auto& group : standard_.otherLayers)
        group->GetAllLayer(layers_);
}

LayerNode* StandardHolder::findLayer(const CString& layerName) const {
    const auto found = layers_.find(layerName);
    return found != layers_.end() ? found->second : nullptr;
}

Standard* currentStandard() {
    StandardHolder& current = StandardHolder::instance();
    return current.isLoaded() ? &current.standard() : nullptr;
}

}  // namespace qrs::standard
