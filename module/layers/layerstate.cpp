// What several layer commands share: refreshing the layer state, freezing and thawing.
#include "layers/layerstate.h"

#include "dbobjptr.h"
#include "qrs_kernal.h"
#include "tools/arrayloop.h"

namespace qrs::layers {

void refreshLayerState() {
    // Escape ends whatever waits; the command that is begun and left at once has the tool bar read the layers again.
    if (!QrsExport::PostCommand(L"\x1b-layer\n")) return;
    QrsExport::PostCommand(L"\x1b");
    if (TRegKey(GetRegLocation(L"PWXConfig")).GetInteger(L"LayerLockShowUpdate", 1) != 0)
        QrsExport::PostCommand(L"re\n");
}

bool freezeLayers(const AcDbObjectIdArray& layers, bool freeze) {
    bool anyChanged = false;
    changeLayers(
        layers, [freeze](const AcDbLayerTableRecord& layer) { return layer.isFrozen() == freeze; },
        [&](AcDbLayerTableRecord& layer) {
            if (layer.setIsFrozen(freeze) == Acad::eOk)
                anyChanged = true;
            else if (freeze)
                QrsExport::PrintRefusal(layer.database()->clayer() == layer.objectId() ? L"\n不能冻结当前层!"
                                                                                       : L"\n图层冻结失败!");
        });
    return anyChanged;
}

void changeLayers(const AcDbObjectIdArray& layers, const std::function<bool(const AcDbLayerTableRecord&)>& has,
                  const std::function<void(AcDbLayerTableRecord&)>& set) {
    for (const AcDbObjectId& id : layers) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk || has(*layer.object())) continue;
        if (layer->upgradeOpen() == Acad::eOk) set(*layer.object());
    }
}

void turnLayers(const AcDbObjectIdArray& layers, bool off) {
    changeLayers(
        layers, [off](const AcDbLayerTableRecord& layer) { return layer.isOff() == off; },
        [off](AcDbLayerTableRecord& layer) { layer.setIsOff(off); });
}

}  // namespace qrs::layers
