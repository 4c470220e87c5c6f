// Handlers of the layer commands.
#include "layers/layercommands.h"

#include "acutads.h"
#include "dbdict.h"
#include "dbobjptr.h"
#include "frame/entry.h"
#include "layers/layerstate.h"
#include "PwxTool.h"
#include "rxmfcapi.h"

namespace qrs::layers {

namespace {

// Runs one operation of the tool bar among the module's own resources.
void run(void (CLayerToolBar::*operation)()) {
    const CAcModuleResourceOverride resources(frame::moduleInstance());
    (CLayerToolBar::Instance().*operation)();
}

}  // namespace

void setAllPipeLayOpen() {
    run(&CLayerToolBar::SetAllPipeLayOpen);
}

void unLockSelLayer() {
    run(&CLayerToolBar::UnLockSelLayer);
}

void unFrozenAllLayer() {
    run(&CLayerToolBar::UnFrozenAllLayer);
}

void frozenViewLayer() {
    if (!CLayerToolBar::Instance().RefuseInModelSpace()) frame::printNotAvailable(22);
}

void unFrozenViewAllLayer() {
    if (!CLayerToolBar::Instance().RefuseInModelSpace()) frame::printNotAvailable(23);
}

void openLayer() {
    CLayerToolBar::Instance();
    AcDbObjectIdArray layers;
    PwxTool::GetAllLayerIds(workingDatabase(), layers);
    bool anyIsOff = false;
    for (const AcDbObjectId& id : layers) {
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        anyIsOff = anyIsOff || (layer.openStatus() == Acad::eOk && layer->isOff());
    }
    if (anyIsOff)
        frame::printNotAvailable(11);
    else
        acutPrintf(L"\n所有图层都是打开的！");
}

void yshf() {
    CLayerToolBar::Instance();
    AcDbDatabase* database = workingDatabase();
    AcDbDictionary* dictionary = nullptr;
    bool hasSavedColours = false;
    if (database && database->getNamedObjectsDictionary(dictionary, AcDb::kForRead) == Acad::eOk) {
        hasSavedColours = dictionary->has(L"TuCengDanSe-YanSeHuiFu");
        dictionary->close();
    }
    if (hasSavedColours)
        frame::printNotAvailable(25);
    else
        acutPrintf(L"\n没有找到相关信息，图层颜色恢复失败！");
}

}  // namespace qrs::layers
