// What the current standard knows, by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "facts.h"
#include "PipeNodes.h"
#include "PwxTool.h"

namespace qrs::audit {

// Answers are null, or empty, on a miss.
class StandardLists {
  public:
    // Everything the module's interface tells of the current standard and of the tables beside it.
    StandardLists();
    StandardLists(const StandardLists&) = delete;
    StandardLists& operator=(const StandardLists&) = delete;

    bool isLoaded() const { return isLoaded_; }
    const std::wstring& name() const { return name_; }
    // Its path as the system spells it; empty: no file was there, and the one that is built in serves.
    const std::wstring& file() const { return file_; }

    // Names are compared without regard to case; of several definitions of one name the first one counts.
    const LayerNode* layer(std::wstring_view name) const;
    const TextStyleNode* textStyle(std::wstring_view name) const;
    // As linetype.dbf or a layer definition spells it.
    const std::wstring* linetype(std::wstring_view name) const;
    // Whether linetype.dbf describes it, with its pattern.
    bool pattern(std::wstring_view name, std::wstring& pattern) const;
    // Layers that had this name, or key, in older standards.
    std::vector<const LayerNode*> layersOfOldName(std::wstring_view name) const;

    // Each name once, in the standard's order.
    const std::vector<const LayerNode*>& layers() const { return layerList_; }
    const std::vector<TextStyleNode>& textStyles() const { return textStyles_; }
    // Those of linetype.dbf.
    const std::vector<LinetypeNode>& tableLinetypes() const { return tableLinetypes_; }

  private:
    bool isLoaded_ = false;
    std::wstring name_, file_;
    std::vector<LayerNode> definitions_;
    std::vector<const LayerNode*> layerList_;
    ByName<const LayerNode*> layers_;
    ByName<std::vector<const LayerNode*>> oldNames_;
    std::vector<TextStyleNode> textStyles_;
    ByName<const TextStyleNode*> styles_;
    std::vector<LinetypeNode> tableLinetypes_;
    ByName<std::wstring> linetypes_;
};

}  // namespace qrs::audit
