// Shows every layer, system and object of a drawing again.
#include <memory>
#include <vector>

#include "aced.h"
#include "dbobjptr.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "qrs_pipewire.h"
#include "rxmfcapi.h"
#include "tools/drawing.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

void turnAllLayersOn(AcDbDatabase* database) {
    AcDbObjectIdArray layers;
    PwxTool::GetAllLayerIds(database, layers);
    turnLayers(layers, false);
}

// Built-in systems are shown by type, those that users defined by name.
void showAllSystems(AcDbDatabase* database) {
    TDbPsConfig* config = GetDwgPsGlobal(database);
    if (!config) return;
    std::vector<PipeClassificationNode> groups;
    PipeSystemTool::GetPipeSystems(groups, false);
    for (const PipeClassificationNode& group : groups) {
        for (const PipeInfoNode& system : group.Systems) {
            const std::wstring name = system.PipeName.GetString();
            const int type = GetSysType(name);
            if (type == kCustomSysType)
                config->ShowCustomPipeSystem(name);
            else
                config->ShowSystem(type, 1);
        }
    }
}

std::unique_ptr<AcDbBlockTableRecordIterator> walkModelSpace(AcDbDatabase* database) {
    const AcDbBlockTableRecordPointer modelSpace(ACDB_MODEL_SPACE, database, AcDb::kForRead);
    AcDbBlockTableRecordIterator* pBlockIterator = nullptr;
    Acad::ErrorStatus es = modelSpace.openStatus();
    if (es == Acad::eOk) es = modelSpace->newIterator(pBlockIterator);
    // The assertion is told and ends the walk; it must not take the program, and the user's other drawings, with it
    // because of what one drawing holds.
    if (!(es == Acad::eOk && pBlockIterator != nullptr))
        QrsExport::PrintRefusal(L"\nAssertion failed: es==Acad::eOk && pBlockIterator!=0, LayerToolBar\n");
    return std::unique_ptr<AcDbBlockTableRecordIterator>(pBlockIterator);
}

// What must be redrawn. Objects that show already are only read.
AcDbObjectIdArray showHiddenObjects(AcDbDatabase* database) {
    AcDbObjectIdArray redrawn;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator = walkModelSpace(database);
    if (!iterator) return redrawn;
    AcDbEntityPointer entity;
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk || entity.open(id, AcDb::kForRead) != Acad::eOk) continue;
        const bool isInvisible = entity->visibility() == AcDb::kInvisible;
        if (isInvisible || IsNoDrawingObject(entity)) redrawn.append(id);
        if (isInvisible && entity->upgradeOpen() == Acad::eOk) entity->setVisibility(AcDb::kVisible);
    }
    return redrawn;
}

}  // namespace

void CLayerToolBar::SetAllPipeLayOpen() {
    AcDbDatabase* database = workingDatabase();
    turnAllLayersOn(database);
    showAllSystems(database);
    UpdateGraphic(showHiddenObjects(database));
    acedUpdateDisplay();
}
