// PIPEREPORT: what pipes drawings hold.
#include "commands.h"
#include "dbapserv.h"
#include "drawings.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "pipetotals.h"
#include "prompts.h"
#include "qrs_drawings.h"
#include "report.h"

namespace qrs::audit {

namespace {

struct Format {
    const wchar_t* word;
    std::string (*report)(const PipeReport& report);
};
constexpr Format kFormats[] = {{L"Text", &textPipes}, {L"Csv", &csvPipes}, {L"Json", &jsonPipes}};

void addDrawing(AcDbDatabase& database, const std::wstring& path, PipeReport& report) {
    report.emplace_back();
    report.back().drawing = nameOfFile(path);
    report.back().file = nativeFile(path);
    sumUp(DrawingFacts(database), report.back());
}

// How many drawings could not be read.
std::size_t addFiles(const std::vector<std::wstring>& paths, PipeReport& report) {
    std::size_t unreadable = 0;
    for (const std::wstring& path : paths) {
        QrsExport::TReadDrawing drawing;
        std::wstring reason;
        if (QrsExport::ReadDrawing(path, drawing, reason)) {
            addDrawing(*drawing.database, path, report);
            continue;
        }
        ++unreadable;
        report.emplace_back();
        report.back().drawing = nameOfFile(path);
        report.back().file = nativeFile(path);
        report.back().unreadable = platform::toUtf8(reason);
    }
    return unreadable;
}

}  // namespace

void reportPipes() {
    std::vector<const wchar_t*> words;
    for (const Format& format : kFormats)
        words.push_back(format.word);
    std::size_t format = 0;
    std::wstring file;
    std::vector<std::wstring> drawings;
    if (!askChoice(platform::untranslated(L"\nForm of the report [Text/Csv/Json] <Text>: "), words, format) ||
        !askPath(platform::untranslated(L"\nFile for the report <command line>: "), file) || !askDrawings(drawings))
        return;
    PipeReport report;
    AcDbDatabase* current = acdbHostApplicationServices()->workingDatabase();
    if (drawings.empty() && current != nullptr) addDrawing(*current, fileOf(*current), report);
    const std::size_t unreadable = addFiles(drawings, report);
    platform::Error error;
    if (!deliver(kFormats[format].report(report), file, error)) return fail(error.message);
    if (unreadable > 0)
        failReading(countedText(unreadable, platform::untranslated(L"%1 drawing was not read"),
                                platform::untranslated(L"%1 drawings were not read")));
}

}  // namespace qrs::audit
