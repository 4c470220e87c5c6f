// A plug-in of somebody else: draws pipes, and asks the module about them through what it exports.
//
//     ASKSTANDARD   which standard is loaded
//     DRAWPIPE      asks for a pipe system and two points, and puts a pipe on that system's layers
//     ASKPIPE       asks for a pipe, or anything that lies on a pipe's layer, and tells all about its pipe system
//     INITSTANDARD  makes every layer and text style of the standard that the drawing lacks
//     NUMBERRISERS  gives every riser without a serial the next one of its pipe system and building
//     NUMBERRUN     asks for a node, and numbers the run of pipes that begins there, with texts beside the nodes
//
// It knows the module by its four headers, the suite's pipes by theirs, and the editor by its interface: commands,
// prompts, entities and their layers.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <set>

#include <accmd.h>
#include <acdbads.h>
#include <acedads.h>
#include <acutads.h>
#include <dbapserv.h>
#include <dbobjptr.h>
#include <FontTool.h>
#include <PipeNodes.h>
#include <PipeSystemTool.h>
#include <PwxTool.h>
#include <qrs_pipeentity.h>
#include <qrs_pipewire.h>
#include <qrs_search.h>
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

// --- what both numberings share

const ACHAR* const kSerial = L"PIPE-SERIAL";
const ACHAR* const kBuilding = L"BUILDING-SERIAL";

// The entities of model space in drawing order.
void forEachEntity(const std::function<void(AcDbObjectId)>& visit) {
    const AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, acdbHostApplicationServices()->workingDatabase(),
                                            AcDb::kForRead);
    AcDbBlockTableRecordIterator* walk = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(walk) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(walk);
    for (AcDbObjectId id; !walk->done(); walk->step())
        if (walk->getEntityId(id) == Acad::eOk) visit(id);
}

CString serialOf(AcDbObjectId id) {
    const AcDbEntityPointer entity(id, AcDb::kForRead);
    return entity.openStatus() == Acad::eOk ? PwxTool::ReadXdata(entity.object(), kSerial) : CString();
}

bool setSerial(AcDbObjectId id, const CString& serial) {
    AcDbEntityPointer entity(id, AcDb::kForWrite);
    return entity.openStatus() == Acad::eOk && PwxTool::WriteXdata(entity.object(), kSerial, serial) != 0;
}

// --- NUMBERRISERS

// Gives out serials group by group. A group whose serials hold more than digits goes on with these; one of plain
// numbers counts on; one without any begins at 1.
class RiserSerials {
  public:
    // No serial comes after 0 or after nothing, so these tell groups that have none.
    RiserSerials() { PwxTool::InitVPipeSerials(numbers_, texts_, L"", 0); }

    CString next(const CString& group) {
        CString& text = texts_[group];
        int& number = numbers_[group];
        // Risers without a serial leave a group at 1, too.
        if (text.IsEmpty() || text == L"1") {
            CString serial;
            serial.Format(L"%d", number > 0 ? number : 1);
            number = (number > 0 ? number : 1) + 1;
            return serial;
        }
        const CString serial = text;
        PwxTool::IncreaseSerial(text, 1);
        return serial;
    }

  private:
    std::map<CString, int> numbers_;
    std::map<CString, CString> texts_;
};

// The key that a riser's serials are counted under.
CString groupOf(const TDbPipe& pipe) {
    const std::wstring own = pipe.GetPipeSystemName();
    CString group(own.empty() ? GetSystypeName(pipe.GetPipeSysType()) : own);
    const CString building = PwxTool::ReadXdata(&pipe, kBuilding);
    if (!building.IsEmpty()) group += L"%%" + building;
    return group;
}

void numberRisers() {
    RiserSerials serials;
    AcDbObjectIdArray waiting;
    forEachEntity([&](AcDbObjectId id) {
        const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        const bool isRiser = pipe.openStatus() == Acad::eOk && pipe->GetCurve().IsVertical();
        if (isRiser && PwxTool::ReadXdata(pipe.object(), kSerial).IsEmpty()) waiting.append(id);
    });
    int numbered = 0;
    for (int i = 0; i < waiting.length(); ++i) {
        CString group;
        {
            const AcDbObjectPointer<TDbPipe> pipe(waiting[i], AcDb::kForRead);
            if (pipe.openStatus() != Acad::eOk) continue;
            group = groupOf(*pipe.object());
        }
        const CString serial = serials.next(group);
        if (!setSerial(waiting[i], serial)) continue;
        acutPrintf(L"\n%s: %s", static_cast<const ACHAR*>(group), static_cast<const ACHAR*>(serial));
        ++numbered;
    }
    acutPrintf(L"\n%d risers numbered.\n", numbered);
}

// --- NUMBERRUN

struct PipeEnds {
    AcDbObjectId pipe;
    AcDbObjectId start;
    AcDbObjectId end;
};

// Follows the pipes from a node to the end of the run. Where it branches, the pipe drawn first is taken; it ends where
// it comes back to itself.
class Run {
  public:
    explicit Run(AcDbObjectId first) {
        std::map<AcDbObjectId, std::vector<PipeEnds>> pipesAt;
        forEachEntity([&](AcDbObjectId id) {
            const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
            if (pipe.openStatus() != Acad::eOk) return;
            const PipeEnds ends{id, pipe->GetStartNode(), pipe->GetEndNode()};
            for (const AcDbObjectId& node : {ends.start, ends.end})
                if (!node.isNull()) pipesAt[node].push_back(ends);
        });
        std::set<AcDbObjectId> passed;
        for (AcDbObjectId node = first; !node.isNull() && passed.insert(node).second;) {
            addNode(node);
            const std::vector<PipeEnds>& pipes = pipesAt[node];
            const auto onward = std::find_if(pipes.begin(), pipes.end(),
                                             [&](const PipeEnds& pipe) { return passed.count(pipe.pipe) == 0; });
            if (onward == pipes.end()) break;
            passed.insert(onward->pipe);
            add(onward->pipe, SSearchPipeList::kPipe);
            node = onward->start == node ? onward->end : onward->start;
        }
        for (std::size_t i = 0; i + 1 < elements_.size(); ++i)
            elements_[i]->next = elements_[i + 1].get();
    }

    SSearchPipeList* first() const { return elements_.front().get(); }

  private:
    void addNode(AcDbObjectId id) {
        int kind = SSearchPipeList::kPipe;
        if (const AcDbObjectPointer<TDbPipeNode> node(id, AcDb::kForRead); node.openStatus() == Acad::eOk) {
            if (node->GetKind() == TDbPipeNode::kJoint) kind = SSearchPipeList::kJoint;
            if (node->GetKind() == TDbPipeNode::kWell) kind = SSearchPipeList::kWell;
            if (node->GetKind() == TDbPipeNode::kEquipment) kind = SSearchPipeList::kEquipment;
        }
        add(id, kind);
    }
    void add(AcDbObjectId id, int kind) {
        elements_.push_back(std::make_unique<SSearchPipeList>());
        elements_.back()->id = id;
        elements_.back()->kind = kind;
        elements_.back()->serial = kind == SSearchPipeList::kPipe ? CString() : serialOf(id);
    }

    std::vector<std::unique_ptr<SSearchPipeList>> elements_;
};

// Behind the greatest number that a node of the drawing bears.
int nextNodeNumber() {
    int next = 1;
    forEachEntity([&](AcDbObjectId id) {
        if (id.objectClass() != TDbPipeNode::desc()) return;
        const CString serial = serialOf(id);
        if (PwxTool::IsDigit(serial, false) && serial.GetLength() < 5)
            next = std::max(next, static_cast<int>(std::wcstol(serial, nullptr, 10)) + 1);
    });
    return next;
}

bool askNode(AcDbObjectId& node) {
    ads_name picked;
    ads_point at;
    if (acedEntSel(L"\nFirst node of the run: ", picked, at) != RTNORM) return false;
    if (acdbGetObjectId(node, picked) == Acad::eOk && node.objectClass() == TDbPipeNode::desc()) return true;
    acutPrintf(L"\nThat is no node.\n");
    return false;
}

void numberRun() {
    AcDbObjectId node;
    if (!askNode(node)) return;
    int number = nextNodeNumber();
    CString prompt;
    prompt.Format(L"\nFirst number <%d>: ", number);
    const int answer = acedGetInt(prompt, &number);
    if (answer != RTNORM && answer != RTNONE) return;
    const Run run(node);
    const std::set<AcDbObjectId> numbered = [&] {
        std::set<AcDbObjectId> ids;
        for (const SSearchPipeList* element = run.first(); element != nullptr; element = element->next)
            if (!element->serial.IsEmpty()) ids.insert(element->id);
        return ids;
    }();
    const int next = PwxTool::DoSerialNumber2(run.first(), number);
    for (const SSearchPipeList* element = run.first(); element != nullptr; element = element->next)
        if (!element->serial.IsEmpty() && numbered.count(element->id) == 0) setSerial(element->id, element->serial);
    acutPrintf(L"\n%d nodes numbered, %d comes next.\n", next - number, next);
}

struct Command {
    const ACHAR* name;
    void (*run)();
};

const Command kCommands[] = {{L"ASKSTANDARD", askStandard},   {L"DRAWPIPE", drawPipe},
                             {L"ASKPIPE", askPipe},           {L"INITSTANDARD", initStandard},
                             {L"NUMBERRISERS", numberRisers}, {L"NUMBERRUN", numberRun}};

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
