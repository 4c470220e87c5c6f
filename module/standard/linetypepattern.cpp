// Reads "12,-4.5[J],-4.5" of the table's Content and measures the pattern.
#include "standard/linetypepattern.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "config/dbfrecordset.h"
#include "dbsymtb.h"
#include "host/platform/codepage.h"
#include "host/platform/number.h"
#include "host/platform/text.h"
#include "standard/tabletext.h"

namespace qrs::standard {
namespace {

// A linetype has at most 12 dashes, gaps and dots. A gap with a text makes two, before and after the text's place.
constexpr std::size_t kMostElements = 12;
// Lengths stand in the table with three decimals.
constexpr double kLengthTolerance = 0.01;
constexpr double kSmallestPart = 1e9;  // of a drawing unit

// "-4.5[J]": a number, after a negative one perhaps a text in brackets.
bool readElement(std::wstring_view source, PatternElement& element) {
    const std::size_t bracket = source.find(L'[');
    const std::wstring_view number = platform::trimmed(source.substr(0, bracket));
    const std::optional<double> length = platform::parseReal(platform::toUtf8(number));
    if (!length || !std::isfinite(*length)) return false;
    element.length = *length;
    if (bracket == std::wstring_view::npos) return true;
    const std::wstring_view text = platform::trimmed(source.substr(bracket));
    if (element.length >= 0.0 || text.size() < 3 || text.find(L']') != text.size() - 1) return false;
    element.text = makeText(text.substr(1, text.size() - 2));
    return true;
}

// Elements lie between commas; a text may hold some.
bool readContent(std::wstring_view content, std::vector<PatternElement>& elements) {
    elements.clear();
    for (bool isLast = platform::trimmed(content).empty(); !isLast;) {
        std::size_t end = content.find_first_of(L",[");
        if (end != std::wstring_view::npos && content[end] == L'[') end = content.find(L',', content.find(L']', end));
        PatternElement element;
        if (!readElement(content.substr(0, end), element)) return false;
        elements.push_back(element);
        isLast = end == std::wstring_view::npos;
        if (!isLast) content.remove_prefix(end + 1);
    }
    return true;
}

bool isDrawable(const LinetypePattern& pattern) {
    // The editor knows which names a linetype may have.
    if (AcDbLinetypeTableRecord().setName(pattern.name) != Acad::eOk) return false;
    const auto& elements = pattern.elements;
    if (elements.empty()) return true;
    const auto texts =
        std::count_if(elements.begin(), elements.end(), [](const PatternElement& one) { return !one.text.IsEmpty(); });
    // Every line begins with the first element.
    return elements.size() >= 2 && elements.size() + static_cast<std::size_t>(texts) <= kMostElements &&
           elements.front().length >= 0.0 && pattern.length() > 0.0 && std::isfinite(pattern.length());
}

}  // namespace

double LinetypePattern::length() const {
    double sum = 0.0;
    for (const PatternElement& element : elements)
        sum += std::fabs(element.length);
    // Without the dust of adding decimals.
    return std::round(sum * kSmallestPart) / kSmallestPart;
}

CString LinetypePattern::content() const {
    CString text;
    for (const PatternElement& element : elements) {
        CString number;
        number.Format(L"%.4f", element.length);
        number.TrimRight(L"0").TrimRight(L".");
        if (number == L"-0" || number.IsEmpty()) number = L"0";
        if (&element != &elements.front()) text += L",";
        text += number;
        if (!element.text.IsEmpty()) text += L"[" + element.text + L"]";
    }
    return text;
}

bool readPattern(CDBFRecordset& table, LinetypePattern& pattern) {
    std::int32_t count = 0;
    double scale = 0.0;
    double length = 0.0;
    table.GetFieldValue(L"Num", count);
    table.GetFieldValue(L"Scale", scale);
    table.GetFieldValue(L"Length", length);
    pattern.name = trimmedText(table, L"Name");
    pattern.comment = trimmedText(table, L"Comment");
    if (!readContent(view(trimmedText(table, L"Content")), pattern.elements)) return false;
    if (count < 0 || static_cast<std::size_t>(count) != pattern.elements.size() || !(scale > 0.0)) return false;
    if (!(std::fabs(length - pattern.length()) <= kLengthTolerance)) return false;
    for (PatternElement& element : pattern.elements)
        element.length *= scale;
    return isDrawable(pattern);
}

}  // namespace qrs::standard
