// Text styles: the settings of the standard, and the styles made of them in the drawing.
#include "TextStyleTool.h"

#include <cmath>

#include "dbobjptr.h"
#include "FontTool.h"
#include "qrs_kernal.h"
#include "standard/holder.h"

using qrs::standard::currentStandard;
using qrs::standard::Standard;

namespace {

// Two lengths or scales that are no further apart are the same.
constexpr double kTolerance = 1e-6;

struct KindKey {
    TextStyleEnum kind;
    const wchar_t* key;
};

constexpr KindKey kKindKeys[] = {
    {kPipeDnTextStyle, L"管径标注"},   {kVPipeTextStyle, L"立管标注"},    {kPipeTextStyle, L"管线文字"},
    {kCircleTextStyle, L"圆中文字"},   {kSanitaryTextStyle, L"洁具标注"}, {kElevationTextStyle, L"标高文字"},
    {kWellTextStyle, L"井标注"},       {kTableTextStyle, L"表格文字"},    {kOtherTextStyle, L"其他标注"},
    {kLinetypeTextStyle, L"文字线形"},
};

// --- the setting a question is about; null when there is none

TextStyleNode* firstWith(CString TextStyleNode::*field, const CString& text) {
    Standard* const standard = currentStandard();
    if (standard == nullptr) return nullptr;
    for (TextStyleNode& node : standard->textStyles)
        if (node.*field == text) return &node;
    return nullptr;
}

TextStyleNode* find(const CString& styleName) {
    return firstWith(&TextStyleNode::Name, styleName);
}

TextStyleNode* find(TextStyleEnum kind) {
    for (const KindKey& one : kKindKeys)
        if (one.kind == kind) return firstWith(&TextStyleNode::Key, one.key);
    return nullptr;
}

// --- questions and changes, by name or by kind

template <typename Which>
double valueOf(const Which& which, double TextStyleNode::*field, double fallback) {
    const TextStyleNode* const node = find(which);
    return node != nullptr ? node->*field : fallback;
}

template <typename Which>
bool setValue(const Which& which, double TextStyleNode::*field, double value) {
    TextStyleNode* const node = find(which);
    if (node == nullptr) return false;
    node->*field = value;
    return true;
}

template <typename Which>
bool getInfo(const Which& which, TextStyleNode& info) {
    const TextStyleNode* const node = find(which);
    if (node == nullptr) return false;
    info = *node;
    return true;
}

template <typename Which>
bool setInfo(const Which& which, const TextStyleNode& info) {
    TextStyleNode* const node = find(which);
    if (node == nullptr) return false;
    *node = info;
    return true;
}

bool areApart(double a, double b) {
    return std::fabs(a - b) > kTolerance;
}

bool differ(const TextStyleNode& a, const TextStyleNode& b) {
    return a.Key != b.Key || a.Name != b.Name || a.ChineseFont != b.ChineseFont || a.EnglishFont != b.EnglishFont ||
           a.WinFont != b.WinFont || areApart(a.FontHeigth, b.FontHeigth) || areApart(a.WHScale, b.WHScale) ||
           a.Bold != b.Bold || a.Italic != b.Italic || a.Encoded != b.Encoded;
}

// --- the drawing

void write(const TextStyleNode& node, AcDbTextStyleTableRecord& record) {
    record.setName(node.Name);
    record.setTextSize(node.FontHeigth);
    // A standard that says nothing of the scale has 0, which no text can be drawn with.
    record.setXScale(node.WHScale == 0.0 ? 1.0 : node.WHScale);
    int charset = 0;
    int pitchAndFamily = 0;
    // The list of fonts decides, not the setting's flag: a typeface that is not installed has no numbers to write.
    if (FontTool::IsWinFont(node.ChineseFont, node.Encoded, &charset, &pitchAndFamily, false)) {
        record.setFileName(node.ChineseFont);
        record.setBigFontFileName(node.EnglishFont);
        record.setFont(node.ChineseFont, node.Bold != 0, node.Italic != 0, charset, pitchAndFamily);
    } else {
        record.setFileName(node.EnglishFont);
        record.setBigFontFileName(node.ChineseFont);
    }
}

AcDbObjectId make(const TextStyleNode& node) {
    AcDbTextStyleTableRecordPointer record;
    record.create();
    write(node, *record.object());
    return QrsExport::AddTextStyle(record.object());
}

}  // namespace

namespace PipeSystemTool {

CString GetTextStyleName(TextStyleEnum kind) {
    const TextStyleNode* const node = find(kind);
    return node != nullptr ? node->Name : CString();
}

double GetTextStyleHeight(const CString& styleName, double defaultHeight) {
    return valueOf(styleName, &TextStyleNode::FontHeigth, defaultHeight);
}

double GetTextStyleHeight(TextStyleEnum kind, double defaultHeight) {
    return valueOf(kind, &TextStyleNode::FontHeigth, defaultHeight);
}

double GetTextStyleScale(const CString& styleName, double defaultScale) {
    return valueOf(styleName, &TextStyleNode::WHScale, defaultScale);
}

double GetTextStyleScale(TextStyleEnum kind, double defaultScale) {
    return valueOf(kind, &TextStyleNode::WHScale, defaultScale);
}

bool SetTextStyleHeight(const CString& styleName, double height) {
    return setValue(styleName, &TextStyleNode::FontHeigth, height);
}

bool SetTextStyleHeight(TextStyleEnum kind, double height) {
    return setValue(kind, &TextStyleNode::FontHeigth, height);
}

bool SetTextStyleScale(const CString& styleName, double scale) {
    return setValue(styleName, &TextStyleNode::WHScale, scale);
}

bool SetTextStyleScale(TextStyleEnum kind, double scale) {
    return setValue(kind, &TextStyleNode::WHScale, scale);
}

bool GetTextStyleInfo(const CString& styleName, TextStyleNode& info) {
    return getInfo(styleName, info);
}

bool GetTextStyleInfo(TextStyleEnum kind, TextStyleNode& info) {
    return getInfo(kind, info);
}

bool SetTextStyleInfo(const CString& styleName, const TextStyleNode& info) {
    return setInfo(styleName, info);
}

bool SetTextStyleInfo(TextStyleEnum kind, const TextStyleNode& info) {
    return setInfo(kind, info);
}

bool GetAllTextStyleInfo(std::vector<TextStyleNode>& out) {
    const Standard* const standard = currentStandard();
    if (standard == nullptr) return false;
    out = standard->textStyles;
    return true;
}

bool IsModified(const TextStyleNode& info) {
    const TextStyleNode* const node = firstWith(&TextStyleNode::Key, info.Key);
    return node != nullptr && differ(*node, info);
}

AcDbObjectId InitTextStyle(const CString& styleName) {
    if (currentStandard() == nullptr) return {};
    const AcDbObjectId present = QrsExport::GetTextStyleId(styleName.GetString());
    if (!present.isNull()) return present;
    const TextStyleNode* const node = find(styleName);
    return node != nullptr ? make(*node) : AcDbObjectId();
}

AcDbObjectId InitTextStyle(TextStyleEnum kind) {
    const TextStyleNode* const node = find(kind);
    if (node == nullptr) return {};
    const AcDbObjectId present = QrsExport::GetTextStyleId(node->Name.GetString());
    return present.isNull() ? make(*node) : present;
}

bool UpdateTextStyle(const CString& styleName) {
    if (currentStandard() == nullptr) return false;
    const AcDbObjectId id = QrsExport::GetTextStyleId(styleName.GetString());
    if (id.isNull()) return false;
    AcDbTextStyleTableRecordPointer record(id, AcDb::kForRead);
    const TextStyleNode* const node = find(styleName);
    if (node != nullptr && record.openStatus() == Acad::eOk && record->upgradeOpen() == Acad::eOk)
        write(*node, *record.object());
    // That the drawing has the style is what callers ask for, written or not.
    return true;
}

bool UpdateTextStyle(TextStyleEnum kind) {
    const TextStyleNode* const node = find(kind);
    if (node == nullptr) return false;
    AcDbTextStyleTableRecordPointer record(QrsExport::GetTextStyleId(node->Name.GetString()), AcDb::kForWrite);
    if (record.openStatus() == Acad::eOk) write(*node, *record.object());
    // That the standard has the setting is what callers ask for, also when the drawing lacks the style.
    return true;
}

}  // namespace PipeSystemTool
