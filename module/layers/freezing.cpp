// Freezing and thawing layers.
#include "aced.h"
#include "adscodes.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PwxTool.h"
#include "rxmfcapi.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

void CLayerToolBar::FrozenLayer() {
    for (AcDbObjectId layer; pickLayer(L"\n请选择需要冻结层上的图元 <退出>:", layer) == RTNORM;) {
        AcDbObjectIdArray one;
        one.append(layer);
        if (freezeLayers(one, true)) acedUpdateDisplay();
    }
}

void CLayerToolBar::UnFrozenAllLayer() {
    AcDbObjectIdArray layers;
    PwxTool::GetAllLayerIds(workingDatabase(), layers);
    freezeLayers(layers, false);
    refreshLayerState();
}
