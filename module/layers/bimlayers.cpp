// Brings the layers of the standard's BIM systems into the drawing and their objects onto them.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "dbobjptr.h"
#include "layers/contents.h"
#include "layers/layertoolbar.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "rxmfcapi.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

// Sheets of BIM models are drawn in millimetres and plotted at 1:500.
constexpr double kLinetypeScale = 500.0;

// Which layer of a system its objects go to. Systems that lack it have them on their pipe layer.
struct BimSystem {
    const wchar_t* name;
    const wchar_t* layerType;
};
constexpr BimSystem kBimSystems[] = {{L"BIM喷头", L"喷头"}, {L"BIM", L"管线"}};
constexpr const wchar_t* kPipeLayerType = L"管线";

class ProgressMeter {
  public:
    explicit ProgressMeter(int steps) { acedSetStatusBarProgressMeter(L"正在处理...", 0, std::max(steps, 1)); }
    ~ProgressMeter() { acedRestoreStatusBar(); }
    ProgressMeter(const ProgressMeter&) = delete;
    ProgressMeter& operator=(const ProgressMeter&) = delete;

    void step() { acedSetStatusBarProgressMeterPos(++done_); }

  private:
    int done_ = 0;
};

// The lineweight of the editor that lies nearest to a drawn width in millimetres.
AcDb::LineWeight nearestWeight(double width) {
    static constexpr AcDb::LineWeight kWeights[] = {
        AcDb::kLnWt000, AcDb::kLnWt005, AcDb::kLnWt009, AcDb::kLnWt013, AcDb::kLnWt015, AcDb::kLnWt018,
        AcDb::kLnWt020, AcDb::kLnWt025, AcDb::kLnWt030, AcDb::kLnWt035, AcDb::kLnWt040, AcDb::kLnWt050,
        AcDb::kLnWt053, AcDb::kLnWt060, AcDb::kLnWt070, AcDb::kLnWt080, AcDb::kLnWt090, AcDb::kLnWt100,
        AcDb::kLnWt106, AcDb::kLnWt120, AcDb::kLnWt140, AcDb::kLnWt158, AcDb::kLnWt200, AcDb::kLnWt211};
    constexpr double kPerMillimetre = 100.0;
    const auto distance = [&](AcDb::LineWeight weight) {
        return std::abs(static_cast<double>(weight) - width * kPerMillimetre);
    };
    return *std::min_element(std::begin(kWeights), std::end(kWeights),
                             [&](AcDb::LineWeight a, AcDb::LineWeight b) { return distance(a) < distance(b); });
}

// The layer, made when the drawing lacks it, with the system's line width and linetype.
AcDbObjectId bringLayer(const CString& system, const CString& layerType) {
    const CString name = PipeSystemTool::GetLayerName(system, layerType, true);
    const AcDbObjectId layer = QrsExport::GetLayerIdFromString(name.GetString());
    AcDbLayerTableRecordPointer record(layer, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return layer;
    const AcDb::LineWeight weight = nearestWeight(PipeSystemTool::GetPipeLineWidth(system));
    const bool namesLinetype = !PipeSystemTool::GetLinetypeName(system, layerType).IsEmpty();
    const AcDbObjectId linetype =
        namesLinetype ? PipeSystemTool::InitLinetyle(system, layerType) : record->linetypeObjectId();
    const bool isSo = record->lineWeight() == weight && (linetype.isNull() || record->linetypeObjectId() == linetype);
    if (isSo || record->upgradeOpen() != Acad::eOk) return layer;
    record->setLineWeight(weight);
    if (!linetype.isNull()) record->setLinetypeObjectId(linetype);
    return layer;
}

// The pipes that bear the system's name, with what is attached to them and the nodes at their ends.
AcDbObjectIdArray objectsOf(const CString& system) {
    AcDbObjectIdArray objects;
    TPickEntSet all;
    all.Get(nullptr);
    for (const AcDbObjectId& id : all.ids()) {
        const AcRxClass* kind = id.objectClass();
        if (!kind || !kind->isDerivedFrom(TDbPipePrototype::desc())) continue;
        if (PipeSystemTool::GetPipeSystemName(id) != system) continue;
        objects.append(id);
        objects.append(companionsOf(id));
    }
    return objects;
}

void bringSystem(const BimSystem& bim) {
    const bool hasOwn = !PipeSystemTool::GetLayerName(bim.name, bim.layerType, false).IsEmpty();
    const AcDbObjectId layer = bringLayer(bim.name, hasOwn ? bim.layerType : kPipeLayerType);
    if (layer.isNull()) return;
    for (const AcDbObjectId& object : objectsOf(bim.name))
        if (!isLocked(layerOf(object))) moveObject(object, layer);
}

}  // namespace

void CLayerToolBar::CollectBimLayer() {
    QrsExport::PostCommand(L"zoom e ");
    workingDatabase()->setLtscale(kLinetypeScale);
    std::vector<PipeClassificationNode> groups;
    PipeSystemTool::GetPipeSystems(groups, false);
    int systems = 0;
    for (const PipeClassificationNode& group : groups)
        systems += static_cast<int>(group.Systems.size());
    ProgressMeter meter(systems);
    bool isThere = false;
    for (const PipeClassificationNode& group : groups) {
        for (const PipeInfoNode& system : group.Systems) {
            for (const BimSystem& bim : kBimSystems) {
                if (system.PipeName != bim.name) continue;
                isThere = true;
                bringSystem(bim);
            }
            meter.step();
        }
    }
    if (!isThere) QrsExport::PrintRefusal(L"\n当前标准中没有“BIM喷头”和“BIM”系统，没有图层可以处理！");
}
