// CHECKSTANDARD: how far drawings are from the standard.
#include "commands.h"

#include <utility>

#include "dbapserv.h"
#include "drawings.h"
#include "host/platform/codepage.h"
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

// What programs read is the same for every user.
class EnglishForPrograms {
  public:
    explicit EnglishForPrograms(bool isForPrograms) : before_(platform::language()) {
        if (isForPrograms) platform::setLanguage(platform::Language::English);
    }
    ~EnglishForPrograms() { platform::setLanguage(before_); }
    EnglishForPrograms(const EnglishForPrograms&) = delete;
    EnglishForPrograms& operator=(const EnglishForPrograms&) = delete;

  private:
    platform::Language before_;
};

// The answers to the command's prompts.
struct Request {
    std::size_t format = 0;
    std::wstring file;  // empty: the command line
    RuleWeights weights;
    bool withReferences = false;
    std::vector<std::wstring> drawings;  // none: the current one
};

// False when the user cancelled, and, after a message, when the rules cannot be read.
bool ask(Request& request) {
    std::vector<const wchar_t*> words;
    for (const Format& format : kFormats)
        words.push_back(format.word);
    std::wstring rules;
    std::size_t choice = 0;
    if (!askChoice(platform::untranslated(L"\nForm of the report [Text/Json/Html] <Text>: "), words, request.format) ||
        !askPath(platform::untranslated(L"\nFile for the report <command line>: "), request.file) ||
        !askPath(platform::untranslated(L"\nFile of rules <none>: "), rules))
        return false;
    platform::Error error;
    if (!rules.empty() && !request.weights.read(rules, error)) return failReading(error.message), false;
    if (!askChoice(platform::untranslated(L"\nCheck external references, too? [No/Yes] <No>: "), {L"No", L"Yes"},
                   choice))
        return false;
    request.withReferences = choice == 1;
    return askDrawings(request.drawings);
}

class Checking {
  public:
    explicit Checking(const Request& request) : request_(request) {}

    // False, after a message, when there is no standard.
    bool run() {
        if (!standard_.isLoaded())
            return fail(platform::translated(L"there is no pipe-system standard to check against")), false;
        if (AcDbDatabase* current = acdbHostApplicationServices()->workingDatabase();
            request_.drawings.empty() && current != nullptr)
            check(*current, fileOf(*current));
        for (const std::wstring& path : request_.drawings)
            checkFile(path);
        // Those of references grow the list while it is worked on.
        for (std::size_t i = 0; i < references_.size(); ++i)
            checkFile(std::wstring(references_[i]));
        tellApart();
        return true;
    }

    const CheckResults& results() const { return results_; }

  private:
    void checkFile(const std::wstring& path) {
        QrsExport::TReadDrawing drawing;
        std::wstring reason;
        if (QrsExport::ReadDrawing(path, drawing, reason))
            check(*drawing.database, path);
        else
            add(path).unreadable = platform::toUtf8(reason);
    }

    void check(AcDbDatabase& database, const std::wstring& file) {
        CheckResult& result = add(file);
        platform::Error error;
        if (!checkDrawing(database, file, request_.weights, standard_, result, error))
            result.unreadable = error.message;
        if (!request_.withReferences) return;
        for (std::wstring& reference : referencesOf(database, file))
            if (isNew(reference)) references_.push_back(std::move(reference));
    }

    CheckResult& add(const std::wstring& file) {
        results_.emplace_back();
        results_.back().drawing = nameOfFile(file);
        results_.back().file = nativeFile(file);
        files_.push_back(file);
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

    bool isNew(const std::wstring& path) const {
        for (const auto* list : {&files_, &references_, &request_.drawings})
            for (const std::wstring& known : *list)
                if (isSameName(known, path)) return false;
        return true;
    }

    const Request& request_;
    const StandardLists standard_;
    CheckResults results_;
    std::vector<std::wstring> files_, references_;
};

// Whoever called fails when a drawing was not checked, or a rule is broken that is an error. What is broken is the
// graver of the two: it is known.
void tellOutcome(const CheckResults& results) {
    std::size_t unreadable = 0;
    std::size_t errors = 0;
    for (const CheckResult& result : results) {
        if (!result.unreadable.empty()) ++unreadable;
        errors += result.count(Severity::Error);
    }
    if (unreadable > 0)
        failReading(countedText(unreadable, platform::untranslated(L"%1 drawing was not checked"),
                                platform::untranslated(L"%1 drawings were not checked")));
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
        const EnglishForPrograms english(kFormats[request.format].isForPrograms);
        if (!checking.run()) return;
        report = kFormats[request.format].report(checking.results());
    }
    platform::Error error;
    if (!deliver(report, request.file, error)) return fail(error.message);
    tellOutcome(checking.results());
}

}  // namespace qrs::audit
