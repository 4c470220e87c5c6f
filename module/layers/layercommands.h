// Handlers of the layer commands: each works on the one CLayerToolBar, made when the first of them runs.
#pragma once

#include "layers/layertoolbar.h"

namespace qrs::layers {

template <void (CLayerToolBar::*operation)()>
void layerCommand() {
    (CLayerToolBar::Instance().*operation)();
}

}  // namespace qrs::layers
