// Handlers of the layer commands.
#include "layers/layercommands.h"

#include "acutads.h"
#include "dbdict.h"
#include "dbobjptr.h"
#include "layers/layerstate.h"
#include "PwxTool.h"

namespace qrs::layers {

void setAllPipeLayOpen() {
    CLayerToolBar::Instance().SetAllPipeLayOpen();
}

void unLockSelLayer() {
    CLayerToolBar::Instance().UnLockSelLayer();
}

void unFrozenAllLayer() {
    CLayerToolBar::Instance().UnFrozenAllLayer();
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
