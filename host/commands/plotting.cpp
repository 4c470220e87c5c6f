// PLOTFILE: draws a layout in a picture file.
#include <cmath>
#include <cwchar>

#include "acdocman.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/hostcommands.h"
#include "host/editor/documents.h"
#include "host/editor/hostapp.h"
#include "host/editor/layouts.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/plot/plot.h"

namespace qrs::host {

using platform::translated;

std::vector<std::wstring> currentLayouts() {
    AcApDocument* const document = acDocManager ? acDocManager->curDocument() : nullptr;
    std::vector<std::wstring> names;
    if (document)
        for (const ed::LayoutTab& tab : ed::layoutTabs(*document->database()))
            names.push_back(tab.name);
    return names;
}

PlotFailure plotCurrentDrawing(const PlotRequest& request, PlotOutcome& outcome, platform::Error& error) {
    AcApDocument* const document = acDocManager ? acDocManager->curDocument() : nullptr;
    if (document == nullptr) {
        error.message = translated("There is no drawing.");
        return PlotFailure::Misuse;
    }
    error.message = findPlotMisuse(request);
    if (error) return PlotFailure::Misuse;
    PlotRequest whole = request;
    if (whole.layout.empty()) whole.layout = ed::currentLayout(*document->database());
    const auto locate = [](const std::wstring& path) {
        const ed::Session* session = ed::Session::current();
        return session ? session->findInFolders(path) : std::wstring();
    };
    return plot::plotDrawing(DatabaseAccess::drawing(*document->database()),
                             DatabaseAccess::nativePath(*document->database()), document->state().references, locate,
                             whole, outcome, error);
}

namespace commands {

namespace {

bool hasExtension(const std::wstring& name, const wchar_t* extension) {
    const std::size_t length = std::wcslen(extension);
    return name.size() > length && platform::compareNoCase(name.substr(name.size() - length), extension) == 0;
}

// The colours and, of an image, how fine it is. False when the user cancelled.
bool askLooks(const std::wstring& name, PlotRequest& request) {
    const std::optional<std::wstring> colors =
        askKeyword(L"Own Black", translated(L"\nEnter colors [Own/Black] <Own>: "));
    if (!colors) return false;
    request.isBlack = *colors == L"Black";
    if (!hasExtension(name, L".png")) return true;
    const std::wstring usual = std::to_wstring(std::lround(request.dotsPerInch));
    const std::optional<std::wstring> dots =
        askText(translated(L"\nEnter dots per inch of the image <%1>: ", usual), Blanks::EndAnswer);
    if (!dots) return false;
    wchar_t* end = nullptr;
    // What is no number is told as a wrong one.
    if (!dots->empty()) request.dotsPerInch = std::wcstod(dots->c_str(), &end);
    if (end != nullptr && *end != L'\0') request.dotsPerInch = 0;
    return true;
}

}  // namespace

void plotFile() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing."));
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter name of picture file (.svg, .pdf, .png): "), Blanks::Kept, Wanted::Picture);
    if (!name || name->empty()) return;
    PlotRequest request;
    request.file = platform::nativePath(platform::innerFromTyped(*name));
    if (const std::string misuse = findPlotMisuse(request); !misuse.empty())
        return failCommand(platform::fromUtf8(misuse));
    const std::wstring current = ed::currentLayout(*document->database());
    const std::optional<std::wstring> layout =
        askText(translated(L"\nEnter layout to plot <%1>: ", current), Blanks::Kept, Wanted::Layout);
    if (!layout) return;
    request.layout = *layout;
    const std::optional<std::wstring> paper =
        askText(translated(L"\nEnter paper (A0 to A5, 420x297, fit) <layout's own>: "), Blanks::EndAnswer);
    if (!paper) return;
    request.paper = *paper;
    if (!askLooks(*name, request)) return;
    PlotOutcome outcome;
    platform::Error error;
    if (plotCurrentDrawing(request, outcome, error) != PlotFailure::None) return failWith(error);
    for (const std::wstring& note : outcome.notes)
        tell(note);
    tell(translated(L"Layout %1 plotted to %2: %3 x %4 mm, %5 entities.", inQuotes(outcome.layout),
                    platform::fromUtf8(request.file.u8string()), std::lround(outcome.width),
                    std::lround(outcome.height), outcome.entities));
}

}  // namespace commands

}  // namespace qrs::host
