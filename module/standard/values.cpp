// The text forms of values in a standard file.
#include "standard/values.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>

#include "acdb.h"
#include "dbcolor.h"
#include "standard/text.h"

namespace qrs::standard {
namespace {

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool isSpace(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r');
}

// The leading number of a text in the form from_chars takes; empty when there is none. Everything in a number is ASCII.
std::string leadingNumber(const CString& text, bool real) {
    const std::wstring_view in = view(text);
    std::string number;
    std::size_t i = 0;
    const auto take = [&] { number += static_cast<char>(in[i++]); };
    const auto takeDigits = [&] {
        const std::size_t before = i;
        while (i < in.size() && isDigit(in[i]))
            take();
        return i - before;
    };
    while (i < in.size() && isSpace(in[i]))
        ++i;
    if (i < in.size() && in[i] == L'+') {
        ++i;
    } else if (i < in.size() && in[i] == L'-') {
        take();
    }
    std::size_t digits = takeDigits();
    if (real && i < in.size() && in[i] == L'.') {
        take();
        digits += takeDigits();
    }
    if (digits == 0) return {};
    if (real && i < in.size() && (in[i] == L'e' || in[i] == L'E')) {
        const std::string mantissa = number;
        take();
        if (i < in.size() && in[i] == L'+') {
            ++i;
        } else if (i < in.size() && in[i] == L'-') {
            take();
        }
        if (takeDigits() == 0) number = mantissa;
    }
    return number;
}

CString fromAscii(std::string_view text) {
    return makeText(std::wstring(text.begin(), text.end()));
}

struct LineWeightText {
    Adesk::Int32 code;
    const wchar_t* text;
};

constexpr LineWeightText kLineWeights[] = {
    {AcDb::kLnWtByLwDefault, L"默认"}, {AcDb::kLnWtByLayer, L"随层"}, {AcDb::kLnWtByBlock, L"随块"},
    {AcDb::kLnWt000, L"0.00"},         {AcDb::kLnWt005, L"0.05"},     {AcDb::kLnWt009, L"0.09"},
    {AcDb::kLnWt013, L"0.13"},         {AcDb::kLnWt015, L"0.15"},     {AcDb::kLnWt018, L"0.18"},
    {AcDb::kLnWt020, L"0.20"},         {AcDb::kLnWt025, L"0.25"},     {AcDb::kLnWt030, L"0.30"},
    {AcDb::kLnWt035, L"0.35"},         {AcDb::kLnWt040, L"0.40"},     {AcDb::kLnWt050, L"0.50"},
    {AcDb::kLnWt053, L"0.53"},         {AcDb::kLnWt060, L"0.60"},     {AcDb::kLnWt070, L"0.70"},
    {AcDb::kLnWt080, L"0.80"},         {AcDb::kLnWt090, L"0.90"},     {AcDb::kLnWt100, L"1.00"},
    {AcDb::kLnWt106, L"1.06"},         {AcDb::kLnWt120, L"1.20"},     {AcDb::kLnWt140, L"1.40"},
    {AcDb::kLnWt158, L"1.58"},         {AcDb::kLnWt200, L"2.00"},     {AcDb::kLnWt211, L"2.11"},
};

}  // namespace

CString formatReal(double value) {
    // Room for the largest double: 309 digits, a sign, the point and two decimals.
    char buffer[std::numeric_limits<double>::max_exponent10 + 16];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2);
    return fromAscii({buffer, static_cast<std::size_t>(result.ptr - buffer)});
}

double parseReal(const CString& text) {
    const std::string number = leadingNumber(text, true);
    double value = 0.0;
    // A number that no double holds leaves the 0.
    std::from_chars(number.data(), number.data() + number.size(), value);
    return value;
}

CString formatInteger(Adesk::Int32 value) {
    return fromAscii(std::to_string(value));
}

Adesk::Int32 parseInteger(const CString& text) {
    const std::string number = leadingNumber(text, false);
    Adesk::Int32 value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<Adesk::Int32>;
        return number.front() == '-' ? Limits::min() : Limits::max();
    }
    return value;
}

CString formatColor(const AcCmColor& color) {
    switch (color.colorMethod()) {
        case AcCmEntityColor::kByACI:
            return formatInteger(color.colorIndex());
        case AcCmEntityColor::kByLayer:
            return L"256";
        case AcCmEntityColor::kByBlock:
            return L"0";
        case AcCmEntityColor::kByColor:
            return formatInteger(color.red()) + L"," + formatInteger(color.green()) + L"," +
                   formatInteger(color.blue());
        default:
            return {};
    }
}

AcCmColor parseColor(const CString& text) {
    constexpr Adesk::Int32 kIndexEnd = 257;
    AcCmColor color;
    const std::wstring_view digits = view(text);
    // The empty text counts as digits and reads as index 0. The words "ByLayer" and "ByBlock" are no digits, so they
    // are not recognised and end at the default colour; existing files rely on it.
    if (std::all_of(digits.begin(), digits.end(), isDigit) && parseInteger(text) < kIndexEnd) {
        if (text == L"256") {
            color.setColorMethod(AcCmEntityColor::kByLayer);
        } else if (text == L"0") {
            color.setColorMethod(AcCmEntityColor::kByBlock);
        } else {
            color.setColorIndex(static_cast<Adesk::UInt16>(parseInteger(text)));
        }
        return color;
    }
    const int first = text.Find(L',');
    if (first >= 0) {
        const int second = text.Find(L',', first + 1);
        const auto component = [](const CString& part) { return static_cast<Adesk::UInt8>(parseInteger(part)); };
        color.setRGB(component(text.Left(first)),
                     component(second < 0 ? text.Mid(first + 1) : text.Mid(first + 1, second - first - 1)),
                     component(second < 0 ? CString() : text.Mid(second + 1)));
    }
    return color;
}

CString formatLineWeight(Adesk::Int32 code) {
    for (const LineWeightText& known : kLineWeights) {
        if (known.code == code) return known.text;
    }
    return kLineWeights[0].text;
}

Adesk::Int32 parseLineWeight(const CString& text) {
    for (const LineWeightText& known : kLineWeights) {
        if (text == known.text) return known.code;
    }
    return kLineWeights[0].code;
}

}  // namespace qrs::standard
