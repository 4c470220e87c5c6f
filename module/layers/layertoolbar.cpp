// The one object of the layer commands.
#include "layers/layertoolbar.h"

#include "host/platform/callrecord.h"

namespace {

CLayerToolBar* theToolBar = nullptr;

}  // namespace

CLayerToolBar::CLayerToolBar() {
    qrs::platform::recordCall("CLayerToolBar::CLayerToolBar");
}

CLayerToolBar& CLayerToolBar::Instance() {
    if (!theToolBar) theToolBar = new CLayerToolBar;
    return *theToolBar;
}

void CLayerToolBar::Release() {
    delete theToolBar;
    theToolBar = nullptr;
}
