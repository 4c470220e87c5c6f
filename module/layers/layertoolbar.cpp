// The layer commands.
#include "layers/layertoolbar.h"

#include <set>

#include "acedads.h"
#include "axlock.h"
#include "dbobjptr.h"
#include "layers/layerstate.h"
#include "PwxTool.h"
#include "qrs_kernal.h"

using namespace qrs::layers;

namespace {

CLayerToolBar* theToolBar = nullptr;
int timesMade = 0;

// The layers of the entities, each once, in the order they are met.
AcDbObjectIdArray layersOf(const AcDbObjectIdArray& entities) {
    AcDbObjectIdArray layers;
    std::set<AcDbObjectId> seen;
    for (const AcDbObjectId& id : entities) {
        AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        const AcDbObjectId layer = entity->layerId();
        if (!layer.isNull() && seen.insert(layer).second) layers.append(layer);
    }
    return layers;
}

void unlockLayers(const AcDbObjectIdArray& layers, bool tellUnlocked) {
    changeLayers(
        layers,
        [tellUnlocked](const AcDbLayerTableRecord& layer) {
            if (layer.isLocked()) return false;
            const ACHAR* name = nullptr;
            if (tellUnlocked && layer.getName(name) == Acad::eOk) acutPrintf(L"\n%s层本身就没有锁定！", name);
            return true;
        },
        [](AcDbLayerTableRecord& layer) { layer.setIsLocked(false); });
}

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

void CLayerToolBar::UnFrozenAllLayer() {
    const AcAxDocLock lock;
    if (lock.lockStatus() != Acad::eOk) return;
    AcDbObjectIdArray layers;
    PwxTool::GetAllLayerIds(workingDatabase(), layers);
    freezeLayers(layers, false);
    refreshLayerState();
}

void CLayerToolBar::UnLockSelLayer() {
    const AcAxDocLock lock;
    if (lock.lockStatus() != Acad::eOk) return;
    TPickEntSet picked;
    const int answer = SelectEntities(L"\n请选择要解锁层上的图元(ESC退出,空格解开全部层) <全部>:", picked);
    if (answer == RTNORM) {
        unlockLayers(layersOf(picked.ids()), true);
    } else if (answer == RTNONE) {
        AcDbObjectIdArray layers;
        PwxTool::GetAllLayerIds(workingDatabase(), layers);
        unlockLayers(layers, false);
    } else {
        return;
    }
    refreshLayerState();
}

bool CLayerToolBar::RefuseInModelSpace() {
    resbuf value{};
    if (acedGetVar(L"TILEMODE", &value) != RTNORM || value.restype != RTSHORT || value.resval.rint != 1) return false;
    acutPrintf(L"\n本命令必须在图纸布局中使用！");
    return true;
}
