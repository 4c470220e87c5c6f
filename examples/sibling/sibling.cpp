// A plug-in of somebody else: draws pipes, and asks the module about them through what it exports.
//
//     ASKSTANDARD   which standard is loaded
//     DRAWPIPE      asks for a pipe system and two points, and puts a pipe on that system's layers
//     ASKPIPE       asks for a pipe, or anything that lies on a pipe's layer, and tells all about its pipe system
//     INITSTANDARD  makes every layer and text style of the standard that the drawing lacks
//
// It knows the module by its four headers, the suite's pipes by theirs, and the editor by its interface: commands,
// prompts, entities and their layers.
#include <accmd.h>
#include <acedads.h>
#include <acutads.h>
#include <adsdb.h>
#include <dbapserv.h>
#include <dbobjptr.h>
#include <FontTool.h>
#include <PipeNodes.h>
#include <PipeSystemTool.h>
#include <PwxTool.h>
#include <qrs_pipeentity.h>
#include <rxdict.h>
#include <rxregsvc.h>

namespace {

const ACHAR* const kGroup = L"SIBLING";

AcEdCommandStack* commands() {
    return AcEdCommandStack::cast(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS"));
}

// Texts of the interface that their receiver releases.
CString taken(ACHAR* text) {
    const CString copy(text != nullptr ? text : L"");
    acutDelString(text);
    return copy;
}

// --- ASKSTANDARD

// The name of the current standard; and that its classes can be used from outside.
void askStandard() {
    PipeNode system;
    system.PipeName = L"试验";
    auto* layer = new LayerNode;
    layer->LayerType = L"标注";
    layer->LayerName = L"试验标注";
    system.AddLayerNode(layer);
    const LayerNode* borrowed = system.FindLayerNode(L"标高");
    acutPrintf(L"\nstandard %s, elevation text on %s, water supply known: %d\n",
               static_cast<const ACHAR*>(PipeSystemTool::GetCurrentStandardName()),
               borrowed ? static_cast<const ACHAR*>(borrowed->LayerName) : L"-",
               PipeSystemTool::IsPipeSystemOfCurrentStandard(L"生活给水") ? 1 : 0);
}

// --- DRAWPIPE

bool askPoint(const AcGePoint3d* base, const ACHAR* prompt, AcGePoint3d& point) {
    ads_point picked;
    if (acedGetPoint(base != nullptr ? asDblArray(*base) : nullptr, prompt, picked) != RTNORM) return false;
    point.set(picked[0], picked[1], picked[2]);
    return true;
}

// A new entity belongs to its maker until a block has taken it over.
void drawPipe() {
    ACHAR system[133];
    AcGePoint3d start;
    AcGePoint3d end;
    if (acedGetString(1, L"\nPipe system: ", system) != RTNORM) return;
    if (!PipeSystemTool::IsPipeSystemOfCurrentStandard(system)) {
        acutPrintf(L"\nThe standard has no pipe system \"%s\".\n", system);
        return;
    }
    if (!askPoint(nullptr, L"\nFrom point: ", start) || !askPoint(&start, L"\nTo point: ", end)) return;

    AcDbObjectPointer<TDbPipe> pipe;
    pipe.create();
    pipe->SetCurve(TPipeCurve::Line(start, end));
    PipeSystemTool::SetPipeSystemName(pipe.object(), system);
    AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, acdbHostApplicationServices()->workingDatabase(),
                                      AcDb::kForWrite);
    if (space.openStatus() != Acad::eOk) return;
    if (space->appendAcDbEntity(pipe.object()) != Acad::eOk) {
        acutPrintf(L"\nThis drawing cannot hold pipes.\n");
        return;
    }
    // The standard says which layers these are; they are made when the drawing lacks them.
    PipeSystemTool::SetPipeLayer(pipe.object(), system);
    ACHAR handle[17] = L"";
    pipe->objectId().handle().getIntoAsciiBuffer(handle);
    acutPrintf(L"\nPipe %s of %s on layer %s.\n", handle,
               static_cast<const ACHAR*>(PipeSystemTool::GetPipeSystemName(pipe.object())),
               static_cast<const ACHAR*>(taken(pipe->layer())));
}

// --- ASKPIPE

// A material with its sizes, each written as in a label, and the diameters of the largest.
void tellMaterial(const ACHAR* where, const CString& material) {
    if (material.IsEmpty()) return;
    acutPrintf(L"  %s %s:", where, static_cast<const ACHAR*>(material));
    const CString prefix = PipeSystemTool::GetPrefixOfPipeMaterial(material);
    int largest = 0;
    TDPtrList<int> sizes;
    PipeSystemTool::GetPipeDnByMaterial(material, sizes);
    for (const int* dn : sizes) {
        acutPrintf(L" %s%d", static_cast<const ACHAR*>(prefix), *dn);
        if (*dn > largest) largest = *dn;
    }
    acutPrintf(L"; %s%d measures %.1f mm outside, %.1f mm inside\n", static_cast<const ACHAR*>(prefix), largest,
               PipeSystemTool::GetPipeOuterDn(material, largest), PipeSystemTool::GetPipeInnerDn(material, largest));
}

void tellSystem(const CString& system) {
    acutPrintf(L"  label %s, %s, lines %.2f mm wide\n",
               static_cast<const ACHAR*>(PipeSystemTool::GetPipeDim(system, true, L"/")),
               static_cast<const ACHAR*>(PipeSystemTool::GetPipeWaterFlowStatus(system)),
               PipeSystemTool::GetPipeLineWidth(system));
    tellMaterial(L"indoors", PipeSystemTool::GetPipeMaterial(system, kIndoorMaterial));
    tellMaterial(L"outdoors", PipeSystemTool::GetPipeMaterial(system, kOutdoorMaterial));
    acutPrintf(L"  layers: %s\n", static_cast<const ACHAR*>(PipeSystemTool::GetPipeLayers(system, L", ")));
}

void askPipe() {
    ads_name entity;
    ads_point at;
    if (acedEntSel(L"\nSelect a pipe: ", entity, at) != RTNORM) return;
    AcDbObjectId id;
    CString layer;
    if (acdbGetObjectId(id, entity) != Acad::eOk) return;
    {
        const AcDbEntityPointer opened(id, AcDb::kForRead);
        if (opened.openStatus() != Acad::eOk) return;
        layer = taken(opened->layer());
        // What the pipe says of itself; other entities are known by their layer alone.
        if (TDbPipe::cast(opened.object()) != nullptr)
            acutPrintf(L"\nThe pipe's own system: %s",
                       static_cast<const ACHAR*>(PipeSystemTool::GetPipeSystemName(id)));
    }
    const CString system = PipeSystemTool::GetPipeSystemNameByLayer(layer);
    if (system.IsEmpty()) {
        acutPrintf(L"\nLayer %s belongs to no pipe system.\n", static_cast<const ACHAR*>(layer));
        return;
    }
    // The answer lies in the kind; it stays as it is when the layer is not one that pipes lie on.
    int kind = -1;
    PipeSystemTool::IsPipeLayer(layer, &kind);
    const ACHAR* const kinds[] = {L"another layer", L"the pipe layer", L"the vertical-pipe layer", L"the bend layer"};
    acutPrintf(L"\nLayer %s is %s of %s (%s)\n", static_cast<const ACHAR*>(layer), kinds[kind + 1],
               static_cast<const ACHAR*>(system),
               static_cast<const ACHAR*>(PipeSystemTool::GetPipeSystemGroupName(layer)));
    tellSystem(system);
}

// --- INITSTANDARD

// Every layer the standard defines: of the pipe systems, of the independent keys, of the other groups.
void initLayers() {
    std::vector<PipeClassificationNode> groups;
    PipeSystemTool::GetPipeSystems(groups, false);
    for (const PipeClassificationNode& group : groups)
        for (const PipeInfoNode& system : group.Systems)
            for (const auto& layer : system.LayerNames)
                PipeSystemTool::InitLayer(system.PipeName, layer.first, nullptr);
    std::vector<CString> keys;
    PipeSystemTool::GetIndependentLayerKey(keys);
    for (const CString& key : keys)
        PipeSystemTool::InitIndependentLayer(key, nullptr);
    for (const ACHAR* group : {L"建筑", L"其他", L"默认"}) {
        std::vector<CString> names;
        PipeSystemTool::GetLayerNames(group, names);
        for (const CString& name : names)
            PipeSystemTool::InitLayer(name);
    }
}

void initStandard() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectIdArray before, after;
    PwxTool::GetAllLayerIds(database, before);
    initLayers();
    PwxTool::GetAllLayerIds(database, after);
    std::vector<TextStyleNode> styles;
    PipeSystemTool::GetAllTextStyleInfo(styles);
    int ready = 0;
    for (const TextStyleNode& style : styles)
        ready += PipeSystemTool::InitTextStyle(style.Name).isNull() ? 0 : 1;
    acutPrintf(L"\n%d layers made, %d of %d text styles ready.\n", after.length() - before.length(), ready,
               static_cast<int>(styles.size()));
}

struct Command {
    const ACHAR* name;
    void (*run)();
};

const Command kCommands[] = {
    {L"ASKSTANDARD", askStandard}, {L"DRAWPIPE", drawPipe}, {L"ASKPIPE", askPipe}, {L"INITSTANDARD", initStandard}};

}  // namespace

#if defined(_WIN32)
#define SIBLING_PORT __declspec(dllexport)
#else
#define SIBLING_PORT __attribute__((visibility("default")))
#endif

// The editor calls it when the plug-in is loaded, and again before it is unloaded.
extern "C" SIBLING_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        for (const Command& command : kCommands)
            commands()->addCommand(kGroup, command.name, command.name, ACRX_CMD_MODAL, command.run);
    } else if (message == AcRx::kUnloadAppMsg) {
        commands()->removeGroup(kGroup);
    }
    return AcRx::kRetOK;
}
