// Brings linetypes of linetype.dbf into the drawing.
#include "standard/linetypes.h"

#include <set>

#include "acutads.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "PipeNodes.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/linetypepattern.h"
#include "standard/tabletext.h"

namespace qrs::standard {

using platform::translated;

namespace {

constexpr wchar_t kTable[] = L"linetype.dbf";
constexpr wchar_t kContinuous[] = L"Continuous";
constexpr const wchar_t* kNoLayerLinetypes[] = {L"ByLayer", L"ByBlock"};

// The style is the loader's own and not the standard's for text linetypes, whose fonts and fixed height follow other
// settings: a text that is made anew there must not change what is drawn on every pipe.
constexpr wchar_t kTextStyle[] = L"文字线形";

// Shape fonts cannot be measured here. Their letters take about two thirds of their height and stand one height apart,
// Chinese characters fill a square.
constexpr double kAdvance = 1.0;
constexpr double kBlankBehindLetter = 1.0 / 3.0;
constexpr char32_t kFirstWideCharacter = 0x2E80;

AcDbDatabase* workingDatabase() {
    return acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectId presentLinetype(const CString& name) {
    AcDbObjectId id;
    const AcDbLinetypeTablePointer table(workingDatabase(), AcDb::kForRead);
    if (table.openStatus() == Acad::eOk) table->getAt(name, id);
    return id;
}

bool openTable(CDBFRecordset& table) {
    std::wstring path;
    return QrsExport::FindFile(kTable, path) && standard::openTable(table, path);
}

bool findRow(CDBFRecordset& table, const CString& name) {
    for (table.MoveFirst(); !table.IsEOF(); table.MoveNext())
        if (equalNoCase(trimmedText(table, L"Name"), name)) return true;
    return false;
}

// --- texts in linetypes

// The user's settings; what is no size there counts as not set.
LinetypeTextSettings textSettings() {
    LinetypeTextSettings settings = StandardHolder::instance().linetypeText();
    const LinetypeTextSettings usual;
    if (!(settings.height > 0.0)) settings.height = usual.height;
    if (!(settings.scale > 0.0)) settings.scale = usual.scale;
    if (settings.englishShx.IsEmpty()) settings.englishShx = usual.englishShx;
    return settings;
}

// The drawing's style for texts in linetypes, made when missing; null when it cannot be.
AcDbObjectId textStyle(const LinetypeTextSettings& settings) {
    AcDbObjectId id;
    AcDbTextStyleTablePointer table(workingDatabase(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || table->getAt(kTextStyle, id) == Acad::eOk) return id;
    AcDbObjectPointer<AcDbTextStyleTableRecord> style;
    style.create();
    style->setName(kTextStyle);
    style->setXScale(settings.scale);
    style->setFileName(settings.englishShx);
    style->setBigFontFileName(settings.chineseShx);
    table->add(id, style.object());
    return id;
}

// How a text is written in the linetypes of this drawing.
struct TextForm {
    AcDbObjectId style;
    double height = 0.0;  // drawing units
    double scale = 0.0;   // what the dash says of it
    double widthFactor = 1.0;
};

// False when there is no style to write in.
bool findTextForm(TextForm& form) {
    const LinetypeTextSettings settings = textSettings();
    form.style = textStyle(settings);
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(form.style, AcDb::kForRead);
    if (style.openStatus() != Acad::eOk) return false;
    // A fixed height is multiplied by the scale, where there is none the scale is the height.
    const double fixedHeight = style->textSize();
    form.height = settings.height;
    form.scale = fixedHeight > 0.0 ? form.height / fixedHeight : form.height;
    form.widthFactor = style->xScale();
    return true;
}

// --- records

void setText(AcDbLinetypeTableRecord& record, int dash, const CString& text, const TextForm& form) {
    record.setTextAt(dash, text);
    record.setShapeStyleAt(dash, form.style);
    record.setShapeScaleAt(dash, form.scale);
    record.setShapeRotationAt(dash, 0.0);
    record.setShapeIsUcsOrientedAt(dash, false);
    // From the middle of the gap to the text's lower left corner.
    record.setShapeOffsetAt(dash,
                            {-linetypeTextWidth(text) * form.height * form.widthFactor / 2.0, -form.height / 2.0});
}

// form: null where texts are left out.
void setDashes(AcDbLinetypeTableRecord& record, const LinetypePattern& pattern, const TextForm* form) {
    record.setPatternLength(pattern.length());
    for (const PatternElement& element : pattern.elements) {
        const int dash = record.numDashes();
        const bool hasText = form != nullptr && !element.text.IsEmpty();
        record.setNumDashes(hasText ? dash + 2 : dash + 1);
        record.setDashLengthAt(dash, hasText ? element.length / 2.0 : element.length);
        if (!hasText) continue;
        // A text stands where its dash ends: the gap is cut there.
        setText(record, dash, element.text, *form);
        record.setDashLengthAt(dash + 1, element.length / 2.0);
    }
}

// Whether a pattern has texts that the drawing can hold.
bool hasTexts(const LinetypePattern& pattern) {
    bool hasText = false;
    for (const PatternElement& element : pattern.elements)
        hasText = hasText || !element.text.IsEmpty();
    return hasText && workingDatabase()->originalFileVersion() >= AcDb::kDHL_1012;
}

AcDbObjectId addLinetype(const LinetypePattern& pattern) {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbLinetypeTableRecord> record;
    record.create();
    AcDbLinetypeTablePointer table(workingDatabase(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || record->setName(pattern.name) != Acad::eOk) return id;
    bool hasText = hasTexts(pattern);
    TextForm form;
    if (hasText && !findTextForm(form)) return id;
    // A dash names its style by handle: where styles have none, a text could not be drawn.
    if (hasText) hasText = !form.style.handle().isNull();
    record->setComments(pattern.comment);
    setDashes(*record.object(), pattern, hasText ? &form : nullptr);
    table->add(id, record.object());
    return id;
}

// False when the texts of the pattern cannot be written there.
bool rewriteLinetype(AcDbObjectId linetype, const LinetypePattern& pattern) {
    const bool hasText = hasTexts(pattern);
    TextForm form;
    if (hasText && (!findTextForm(form) || form.style.handle().isNull())) return false;
    AcDbLinetypeTableRecordPointer record(linetype, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk) return false;
    record->setComments(pattern.comment);
    record->setNumDashes(0);
    setDashes(*record.object(), pattern, hasText ? &form : nullptr);
    return true;
}

// --- patterns of the drawing

// What stands in the brackets after the length of a dash.
CString carriedBy(const AcDbLinetypeTableRecord& record, int dash) {
    CString carried;
    if (const int shape = record.shapeNumberAt(dash); shape != 0) {
        carried.Format(L"#%d", shape);
        return carried;
    }
    ACHAR* text = nullptr;
    if (record.textAt(dash, text) == Acad::eOk && text != nullptr) carried = text;
    acutDelString(text);
    return carried;
}

std::vector<PatternElement> elementsOf(const AcDbLinetypeTableRecord& record) {
    std::vector<PatternElement> elements;
    bool isCut = false;
    for (int dash = 0; dash < record.numDashes(); ++dash) {
        const PatternElement element{record.dashLengthAt(dash), carriedBy(record, dash)};
        // The second half of a gap whose text stands where the first one ends.
        if (isCut && element.length < 0.0 && element.text.IsEmpty())
            elements.back().length += element.length;
        else
            elements.push_back(element);
        isCut = element.length < 0.0 && !element.text.IsEmpty();
    }
    return elements;
}

}  // namespace

double linetypeTextWidth(const CString& text) {
    const std::wstring_view characters = view(text);
    double width = 0.0;
    double blank = 0.0;
    for (std::size_t i = 0; i < characters.size();) {
        blank = platform::nextCodePoint(characters, i) < kFirstWideCharacter ? kBlankBehindLetter : 0.0;
        width += kAdvance;
    }
    return width - blank;
}

AcDbObjectId layerLinetype(const CString& name) {
    AcDbObjectId id;
    bool isForLayers = true;
    for (const wchar_t* other : kNoLayerLinetypes)
        isForLayers = isForLayers && name.CompareNoCase(other) != 0;
    if (isForLayers) id = PwxTool::LoadQdLineType(name);
    if (id.isNull()) id = presentLinetype(kContinuous);
    if (id.isNull() && workingDatabase() != nullptr) {
        LinetypePattern line;
        line.name = kContinuous;
        id = addLinetype(line);
    }
    return id;
}

}  // namespace qrs::standard

namespace PwxTool {

using namespace qrs::standard;

AcDbObjectId LoadQdLineType(const CString& name) {
    AcDbObjectId id = presentLinetype(name);
    if (!id.isNull() || name.IsEmpty() || workingDatabase() == nullptr) return id;
    CDBFRecordset table;
    if (!openTable(table)) {
        QrsExport::PrintRefusal(L"\n对不起，没有发现linetype.dbf文件！");
        return id;
    }
    if (!findRow(table, name)) return id;
    LinetypePattern pattern;
    if (readPattern(table, pattern))
        id = addLinetype(pattern);
    else
        QrsExport::PrintRefusal(
            L"%s",
            translated(L"\nThe linetype \"%1\" is damaged in linetype.dbf and cannot be loaded!", view(name)).c_str());
    return id;
}

bool UpdateLinetype(const CString& name) {
    CDBFRecordset table;
    LinetypePattern pattern;
    const AcDbObjectId id = presentLinetype(name);
    return !id.isNull() && openTable(table) && findRow(table, name) && readPattern(table, pattern) &&
           rewriteLinetype(id, pattern);
}

bool GetLinetypePattern(const CString& name, CString& pattern) {
    CDBFRecordset table;
    LinetypePattern read;
    if (name.IsEmpty() || !openTable(table) || !findRow(table, name) || !readPattern(table, read)) return false;
    pattern = read.content();
    return true;
}

bool GetLinetypePattern(AcDbObjectId linetype, CString& pattern) {
    const AcDbLinetypeTableRecordPointer record(linetype, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return false;
    LinetypePattern read;
    read.elements = elementsOf(*record.object());
    pattern = read.content();
    return true;
}

bool GetAllLinetype(std::vector<LinetypeNode>& out) {
    out.clear();
    CDBFRecordset table;
    if (!openTable(table)) return false;
    std::set<CString, LayerNameLess> seen;
    for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
        const CString name = trimmedText(table, L"Name");
        if (!name.IsEmpty() && seen.insert(name).second) out.push_back({name, trimmedText(table, L"Comment")});
    }
    return true;
}

}  // namespace PwxTool
