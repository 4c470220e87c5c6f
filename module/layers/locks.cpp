// Locking and unlocking layers.
#include "acutads.h"
#include "adscodes.h"
#include "dbsymtb.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PwxTool.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

// Of each layer that is so already the name and what there is to say are told; null: nothing is.
void setLocked(const AcDbObjectIdArray& layers, bool locked, const wchar_t* alreadySo) {
    changeLayers(
        layers,
        [&](const AcDbLayerTableRecord& layer) {
            if (layer.isLocked() != locked) return false;
            const ACHAR* name = nullptr;
            if (alreadySo && layer.getName(name) == Acad::eOk) acutPrintf(L"\n%s%s", name, alreadySo);
            return true;
        },
        [locked](AcDbLayerTableRecord& layer) { layer.setIsLocked(locked); });
}

AcDbObjectIdArray layersToKeep(const AcDbObjectIdArray& picked) {
    AcDbObjectIdArray objects;
    for (const AcDbObjectId& id : picked) {
        objects.append(id);
        objects.append(companionsOf(id));
    }
    return layersOf(objects);
}

}  // namespace

void CLayerToolBar::LockSelLayer() {
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择要锁定层上的图元 <退出>:", picked) != RTNORM) return;
    setLocked(layersOf(picked.ids()), true, L"层本身就是锁定的！");
    refreshLayerState();
}

void CLayerToolBar::UnLockSelLayer() {
    TPickEntSet picked;
    const int answer = SelectEntities(L"\n请选择要解锁层上的图元(ESC退出,空格解开全部层) <全部>:", picked);
    if (answer == RTNORM) {
        setLocked(layersOf(picked.ids()), false, L"层本身就没有锁定！");
    } else if (answer == RTNONE) {
        AcDbObjectIdArray layers;
        PwxTool::GetAllLayerIds(workingDatabase(), layers);
        setLocked(layers, false, nullptr);
    } else {
        return;
    }
    refreshLayerState();
}

void CLayerToolBar::LockOtherLayers() {
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择要保留不被锁定层上的图元<退出>:", picked) != RTNORM) return;
    const AcDbObjectIdArray kept = layersToKeep(picked.ids());
    setLocked(layersBut(kept), true, nullptr);
    setLocked(kept, false, nullptr);
    for (const AcDbObjectId& id : kept)
        acutPrintf(L"%s 层打开\n", nameOf(id).c_str());
    refreshLayerState();
}
