// PIPEREPORT: what pipes drawings hold.
#include "commands.h"
#include "dbapserv.h"
#include "drawings.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "inlanguage.h"
#include "pipetotals.h"
#include "prompts.h"
#include "qrs_drawings.h"
#include "report.h"

namespace qrs::audit {

namespace {

struct Format {
    const wchar_t* word;
    std::string (*report)(const PipeReport& report);
    bool isForPrograms;
};
constexpr Format kFormats[] = {{L"Text", &textPipes, false}, {L"Csv", &csvPipes, true}, {L"Json", &jsonPipes, true}};

PipeTotals& add(const std::filesystem::path& file, PipeReport& report) {
    report.emplace_back();
    report.back().drawing = platform::fromUtf8(file.filename().u8string());
    report.back().file = platform::fromUtf8(file.u8string());
    return report.back();
}

void addFiles(const std::vector<std::filesystem::path>& files, PipeReport& report) {
    for (const std::filesystem::path& file : files) {
        PipeTotals& pipes = add(file, report);
        QrsExport::TReadDrawing drawing;
        if (readDrawing(file, drawing, pipes.unreadable)) sumUp(DrawingFacts(*drawing.database), pipes);
    }
}

}  // namespace

void reportPipes() {
    std::vector<const wchar_t*> words;
    for (const Format& format : kFormats)
        words.push_back(format.word);
    std::size_t format = 0;
    std::filesystem::path file;
    std::vector<std::filesystem::path> drawings;
    if (!askChoice(platform::untranslated(L"\nForm of the report [Text/Csv/Json] <Text>: "), words, format) ||
        !askPath(platform::untranslated(L"\nFile for the report <command line>: "), file) || !askDrawings(drawings))
        return;
    PipeReport report;
    AcDbDatabase* current = acdbHostApplicationServices()->workingDatabase();
    if (drawings.empty() && current != nullptr) {
        const std::filesystem::path own = nativeFile(fileOf(*current));
        if (!isFree(file, {own})) return;
        sumUp(DrawingFacts(*current), add(own, report));
    }
    if (!isFree(file, drawings)) return;
    std::string text;
    {
        const InLanguage language(languageOfReport(kFormats[format].isForPrograms));
        addFiles(drawings, report);
        text = kFormats[format].report(report);
    }
    if (!deliver(text, file)) return;
    for (const PipeTotals& pipes : report)
        if (!pipes.unreadable.empty())
            failReading(platform::translated(L"not read: %1", platform::fromUtf8(pipes.unreadable)));
}

}  // namespace qrs::audit
