// The rules of serials: cutting, comparing, counting up, and what counts as a number.
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cwchar>
#include <string>
#include <string_view>

#include "afxcoll.h"
#include "PwxTool.h"
#include "standard/text.h"
#include "tools/serialnumber.h"

using qrs::standard::makeText;
using qrs::standard::view;
using qrs::standard::wide;
using qrs::tools::decimalText;
using qrs::tools::leadingNumber;
using qrs::tools::successor;

namespace {

// What the conversion passes over before a number.
constexpr std::wstring_view kBlanks =
    L" \t\n\v\f\r\x85\xA0\x1680\x2000\x2001\x2002\x2003\x2004\x2005\x2006\x2007\x2008\x2009\x200A\x2028\x2029\x202F"
    L"\x205F\x3000";

constexpr int kLetters = 26;
constexpr int kDigits = 10;

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}
bool isUpper(wchar_t c) {
    return c >= L'A' && c <= L'Z';
}
bool isLower(wchar_t c) {
    return c >= L'a' && c <= L'z';
}

int signOf(int order) {
    return order < 0 ? -1 : 1;
}

// --- counting up digits at the end

// Where the digits at the end begin that count up; the serial's length when none do. isPadded: the serial is made of
// digits alone and begins with zeros, all of which are in front of the place.
std::size_t countedFrom(const std::wstring& serial, bool& isPadded) {
    isPadded = false;
    for (std::size_t i = serial.size(); i-- > 0;)
        if (!isDigit(serial[i])) return i + 1;
    isPadded = serial.front() == L'0';
    if (serial.size() == 1) return 0;
    const std::size_t first = serial.find_first_not_of(L'0');
    return first == std::wstring::npos ? serial.size() : first;
}

std::wstring countedUp(const std::wstring& serial, std::size_t from, bool isPadded) {
    CString prefix = makeText(serial.substr(0, from));
    const std::size_t width = serial.size() - from;
    std::wstring digits = decimalText(successor(leadingNumber(makeText(serial.substr(from))))).GetString();
    if (isPadded && digits.size() > width) {
        // The zeros in front have room for what runs over. They are the only ones left, so this goes one level deep.
        digits.erase(0, digits.size() - width);
        PwxTool::IncreaseSerial(prefix, 1);
    } else if (digits.size() < width) {
        digits.insert(0, width - digits.size(), L'0');
    }
    return wide(prefix) + digits;
}

// --- counting up letters and digits together

// A character counted up by the carry, which becomes what goes to the left.
wchar_t carriedInto(wchar_t c, int& carry) {
    const int count = isDigit(c) ? kDigits : kLetters;
    const wchar_t last = isUpper(c) ? L'Z' : isLower(c) ? L'z' : L'9';
    int next = static_cast<int>(c) + carry % count;
    carry /= count;
    if (next > static_cast<int>(last)) {
        next -= count;
        ++carry;
    }
    return static_cast<wchar_t>(next);
}

void carryUp(std::wstring& serial, int step) {
    int carry = step;
    std::size_t leftmost = std::wstring::npos;  // the place counted up last
    for (std::size_t i = serial.size(); i-- > 0;) {
        const wchar_t c = serial[i];
        // Punctuation never changes.
        if (!isDigit(c) && !isUpper(c) && !isLower(c)) continue;
        // Digits that run over grow: their letters count something else.
        if (leftmost != std::wstring::npos && isDigit(serial[leftmost]) && !isDigit(c)) {
            serial.insert(leftmost, decimalText(carry).GetString());
            return;
        }
        serial[i] = carriedInto(c, carry);
        leftmost = i;
        if (carry < 1) return;
    }
    if (leftmost == std::wstring::npos) {
        serial += L'1';
    } else if (isLower(serial[leftmost])) {
        serial.insert(0, 1, static_cast<wchar_t>(L'a' - 1 + carry % kLetters));
    } else if (isUpper(serial[leftmost])) {
        serial.insert(0, 1, static_cast<wchar_t>(L'A' - 1 + carry % kLetters));
    }
    // Leading digits that run over start again (9Z -> 0A): drawings already numbered depend on it.
}

}  // namespace

namespace qrs::tools {

int leadingNumber(const CString& text) {
    const std::wstring_view units = view(text);
    std::size_t i = std::min(units.find_first_not_of(kBlanks), units.size());
    const bool isNegative = i < units.size() && units[i] == L'-';
    if (isNegative || (i < units.size() && units[i] == L'+')) ++i;
    long long number = 0;
    for (; i < units.size() && isDigit(units[i]); ++i) {
        number = number * 10 + (units[i] - L'0');
        if (number > INT_MAX) return isNegative ? INT_MIN : INT_MAX;
    }
    return static_cast<int>(isNegative ? -number : number);
}

int successor(int n) {
    return n == INT_MAX ? n : n + 1;
}

CString decimalText(int number) {
    return makeText(std::to_wstring(number));
}

}  // namespace qrs::tools

namespace PwxTool {

// The counters run one behind after a change of kind, and so the last piece loses a character: serials are ordered by
// these pieces in drawings already numbered.
bool SplitSerial(const CString& serial, std::vector<CString>& pieces) {
    pieces.clear();
    const int length = serial.GetLength();
    int start = 0;
    int count = 0;
    bool runIsDigit = true;
    for (int i = 0; i < length; ++i) {
        const bool isOne = isDigit(serial[i]);
        const bool isLast = i == length - 1;
        if (start == count) {
            runIsDigit = isOne;
            if (isLast) pieces.emplace_back(serial[i]);
            ++count;
        } else if (isOne != runIsDigit) {
            pieces.push_back(serial.Mid(start, i - start));
            start = count = i;
        } else {
            ++count;
            if (isLast) pieces.push_back(serial.Mid(start, count - start));
        }
    }
    return !pieces.empty();
}

int CompareSerial(const CString& a, const CString& b) {
    if (a.IsEmpty() || b.IsEmpty()) return a.Compare(b);
    std::vector<CString> piecesOfA;
    std::vector<CString> piecesOfB;
    SplitSerial(a, piecesOfA);
    SplitSerial(b, piecesOfB);
    // The whole serials are read as numbers, not their pieces: WL-10 and WL-12 are equal, and drawings depend on it.
    const int numberOfA = leadingNumber(a);
    const int numberOfB = leadingNumber(b);
    const std::size_t count = std::min(piecesOfA.size(), piecesOfB.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!isDigit(piecesOfA[i][0])) {
            if (const int order = piecesOfA[i].Compare(piecesOfB[i]); order != 0) return signOf(order);
        } else if (numberOfA != numberOfB) {
            return numberOfA < numberOfB ? -1 : 1;
        }
    }
    if (piecesOfA.size() == piecesOfB.size()) return 0;
    return piecesOfA.size() > piecesOfB.size() ? 1 : -1;
}

void IncreaseSerial(CString& serial, int step) {
    if (serial.IsEmpty()) {
        serial = decimalText(step);
        return;
    }
    std::wstring text = wide(serial);
    bool isPadded = false;
    const std::size_t from = countedFrom(text, isPadded);
    // Digits at the end count up by one whatever the step: drawings already numbered depend on it.
    if (from < text.size())
        text = countedUp(text, from, isPadded);
    else
        carryUp(text, step);
    serial = makeText(text);
}

bool IsDigit(const CString& text, bool rejectLeadingZero) {
    if (text.IsEmpty() || view(text).find_first_not_of(L"0123456789") != std::wstring_view::npos) return false;
    return !rejectLeadingZero || text[0] != L'0';
}

void SplitText(const CString& text, const CString& delimiters, CStringArray& out) {
    out.RemoveAll();
    int start = 0;
    for (CString part = text.Tokenize(delimiters, start); start >= 0; part = text.Tokenize(delimiters, start))
        out.Add(part);
    if (out.IsEmpty()) out.Add(text);
}

}  // namespace PwxTool

// "e" is taken anywhere, and zeros that begin with "-" or "." are refused: dialogs rely on both.
bool IsStrAllNum(CString text) {
    const CString head = text.SpanIncluding(L"0123456789.-e");
    if (head != text) return false;
    if ((head[0] == L'.' || head[0] == L'-') && std::wcstod(head, nullptr) == 0.0) return false;
    return head.Find(L'.') == head.ReverseFind(L'.') && head.Find(L'-', 1) < 0;
}
