// Asks the module for its lists.
#include "standardlists.h"

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "PipeSystemTool.h"
#include "qrs_standard.h"

namespace qrs::audit {

namespace {

std::wstring wide(const CString& text) {
    return std::wstring(text.view());
}

}  // namespace

StandardLists::StandardLists() : name_(wide(PipeSystemTool::GetCurrentStandardName())) {
    isLoaded_ = PipeSystemTool::GetAllLayerInfo(definitions_) && PipeSystemTool::GetAllTextStyleInfo(textStyles_);
    if (const QrsExport::TStandardInUse& used = QrsExport::GetStandardInUse(); !used.isBuiltIn)
        file_ = platform::fromUtf8(platform::nativePath(used.file).u8string());
    PwxTool::GetAllLinetype(tableLinetypes_);
    for (const LinetypeNode& linetype : tableLinetypes_)
        linetypes_.emplace(wide(linetype.Name), wide(linetype.Name));
    for (const LayerNode& layer : definitions_) {
        if (!layers_.emplace(wide(layer.LayerName), &layer).second) continue;
        layerList_.push_back(&layer);
        if (!layer.LineStyle.IsEmpty()) linetypes_.emplace(wide(layer.LineStyle), wide(layer.LineStyle));
        if (!layer.OldKey.IsEmpty()) oldNames_[wide(layer.OldKey)].push_back(&layer);
    }
    for (const TextStyleNode& style : textStyles_)
        styles_.emplace(wide(style.Name), &style);
}

const LayerNode* StandardLists::layer(std::wstring_view name) const {
    const auto found = layers_.find(name);
    return found != layers_.end() ? found->second : nullptr;
}

const TextStyleNode* StandardLists::textStyle(std::wstring_view name) const {
    const auto found = styles_.find(name);
    return found != styles_.end() ? found->second : nullptr;
}

const std::wstring* StandardLists::linetype(std::wstring_view name) const {
    const auto found = linetypes_.find(name);
    return found != linetypes_.end() ? &found->second : nullptr;
}

bool StandardLists::pattern(std::wstring_view name, std::wstring& pattern) const {
    CString content;
    if (!PwxTool::GetLinetypePattern(CString(name), content)) return false;
    pattern = wide(content);
    return true;
}

std::vector<const LayerNode*> StandardLists::layersOfOldName(std::wstring_view name) const {
    const auto found = oldNames_.find(name);
    return found != oldNames_.end() ? found->second : std::vector<const LayerNode*>();
}

}  // namespace qrs::audit
