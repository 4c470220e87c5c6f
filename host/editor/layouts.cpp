// The tabs of a drawing, and which of them is current.
#include "host/editor/layouts.h"

#include <algorithm>

#include "db/access.h"
#include "host/drawing/layouts.h"
#include "host/editor/documents.h"
#include "host/editor/session.h"
#include "host/editor/viewport.h"
#include "host/platform/codepage.h"

namespace qrs::host::ed {

std::vector<LayoutTab> layoutTabs(AcDbDatabase& database) {
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    const BlockIndex blocks(drawing);
    std::vector<Layout> layouts = layoutsOf(drawing, blocks);
    std::stable_sort(layouts.begin() + 1, layouts.end(),
                     [](const Layout& a, const Layout& b) { return a.tab < b.tab; });
    std::vector<LayoutTab> tabs;
    for (const Layout& layout : layouts)
        tabs.push_back({layout.name.empty() ? L"Layout1" : layout.name, layout.block->name, spaceOf(*layout.block)});
    return tabs;
}

std::wstring currentLayout(AcDbDatabase& database) {
    const EntitySpace space = database.tilemode() ? kModelSpace : currentSheet(database);
    for (const LayoutTab& tab : layoutTabs(database))
        if (tab.space == space) return tab.name;
    return std::wstring();
}

bool setCurrentLayout(Session& session, AcApDocument& document, std::wstring_view name) {
    const std::vector<LayoutTab> tabs = layoutTabs(*document.database());
    const auto tab = std::find_if(tabs.begin(), tabs.end(),
                                  [&](const LayoutTab& one) { return platform::compareNoCase(one.name, name) == 0; });
    if (tab == tabs.end()) return false;
    const bool isModel = tab->space == kModelSpace;
    resbuf tilemode{};
    tilemode.restype = RTSHORT;
    tilemode.resval.rint = isModel ? 1 : 0;
    if (document.database()->tilemode() != isModel && !session.variables.set(session, L"TILEMODE", tilemode))
        return false;
    ViewMemory& views = document.state().views;
    if (isModel || views.sheet == tab->space) return true;
    if (const std::uint64_t step = DatabaseAccess::keepStep(*document.database()); step != 0)
        views.sheetsBefore.emplace(step, views.sheet);
    views.sheet = tab->space;
    return true;
}

bool takeBackStep(AcApDocument& document, std::wstring& name) {
    std::uint64_t step = 0;
    if (!DatabaseAccess::takeBack(*document.database(), name, &step)) return false;
    ViewMemory& views = document.state().views;
    if (const auto before = views.sheetsBefore.find(step); before != views.sheetsBefore.end()) {
        views.sheet = before->second;
        views.sheetsBefore.erase(before);
    }
    return true;
}

}  // namespace qrs::host::ed
