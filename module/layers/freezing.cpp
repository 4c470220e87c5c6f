// Freezing and thawing layers.
#include "axlock.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PwxTool.h"
#include "rxmfcapi.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

void CLayerToolBar::FrozenLayer() {
    const AcAxDocLock lock;
    if (lock.lockStatus() != Acad::eOk) return;
    for (AcDbObjectId layer; pickLayer(L"\n请选择需要冻结层上的图元 <退出>:", layer) == RTNORM;) {
        AcDbObjectIdArray one;
        one.append(layer);
        if (freezeLayers(one, true)) acedUpdateDisplay();
    }
}

void CLayerToolBar::UnFrozenAllLayer() {
    const AcAxDocLock lock;
    if (lock.lockStatus() != Acad::eOk) return;
    AcDbObjectIdArray layers;
    PwxTool::GetAllLayerIds(workingDatabase(), layers);
    freezeLayers(layers, false);
    refreshLayerState();
}
