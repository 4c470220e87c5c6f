// REGEN, ZOOM, MSPACE and PSPACE. The host shows nothing, but the view tells how much of the drawing a pick box covers,
// and the current viewport what is picked from.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>
#include <vector>

#include "acedads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/documents.h"
#include "host/editor/hostselect.h"
#include "host/editor/picking.h"
#include "host/editor/points.h"
#include "host/editor/viewport.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

void regenerate() {
    acedPrompt(translated(L"\nRegenerating model.").c_str());
}

namespace {

using ed::View;
using pick::Box;
using pick::Vec;

// The view around a box; one without a size keeps the height it had.
void show(AcApDocument& document, const Box& box) {
    if (!box.isBounded()) return;
    View view = ed::viewAround(box.low, box.high);
    if (!(view.height > 0.0)) view.height = ed::currentView(document).height;
    ed::setView(document, view);
}

Box limitsOf(const AcDbDatabase& database) {
    Box box;
    for (const wchar_t* name : {L"LIMMIN", L"LIMMAX"}) {
        resbuf value{};
        if (headerVariable(&database, name, value) == Acad::eOk)
            box.add({value.resval.rpoint[0], value.resval.rpoint[1], 0});
    }
    return box;
}

void zoomExtents(AcApDocument& document) {
    show(document, ed::Picker(document).extents());
}

void zoomAll(AcApDocument& document) {
    Box box = limitsOf(*document.database());
    const Box extents = ed::Picker(document).extents();
    if (extents.isBounded()) box.add(extents.low), box.add(extents.high);
    show(document, box);
}

void zoomPrevious(AcApDocument& document) {
    if (!ed::setPreviousView(document)) refuse(translated(L"No previous view saved."));
}

// "2", "0.5x", "2xp": of what the limits take, of the present view, of the paper (as "x": there is no paper to
// measure).
bool zoomBy(AcApDocument& document, const std::wstring& text) {
    wchar_t* end = nullptr;
    const double factor = std::wcstod(text.c_str(), &end);
    if (end == text.c_str() || !(factor > 0) || !std::isfinite(factor)) return false;
    const std::wstring unit = platform::foldCase(end);
    if (!unit.empty() && unit != L"X" && unit != L"XP") return false;
    View view = ed::currentView(document);
    const Box limits = limitsOf(*document.database());
    const bool byLimits = unit.empty() && limits.isBounded() && limits.high.y > limits.low.y;
    view.height = (byLimits ? ed::viewAround(limits.low, limits.high).height : view.height) / factor;
    ed::setView(document, view);
    return true;
}

void zoomWindow(AcApDocument& document, const ads_point first) {
    ads_point corner = {};
    if (acedGetPoint(first, translated(L"\nSpecify opposite corner: ").c_str(), corner) != RTNORM) return;
    Box box;
    box.add({first[0], first[1], 0});
    box.add({corner[0], corner[1], 0});
    show(document, box);
}

void zoomAskWindow(AcApDocument& document) {
    ads_point first = {};
    if (acedGetPoint(nullptr, translated(L"\nSpecify first corner: ").c_str(), first) == RTNORM)
        zoomWindow(document, first);
}

void zoomCenter(AcApDocument& document) {
    View view = ed::currentView(document);
    ads_point center = {};
    if (acedGetPoint(nullptr, translated(L"\nSpecify center point: ").c_str(), center) != RTNORM) return;
    const std::optional<std::wstring> size =
        askText(translated(L"\nEnter magnification or height: "), Blanks::EndAnswer);
    if (!size) return;
    view.centerX = center[0];
    view.centerY = center[1];
    wchar_t* end = nullptr;
    const double number = std::wcstod(size->c_str(), &end);
    const bool isFactor = platform::foldCase(end) == L"X";
    if (number > 0) view.height = isFactor ? view.height / number : number;
    ed::setView(document, view);
}

void zoomAskScale(AcApDocument& document) {
    const std::optional<std::wstring> scale =
        askText(translated(L"\nEnter a scale factor (nX or nXP): "), Blanks::EndAnswer);
    if (scale && !scale->empty() && !zoomBy(document, *scale)) refuse(translated(L"Requires a positive scale factor."));
}

void zoomObjects(AcApDocument& document) {
    ads_name set = {};
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) != RTNORM) return;
    Box all;
    ed::Picker picker(document);
    for (const AcDbObjectId& id : selectedIds(set)) {
        const Box box = picker.extentsOf(DatabaseAccess::recordOf(id));
        if (box.isBounded()) all.add(box.low), all.add(box.high);
    }
    acedSSFree(set);
    show(document, all);
}

struct ZoomOption {
    const wchar_t* name;
    const wchar_t* shortest;
    void (*run)(AcApDocument&);  // null: needs a screen
};

constexpr ZoomOption kZoomOptions[] = {
    {L"All", L"A", &zoomAll},          {L"Center", L"C", &zoomCenter},     {L"Dynamic", L"D", nullptr},
    {L"Extents", L"E", &zoomExtents},  {L"Previous", L"P", &zoomPrevious}, {L"Scale", L"S", &zoomAskScale},
    {L"Window", L"W", &zoomAskWindow}, {L"Object", L"O", &zoomObjects},
};

const ZoomOption* findOption(std::wstring typed) {
    if (!typed.empty() && typed.front() == L'_') typed.erase(0, 1);
    for (const ZoomOption& option : kZoomOptions) {
        const std::wstring name = option.name;
        if (typed.size() >= std::wcslen(option.shortest) && typed.size() <= name.size() &&
            platform::compareNoCase(name.substr(0, typed.size()), typed) == 0)
            return &option;
    }
    return nullptr;
}

// The view or the viewport of the current drawing; false, with the message printed, in the tab of model space.
bool isLayoutCurrent(AcApDocument* document) {
    if (!document) return false;
    if (!document->database()->tilemode()) return true;
    refuse(translated(L"** Command not allowed in Model Tab **"));
    return false;
}

}  // namespace

void zoom() {
    const std::wstring prompt = translated(
        L"\nSpecify corner of window, enter a scale factor (nX or nXP), or\n"
        L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>: ");
    AcApDocument* document = acDocManager->curDocument();
    if (!document) return;
    std::vector<std::wstring> options;
    for (const ZoomOption& option : kZoomOptions)
        options.emplace_back(option.name);
    for (;;) {
        const std::optional<std::wstring> answer = askText(prompt, Blanks::EndAnswer, Wanted::Text, options);
        if (!answer || answer->empty() || zoomBy(*document, *answer)) return;
        ads_point corner = {};
        if (ed::parsePoint(*answer, nullptr, corner)) return zoomWindow(*document, corner);
        if (const ZoomOption* option = findOption(*answer)) {
            if (option->run) option->run(*document);
            return;
        }
        refuse(translated(L"Requires a point, a scale factor or an option keyword."));
    }
}

void enterModelSpace() {
    AcApDocument* document = acDocManager->curDocument();
    if (!isLayoutCurrent(document)) return;
    if (ed::picksModelSpace(*document->database())) {
        acedPrompt(translated(L"\nAlready in model space.").c_str());
        return;
    }
    const std::int64_t viewport = ed::topViewport(*document->database());
    if (viewport == 0 || !ed::setCurrentViewport(*document, viewport))
        refuse(translated(L"There are no active Model space viewports."));
}

void enterPaperSpace() {
    AcApDocument* document = acDocManager->curDocument();
    if (!isLayoutCurrent(document)) return;
    if (!ed::picksModelSpace(*document->database()))
        acedPrompt(translated(L"\nAlready in paper space.").c_str());
    else
        ed::setCurrentViewport(*document, 1);
}

}  // namespace qrs::host::commands
