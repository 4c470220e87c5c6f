// Editing the current standard on a copy, and making the copy the current standard.
#pragma once

#include <memory>
#include <string_view>

#include "standard/standard.h"

class AcDbLayerTableRecord;

namespace qrs::standard {

class StandardEdit {
  public:
    // A deep copy of the current standard. Null, with a message, when there is none.
    static std::unique_ptr<StandardEdit> begin();

    Standard& standard() { return copy_; }
    // The copy's first group of that name: of pipe systems, of other layers. Null when there is none.
    PipeGroupNode* group(std::wstring_view name) const;
    OtherLayerNode* otherLayers(std::wstring_view name) const;

    // Writes the copy to the file of the current standard and makes it the current one: old names, object colours and
    // layer look-up follow. False, with one message box, when the file cannot be written; the file, the current
    // standard and the copy are then as they were. At most once true.
    bool save();

  private:
    StandardEdit() = default;
    Standard copy_;
};

// Gives a layer the colour, lineweight, plot flag and linetype of its definition. What a layer cannot have, and a
// linetype that cannot be loaded, leave its own.
void updateLayer(const LayerNode& layer, AcDbLayerTableRecord& record);

// Gives the drawing's layers that the current standard defines the colour, lineweight, plot flag and linetype of their
// definitions. Layers that the drawing lacks are not made.
void updateDrawingLayers();

}  // namespace qrs::standard
