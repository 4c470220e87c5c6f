// The one object of the layer commands.
#include "layers/layertoolbar.h"

namespace {

CLayerToolBar* theToolBar = nullptr;
int timesMade = 0;

}  // namespace

CLayerToolBar::CLayerToolBar() {
    ++timesMade;
}

CLayerToolBar& CLayerToolBar::Instance() {
    if (!theToolBar) theToolBar = new CLayerToolBar;
    return *theToolBar;
}

void CLayerToolBar::Release() {
    delete theToolBar;
    theToolBar = nullptr;
}

int CLayerToolBar::TimesMade() {
    return timesMade;
}
