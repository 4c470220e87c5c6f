// REPAIRSTANDARD: mends the current drawing.
#include "commands.h"
#include "dbapserv.h"
#include "drawings.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "prompts.h"
#include "qrs_kernal.h"
#include "repair.h"
#include "report.h"

namespace qrs::audit {

namespace {

constexpr const wchar_t* kAuto = L"Auto";

// The answers to the command's prompts.
struct Request {
    std::filesystem::path mappings;  // empty: what has one answer
    bool isDryRun = false;
    std::filesystem::path file;  // empty: the command line
};

bool ask(Request& request) {
    std::size_t choice = 0;
    std::wstring mappings;
    if (!askText(platform::untranslated(L"\nFile of mappings, or Auto <Auto>: "), mappings)) return false;
    if (!isSameName(mappings, kAuto)) request.mappings = pathTyped(mappings);
    if (!askChoice(platform::untranslated(L"\nOnly show what would change? [No/Yes] <No>: "), {L"No", L"Yes"}, choice))
        return false;
    request.isDryRun = choice == 1;
    return askPath(platform::untranslated(L"\nFile for the report <command line>: "), request.file);
}

std::string reportOf(const Request& request, const Repair& repair) {
    std::wstring text;
    for (const Change& change : repair.changes()) {
        text += change.text;
        if (change.objects > 0)
            text += L" (" +
                    countedText(change.objects, platform::untranslated(L"%1 object"),
                                platform::untranslated(L"%1 objects")) +
                    L")";
        text += L"\n";
    }
    for (const std::wstring& kept : repair.kept())
        text += platform::translated(L"left as it is: %1", kept) + L"\n";
    for (const std::wstring& refusal : repair.refusals())
        text += platform::translated(L"not done: %1", refusal) + L"\n";
    for (const std::wstring& row : repair.idle())
        text += row + L"\n";
    text += countedText(repair.changes().size(), platform::untranslated(L"%1 change"),
                        platform::untranslated(L"%1 changes"));
    if (request.isDryRun) text += platform::translated(L"; shown only, nothing was changed");
    text += L"\n";
    return platform::toUtf8(text);
}

}  // namespace

void repairStandard() {
    Request request;
    AcDbDatabase* current = acdbHostApplicationServices()->workingDatabase();
    if (current == nullptr || !ask(request)) return;
    const StandardLists standard;
    if (!standard.isLoaded()) return fail(platform::translated(L"there is no pipe-system standard to repair by"));
    std::vector<Mapping> mappings;
    platform::Error error;
    if (!isFree(request.file, {nativeFile(fileOf(*current)), request.mappings})) return;
    if (!request.mappings.empty() &&
        !(isThere(request.mappings, error) && readMappings(platform::innerPath(request.mappings), mappings, error)))
        return failReading(error.message);
    AcceptedFindings accepted;
    if (!accepted.read(fileOf(*current), error)) return failReading(error.message);
    const DrawingFacts facts(*current);
    Repair repair(facts, standard);
    if (request.mappings.empty())
        repair.planAll(accepted);
    else
        repair.plan(mappings, platform::innerPath(request.mappings));
    if (request.isDryRun)
        repair.foresee();
    else
        repair.apply();
    if (!deliver(reportOf(request, repair), request.file)) return;
    // What could be mended is.
    for (const std::wstring& refusal : repair.refusals())
        QrsExport::TellRefusal(platform::translated(L"not done: %1", refusal));
}

}  // namespace qrs::audit
