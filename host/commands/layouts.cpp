// LAYOUT: makes a tab of the drawing the current one, and lists them.
#include "host/editor/layouts.h"
#include "acdocman.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/tablelist.h"
#include "host/editor/hostapp.h"
#include "host/editor/session.h"
#include "host/editor/viewport.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

void list(AcDbDatabase& database) {
    const std::wstring current = ed::currentLayout(database);
    std::vector<Row> rows = {{translated(L"Layout name"), translated(L"Viewports"), translated(L"Block name")}};
    for (const ed::LayoutTab& tab : ed::layoutTabs(database)) {
        std::size_t viewports = 0;
        if (!(tab.space == kModelSpace))
            for (const ed::SheetViewport& viewport : ed::viewportsOf(database, tab.space))
                viewports += viewport.isSheet() ? 0 : 1;
        rows.push_back({inQuotes(tab.name) + (tab.name == current ? translated(L" (current)") : std::wstring()),
                        std::to_wstring(viewports), tab.block});
    }
    printTable(rows);
}

void makeCurrent(AcApDocument& document) {
    AcDbDatabase& database = *document.database();
    const std::wstring current = ed::currentLayout(database);
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter layout to make current <%1>: ", current), Blanks::Kept, Wanted::Layout);
    if (!name || name->empty()) return;
    // Through the system variable, so that everybody who listens to it is told.
    std::wstring text = *name;
    resbuf value{};
    value.restype = RTSTR;
    value.resval.rstring = text.data();
    if (acedSetVar(L"CTAB", &value) != RTNORM)
        return failCommand(translated(L"Cannot find layout %1.", inQuotes(text)));
    tell(database.tilemode() ? translated(L"Regenerating model.") : translated(L"Regenerating layout."));
}

}  // namespace

void manageLayouts() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing."));
    const std::optional<std::wstring> option =
        askKeyword(L"Set ?", translated(L"\nEnter layout option [Set/?] <set>: "));
    if (!option) return;
    if (*option == L"?")
        list(*document->database());
    else
        makeCurrent(*document);
}

}  // namespace qrs::host::commands
