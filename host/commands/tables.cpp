// -LINETYPE and -STYLE: list the linetypes and text styles of the drawing.
#include <cmath>

#include "acedads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/commands/tablelist.h"
#include "host/dxf/tags.h"
#include "host/editor/hostapp.h"
#include "host/platform/angle.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;
using platform::untranslated;

namespace {

// Without the noise of a degree made of radians.
std::wstring number(double value) {
    constexpr double kSteps = 1e8;
    return platform::fromUtf8(dxf::realText(std::round(value * kSteps) / kSteps));
}

// A text that is released with acutDelString.
std::wstring taken(ACHAR* text) {
    const std::wstring copy = text ? text : L"";
    acutDelString(text);
    return copy;
}

Row linetypeRow(const NamedRecord& named) {
    const AcDbLinetypeTableRecordPointer record(named.id, AcDb::kForRead);
    ACHAR* description = nullptr;
    if (record.openStatus() != Acad::eOk) return {};
    record->comments(description);
    return {inQuotes(named.name), number(record->patternLength()), taken(description)};
}

// "宋体 (bold)", or the font files: "txt.shx,hztxt.shx".
std::wstring fontText(const AcDbTextStyleTableRecord& style) {
    ACHAR* typeface = nullptr;
    bool bold = false;
    bool italic = false;
    int charset = 0;
    int pitchAndFamily = 0;
    style.font(typeface, bold, italic, charset, pitchAndFamily);
    std::wstring text = taken(typeface);
    if (!text.empty())
        return text + (bold && italic ? translated(L" (bold italic)")
                       : bold         ? translated(L" (bold)")
                       : italic       ? translated(L" (italic)")
                                      : std::wstring());
    ACHAR* file = nullptr;
    ACHAR* bigFont = nullptr;
    style.fileName(file);
    style.bigFontFileName(bigFont);
    text = taken(file);
    const std::wstring big = taken(bigFont);
    return big.empty() ? text : text + L"," + big;
}

Row textStyleRow(const NamedRecord& named) {
    const AcDbTextStyleTableRecordPointer record(named.id, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return {};
    return {inQuotes(named.name), number(record->textSize()), number(record->xScale()),
            number(record->obliquingAngle() * platform::kDegreesPerRadian), fontText(*record.object())};
}

// What is listed, and how it is asked for.
struct Listing {
    std::vector<NamedRecord> (*all)(AcDbDatabase* database);
    Row (*row)(const NamedRecord& record);
    Row titles;
    const wchar_t* noun;
    const wchar_t* namesPrompt;
    Wanted wanted;
    bool asksAgain;  // the editor's -LINETYPE goes on with its options, its -STYLE ends after a list
};

// False when the user cancelled.
bool list(AcDbDatabase* database, const Listing& listing) {
    const std::optional<std::wstring> names = askText(translated(listing.namesPrompt), Blanks::Kept, listing.wanted);
    if (!names) return false;
    std::vector<NamedRecord> records = listing.all(database);
    if (!names->empty()) records = findRecords(records, *names, listing.noun);
    std::vector<Row> rows{listing.titles};
    for (const NamedRecord& record : records)
        if (Row row = listing.row(record); !row.empty()) rows.push_back(std::move(row));
    printTable(rows);
    return true;
}

void run(const Listing& listing) {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return failCommand(translated(L"There is no drawing."));
    for (;;) {
        const std::optional<std::wstring> option = askKeyword(L"?", translated(L"\nEnter an option [?]: "));
        if (!option || option->empty() || !list(database, listing) || !listing.asksAgain) return;
    }
}

}  // namespace

void listLinetypes() {
    run({&allRecords<AcDbLinetypeTable>,
         &linetypeRow,
         {translated(L"Linetype name"), translated(L"Length"), translated(L"Description")},
         untranslated(L"linetype"),
         untranslated(L"\nEnter linetype name(s) to list <*>: "),
         Wanted::Linetypes,
         true});
}

void listTextStyles() {
    run({&allRecords<AcDbTextStyleTable>,
         &textStyleRow,
         {translated(L"Style name"), translated(L"Height"), translated(L"Width factor"), translated(L"Angle"),
          translated(L"Font")},
         untranslated(L"text style"),
         untranslated(L"\nEnter text style(s) to list <*>: "),
         Wanted::TextStyles,
         false});
}

}  // namespace qrs::host::commands
