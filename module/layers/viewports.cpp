// Freezing and thawing layers in single viewports of a layout.
#include <set>

#include "aced.h"
#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymutl.h"
#include "layers/layerlistdlg.h"
#include "layers/layertoolbar.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "rxmfcapi.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::tools;

namespace {

using Viewport = AcDbObjectPointer<AcDbViewport>;

// Model space has no viewports to freeze in: true, with a message.
bool refuseInModelSpace() {
    resbuf value{};
    if (acedGetVar(L"TILEMODE", &value) != RTNORM || value.restype != RTSHORT || value.resval.rint != 1) return false;
    QrsExport::PrintRefusal(L"\n本命令必须在图纸布局中使用！");
    return true;
}

AcDbObjectIdArray layersThawedIn(AcDbObjectId viewport) {
    AcDbObjectIdArray all;
    AcDbObjectIdArray thawed;
    PwxTool::GetAllLayerIds(workingDatabase(), all);
    const Viewport opened(viewport, AcDb::kForRead);
    AcDbObjectIdArray list;
    if (opened.openStatus() != Acad::eOk || opened->getFrozenLayerList(list) != Acad::eOk) return thawed;
    const std::set<AcDbObjectId> frozen(begin(list), end(list));
    for (const AcDbObjectId& layer : all)
        if (frozen.count(layer) == 0) thawed.append(layer);
    return thawed;
}

void freezeIn(AcDbObjectId viewport, const AcDbObjectIdArray& layers) {
    if (layers.isEmpty()) return;
    Viewport opened(viewport, AcDb::kForWrite);
    if (opened.openStatus() != Acad::eOk || opened->freezeLayersInViewport(layers) != Acad::eOk)
        QrsExport::PrintRefusal(L"\n图层冻结失败!");
}

void freezeChosen(AcDbObjectId viewport) {
    CLayerFilterDlg dialog(L"冻结视口图层", layersThawedIn(viewport));
    if (dialog.show() == qrs::platform::kDialogOk) freezeIn(viewport, dialog.ChosenLayers());
}

// True while the sheet itself is drawn on, and not the model through a viewport.
bool isSheetCurrent() {
    resbuf value{};
    return acedGetVar(L"CVPORT", &value) == RTNORM && value.restype == RTSHORT && value.resval.rint == 1;
}

// What lies on the sheet itself is seen through no viewport.
bool isOnSheet(AcDbObjectId object) {
    const AcDbEntityPointer entity(object, AcDb::kForRead);
    return entity.openStatus() == Acad::eOk && entity->ownerId() != acdbSymUtil()->blockModelSpaceId(workingDatabase());
}

void freezeInCurrent(AcDbObjectId layer) {
    AcDbObjectIdArray one;
    one.append(layer);
    freezeIn(acedGetCurViewportObjectId(), one);
}

int pickViewport(const std::wstring& prompt, AcDbObjectId& viewport) {
    for (TEntitySet picked;;) {
        const int answer = pickObject(prompt, picked);
        if (answer != RTNORM) return answer;
        viewport = idOf(picked);
        if (Viewport(viewport, AcDb::kForRead).openStatus() == Acad::eOk) return RTNORM;
        QrsExport::PrintRefusal(L"\n选中的不是视口！");
    }
}

}  // namespace

void CLayerToolBar::FrozenViewLayer() {
    if (refuseInModelSpace()) return;
    for (TEntitySet picked; pickObject(L"\n请选择需要冻结的视口或视口图层上的任意图元 <退出>:", picked) == RTNORM;) {
        if (Viewport(idOf(picked), AcDb::kForRead).openStatus() == Acad::eOk) {
            freezeChosen(idOf(picked));
        } else if (isOnSheet(idOf(picked))) {
            QrsExport::PrintRefusal(L"\n选中的图元在图纸上，没有可以冻结的视口！请选择视口，或进入视口后选择图元。");
        } else if (isSheetCurrent()) {
            // An object of the model that was named.
            QrsExport::PrintRefusal(L"\n没有可以冻结的视口！请选择视口，或进入视口后选择图元。");
        } else if (const AcDbObjectId layer = layerOfPick(picked); !layer.isNull()) {
            freezeInCurrent(layer);
        }
        acedUpdateDisplay();
    }
}

void CLayerToolBar::UnFrozenViewAllLayer() {
    if (refuseInModelSpace()) return;
    AcDbObjectId viewport;
    if (pickViewport(L"\n请选择需要解冻图层的视口<退出>:", viewport) != RTNORM) return;
    AcDbObjectIdArray frozen;
    if (const Viewport opened(viewport, AcDb::kForRead); opened.openStatus() == Acad::eOk)
        opened->getFrozenLayerList(frozen);
    if (frozen.isEmpty()) {
        acutPrintf(L"\n视口中没有冻结的图层！");
        return;
    }
    CLayerFilterDlg dialog(L"解冻视口图层", frozen);
    if (dialog.show() != qrs::platform::kDialogOk || dialog.ChosenLayers().isEmpty()) return;
    Viewport opened(viewport, AcDb::kForWrite);
    if (opened.openStatus() == Acad::eOk) opened->thawLayersInViewport(dialog.ChosenLayers());
    acedUpdateDisplay();
}
