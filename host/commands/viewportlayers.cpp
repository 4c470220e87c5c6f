// VPLAYER: freezes and thaws layers in single viewports of the layouts.
#include <algorithm>

#include "acdbads.h"
#include "acdocman.h"
#include "aced.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/layerlist.h"
#include "host/editor/hostapp.h"
#include "host/editor/hostselect.h"
#include "host/editor/layouts.h"
#include "host/editor/viewport.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

using Viewport = AcDbObjectPointer<AcDbViewport>;

// Viewports lie on the sheet: while they are selected it takes the picks, also where a viewport took them before.
class OnSheet {
  public:
    explicit OnSheet(AcApDocument& document)
        : document_(document), before_(ed::currentViewport(*document.database()).number) {
        ed::setCurrentViewport(document, 1);
    }
    ~OnSheet() { ed::setCurrentViewport(document_, before_); }
    OnSheet(const OnSheet&) = delete;
    OnSheet& operator=(const OnSheet&) = delete;

  private:
    AcApDocument& document_;
    std::int64_t before_;
};

AcDbObjectIdArray selectedViewports(AcApDocument& document) {
    const OnSheet onSheet(document);
    resbuf* const filter = acutBuildList(RTDXF0, L"VIEWPORT", RTNONE);
    ads_name set = {};
    AcDbObjectIdArray viewports;
    if (filter && acedSSGet(nullptr, nullptr, nullptr, filter, set) == RTNORM) {
        viewports = selectedIds(set);
        acedSSFree(set);
    }
    acutRelRb(filter);
    return viewports;
}

// Those that show the model, of every layout.
AcDbObjectIdArray allViewports(AcDbDatabase& database) {
    AcDbObjectIdArray viewports;
    for (const ed::LayoutTab& tab : ed::layoutTabs(database)) {
        if (tab.space == kModelSpace) continue;
        for (const ed::SheetViewport& viewport : ed::viewportsOf(database, tab.space))
            if (!viewport.isSheet()) viewports.append(viewport.id);
    }
    return viewports;
}

// The viewports that a change is meant for; nothing when the user cancelled.
std::optional<AcDbObjectIdArray> askViewports(AcApDocument& document) {
    const std::optional<std::wstring> which = askKeyword(
        L"All Select Current Except", translated(L"\nEnter an option [All/Select/Current/Except current] <Current>: "));
    if (!which) return std::nullopt;
    if (*which == L"Select") return selectedViewports(document);
    const AcDbObjectId current = acedGetCurViewportObjectId();
    AcDbObjectIdArray viewports;
    if (*which == L"All" || *which == L"Except") {
        for (const AcDbObjectId& viewport : allViewports(*document.database()))
            if (*which == L"All" || viewport != current) viewports.append(viewport);
    } else if (!current.isNull()) {
        viewports.append(current);
    }
    return viewports;
}

AcDbObjectIdArray idsOf(const std::vector<NamedLayer>& layers) {
    AcDbObjectIdArray ids;
    for (const NamedLayer& layer : layers)
        ids.append(layer.id);
    return ids;
}

void setFrozen(const AcDbObjectIdArray& viewports, const AcDbObjectIdArray& layers, bool frozen) {
    if (layers.isEmpty()) return;
    for (const AcDbObjectId& id : viewports) {
        Viewport viewport(id, AcDb::kForWrite);
        Acad::ErrorStatus status = viewport.openStatus();
        if (status == Acad::eOk)
            status = frozen ? viewport->freezeLayersInViewport(layers) : viewport->thawLayersInViewport(layers);
        if (status != Acad::eOk) refuse(translated(L"Cannot change the layers of a viewport."));
    }
}

// --- the options; false when the user cancelled

bool listFrozen(AcApDocument& document) {
    ads_name picked = {};
    ads_point point = {};
    AcDbObjectId id;
    {
        const OnSheet onSheet(document);
        const int answered = acedEntSel(translated(L"\nSelect a viewport: ").c_str(), picked, point);
        if (answered == RTCAN) return false;
        if (answered == RTNORM) acdbGetObjectId(id, picked);
    }
    const Viewport viewport(id, AcDb::kForRead);
    AcDbObjectIdArray frozen;
    if (viewport.openStatus() != Acad::eOk || viewport->getFrozenLayerList(frozen) != Acad::eOk)
        return refuse(translated(L"No viewport selected.")), true;
    AcDbDatabase& database = *document.database();
    for (const ed::SheetViewport& one : ed::viewportsOf(database, ed::currentSheet(database)))
        if (one.id == id) tell(translated(L"Layers currently frozen in viewport %1:", one.number));
    for (const AcDbObjectId& layer : frozen)
        tell(L"  " + inQuotes(layerName(layer)));
    return true;
}

bool changeFrozen(AcApDocument& document, bool frozen) {
    const std::optional<std::wstring> list =
        askText(frozen ? translated(L"\nEnter layer name(s) to freeze or <select objects>: ")
                       : translated(L"\nEnter layer name(s) to thaw: "),
                Blanks::Kept, Wanted::Layers);
    if (!list) return false;
    const bool selects = frozen && list->empty();
    const AcDbObjectIdArray layers = idsOf(selects ? layersOfSelection() : findLayers(document.database(), *list));
    const std::optional<AcDbObjectIdArray> viewports = askViewports(document);
    if (viewports) setFrozen(*viewports, layers, frozen);
    return viewports.has_value();
}

bool freeze(AcApDocument& document) {
    return changeFrozen(document, true);
}

bool thaw(AcApDocument& document) {
    return changeFrozen(document, false);
}

// As in a viewport that would be made now.
bool reset(AcApDocument& document) {
    const std::optional<std::wstring> list =
        askText(translated(L"\nEnter layer name(s) to reset: "), Blanks::Kept, Wanted::Layers);
    if (!list) return false;
    AcDbObjectIdArray frozen;
    AcDbObjectIdArray thawed;
    for (const NamedLayer& layer : findLayers(document.database(), *list)) {
        const AcDbLayerTableRecordPointer record(layer.id, AcDb::kForRead);
        if (record.openStatus() == Acad::eOk) (record->VPDFLT() ? frozen : thawed).append(layer.id);
    }
    const std::optional<AcDbObjectIdArray> viewports = askViewports(document);
    if (!viewports) return false;
    setFrozen(*viewports, frozen, true);
    setFrozen(*viewports, thawed, false);
    return true;
}

void setDefault(AcDbObjectId layer, bool frozen) {
    AcDbLayerTableRecordPointer record(layer, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk || record->setVPDFLT(frozen) != Acad::eOk)
        refuse(translated(L"Cannot change layer %1.", inQuotes(layerName(layer))));
}

bool addFrozen(AcApDocument& document) {
    const std::optional<std::wstring> names =
        askText(translated(L"\nEnter name(s) of new layers frozen in all viewports: "), Blanks::Kept);
    if (!names) return false;
    AcDbDatabase* const database = document.database();
    AcDbObjectIdArray layers;
    for (const std::wstring& name : splitNames(*names)) {
        if (hasLayer(database, name)) {
            refuse(translated(L"Layer %1 already exists.", inQuotes(name)));
        } else if (const AcDbObjectId layer = makeLayer(database, name); !layer.isNull()) {
            setDefault(layer, true);
            layers.append(layer);
        }
    }
    setFrozen(allViewports(*database), layers, true);
    return true;
}

bool changeDefault(AcApDocument& document) {
    const std::optional<std::wstring> list =
        askText(translated(L"\nEnter layer name(s) to change viewport visibility: "), Blanks::Kept, Wanted::Layers);
    if (!list) return false;
    const std::vector<NamedLayer> layers = findLayers(document.database(), *list);
    const std::optional<std::wstring> state =
        askKeyword(L"Frozen Thawed", translated(L"\nEnter a viewport visibility option [Frozen/Thawed] <Thawed>: "));
    if (!state) return false;
    for (const NamedLayer& layer : layers)
        setDefault(layer.id, *state == L"Frozen");
    return true;
}

struct Option {
    const wchar_t* keyword;
    bool (*run)(AcApDocument& document);
};

constexpr Option kOptions[] = {
    {L"?", &listFrozen}, {L"Freeze", &freeze},    {L"Thaw", &thaw},
    {L"Reset", &reset},  {L"Newfrz", &addFrozen}, {L"Vpvisdflt", &changeDefault},
};

bool runOption(AcApDocument& document, const std::wstring& keyword) {
    const auto* option = std::find_if(std::begin(kOptions), std::end(kOptions),
                                      [&](const Option& one) { return keyword == one.keyword; });
    return option != std::end(kOptions) && option->run(document);
}

}  // namespace

void changeViewportLayers() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing."));
    for (;;) {
        // The model's tab shows no viewports of sheets.
        const bool isModel = document->database()->tilemode();
        const std::optional<std::wstring> option =
            isModel ? askKeyword(L"Newfrz Vpvisdflt", translated(L"\nEnter an option [Newfrz/Vpvisdflt]: "))
                    : askKeyword(L"? Freeze Thaw Reset Newfrz Vpvisdflt",
                                 translated(L"\nEnter an option [?/Freeze/Thaw/Reset/Newfrz/Vpvisdflt]: "));
        if (!option || option->empty() || !runOption(*document, *option)) return;
    }
}

}  // namespace qrs::host::commands
