// What several layer commands share.
#pragma once

#include <functional>

#include "dbsymtb.h"

namespace qrs::layers {

// Makes the editor's own layer tool bar read the layer states again and, unless the user has switched it off
// (LayerLockShowUpdate), regenerates the drawing. All of it is typed once the command has ended.
void refreshLayerState();

// Freezes or thaws each layer that is not so yet. A layer that cannot be frozen is told on the command line; one that
// cannot be opened is passed over. True when at least one layer changed.
bool freezeLayers(const AcDbObjectIdArray& layers, bool freeze);

// Sets a state of each layer that differs: has reads it, set writes it. Layers that are so already are only read, so
// that nothing of the drawing is touched for them; one that cannot be opened is passed over.
void changeLayers(const AcDbObjectIdArray& layers, const std::function<bool(const AcDbLayerTableRecord&)>& has,
                  const std::function<void(AcDbLayerTableRecord&)>& set);

// Turns off, or on, those of the layers that are not so yet.
void turnLayers(const AcDbObjectIdArray& layers, bool off);

}  // namespace qrs::layers
