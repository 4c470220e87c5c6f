// Handlers of the layer commands: each works on the one CLayerToolBar, made when the first of them runs.
#pragma once

#include "frame/cmdtable.h"
#include "layers/layertoolbar.h"

namespace qrs::layers {

template <void (CLayerToolBar::*operation)()>
void layerCommand() {
    (CLayerToolBar::Instance().*operation)();
}

// A layer command that is still to come.
template <int row>
void laterLayerCommand() {
    CLayerToolBar::Instance();
    frame::printNotAvailable(row);
}

}  // namespace qrs::layers
