// The layer commands that are little more than a dialog.
#include "acutads.h"
#include "dbobjptr.h"
#include "layers/layerlistdlg.h"
#include "layers/layerpickupdlg.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PwxTool.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

AcDbObjectIdArray layersThatAreOff() {
    AcDbObjectIdArray all;
    AcDbObjectIdArray off;
    PwxTool::GetAllLayerIds(workingDatabase(), all);
    for (const AcDbObjectId& id : all) {
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
        if (layer.openStatus() == Acad::eOk && layer->isOff()) off.append(id);
    }
    return off;
}

}  // namespace

void CLayerToolBar::OpenLayer() {
    const AcDbObjectIdArray off = layersThatAreOff();
    if (off.isEmpty()) {
        acutPrintf(L"\n所有图层都是打开的！");
        return;
    }
    COpenLayerDlg dialog(off);
    if (dialog.show() != qrs::platform::kDialogOk) return;
    turnLayers(dialog.ChosenLayers(), false);
    refreshLayerState();
}

void CLayerToolBar::PickUpLayer() {
    CLayerPickUpDlg().show();
}
