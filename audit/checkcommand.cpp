// CHECKSTANDARD: how far drawings are from the standard.
#include "commands.h"

#include <filesystem>
#include <set>

#include "dbapserv.h"
#include "drawings.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "inlanguage.h"
#include "prompts.h"
#include "qrs_drawings.h"
#include "report.h"

namespace qrs::audit {

namespace {

struct Format {
    const wchar_t* word;
    std::string (*report)(const CheckResults& results);
    bool isForPrograms;
};
constexpr Format kFormats[] = {
    {L"Text", &textReport, false}, {L"Json", &jsonReport, true}, {L"Html", &htmlReport, false}};

// The answers to the command's prompts.
struct Request {
    std::size_t format = 0;
    std::filesystem::path file;  // empty: the command line
    std::filesystem::path rules;
    RuleWeights weights;
    bool withReferences = false;
    std::vector<std::filesystem::path> drawings;  // none: the current one
};

// False when the user cancelled, and, after a message, when the rules cannot be read.
bool ask(Request& request) {
    std::vector<const wchar_t*> words;
    for (const Format& format : kFormats)
        words.push_back(format.word);
    std::size_t choice = 0;
    if (!askChoice(platform::untranslated(L"\nForm of the report [Text/Json/Html] <Text>: "), words, request.format) ||
        !askPath(platform::untranslated(L"\nFile for the report <command line>: "), request.file) ||
        !askPath(platform::untranslated(L"\nFile of rules <none>: "), request.rules))
        return false;
    platform::Error error;
    if (!request.rules.empty() &&
        !(isThere(request.rules, error) && request.weights.read(platform::innerPath(request.rules), error)))
        return failReading(error.message), false;
    if (!askChoice(platform::untranslated(L"\nCheck external references, too? [No/Yes] <No>: "), {L"No", L"Yes"},
                   choice))
        return false;
    request.withReferences = choice == 1;
    return askDrawings(request.drawings);
}

class Checking {
  public:
    explicit Checking(const Request& request) : request_(request) {}

    // False, after a message, when there is no standard, or the report would be written over what it tells of.
    bool run() {
        if (!standard_.isLoaded())
            return fail(platform::translated(L"there is no pipe-system standard to check against")), false;
        AcDbDatabase* const current =
            request_.drawings.empty() ? acdbHostApplicationServices()->workingDatabase() : nullptr;
        const std::filesystem::path own = current != nullptr ? nativeFile(fileOf(*current)) : std::filesystem::path();
        if (!isFree(request_.file, {request_.rules}) || (current != nullptr && !addNew(own))) return false;
        for (const std::filesystem::path& drawing : request_.drawings)
            if (!addNew(drawing)) return false;
        if (current != nullptr && !check(*current, own)) return false;
        // Those of references grow the list while it is worked on.
        for (std::size_t i = results_.size(); i < files_.size(); ++i)
            if (!checkFile(std::filesystem::path(files_[i]))) return false;
        tellApart();
        return true;
    }

    const CheckResults& results() const { return results_; }

  private:
    bool checkFile(const std::filesystem::path& file) {
        QrsExport::TReadDrawing drawing;
        std::string reason;
        if (readDrawing(file, drawing, reason)) return check(*drawing.database, file);
        add(file).unreadable = reason;
        return true;
    }

    bool check(AcDbDatabase& database, const std::filesystem::path& file) {
        const std::wstring inner = platform::innerPath(file);
        if (request_.withReferences)
            for (const std::wstring& reference : referencesOf(database, inner))
                if (!addNew(nativeFile(reference))) return false;
        CheckResult& result = add(file);
        platform::Error error;
        if (!checkDrawing(database, inner, request_.weights, standard_, result, error))
            result.unreadable = error.message;
        return true;
    }

    CheckResult& add(const std::filesystem::path& file) {
        results_.emplace_back();
        results_.back().drawing = platform::fromUtf8(file.filename().u8string());
        results_.back().file = platform::fromUtf8(file.u8string());
        return results_.back();
    }

    // Drawings of one name in several folders are called by their whole paths.
    void tellApart() {
        ByName<std::size_t> counts;
        for (const CheckResult& result : results_)
            ++counts[result.drawing];
        for (CheckResult& result : results_)
            if (counts[result.drawing] > 1) result.drawing = result.file;
    }

    // An empty name is that of a drawing without one. False, after a message, when the report would lie there.
    bool addNew(const std::filesystem::path& file) {
        if (!places_.insert(platform::fileMark(file).place).second) return true;
        files_.push_back(file);
        return isFree(request_.file, {file});
    }

    const Request& request_;
    const StandardLists standard_;
    CheckResults results_;
    std::vector<std::filesystem::path> files_;  // what is looked at, or was
    std::set<std::filesystem::path> places_;
};

// Whoever called fails when a drawing was not checked, or a rule is broken that is an error. What is broken is the
// graver of the two: it is known.
void tellOutcome(const CheckResults& results) {
    std::size_t errors = 0;
    for (const CheckResult& result : results) {
        if (!result.unreadable.empty())
            failReading(platform::translated(L"not checked: %1", platform::fromUtf8(result.unreadable)));
        errors += result.count(Severity::Error);
    }
    if (errors > 0)
        fail(countedText(errors, platform::untranslated(L"%1 finding is an error"),
                         platform::untranslated(L"%1 findings are errors")));
}

}  // namespace

void checkStandard() {
    Request request;
    if (!ask(request)) return;
    Checking checking(request);
    std::string report;
    {
        const InLanguage language(languageOfReport(kFormats[request.format].isForPrograms));
        if (!checking.run()) return;
        report = kFormats[request.format].report(checking.results());
    }
    if (deliver(report, request.file)) tellOutcome(checking.results());
}

}  // namespace qrs::audit
