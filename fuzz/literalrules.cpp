// Nothing here is shared with the module, not even what a digit is.
#include "fuzz/literalrules.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cwctype>

#include "host/platform/codepage.h"

namespace qrs::fuzz {

namespace {

bool in(wchar_t c, wchar_t first, wchar_t last) {
    return first <= c && c <= last;
}
bool isDigit(wchar_t c) {
    return in(c, L'0', L'9');
}
bool isAlphanumeric(wchar_t c) {
    return isDigit(c) || in(c, L'A', L'Z') || in(c, L'a', L'z');
}

// Blanks, a sign, digits; beyond 32 bits the largest or smallest number.
int numberOf(const std::wstring& text) {
    std::size_t i = 0;
    while (i < text.size() && (std::iswspace(static_cast<std::wint_t>(text[i])) || text[i] == 0x85 || text[i] == 0xA0 ||
                               text[i] == 0x2007 || text[i] == 0x202F))
        ++i;
    const bool isNegative = i < text.size() && text[i] == L'-';
    if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) ++i;
    double number = 0;
    for (; i < text.size() && isDigit(text[i]); ++i)
        number = number * 10 + (text[i] - L'0');
    if (isNegative) return number > -double{INT_MIN} ? INT_MIN : static_cast<int>(-number);
    return number > INT_MAX ? INT_MAX : static_cast<int>(number);
}

int sign(int n) {
    return n < 0 ? -1 : n > 0 ? 1 : 0;
}

int order(const std::wstring& a, const std::wstring& b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

// The place of the last character before the digits that count up; -1 when those are all there is.
int lastOfPrefix(const std::wstring& s, bool& beginsWithZero) {
    const int length = static_cast<int>(s.size());
    beginsWithZero = false;
    for (int k = length - 1; k >= 0; --k)
        if (!isDigit(s[static_cast<std::size_t>(k)])) return k;
    beginsWithZero = s[0] == L'0';
    if (length == 1) return -1;
    for (int k = 0; k < length; ++k)
        if (s[static_cast<std::size_t>(k)] != L'0') return k - 1;
    return length - 1;
}

std::wstring countedUp(const std::wstring& s, int p, bool beginsWithZero) {
    std::wstring prefix = s.substr(0, static_cast<std::size_t>(p + 1));
    std::wstring digits = s.substr(static_cast<std::size_t>(p + 1));
    const std::size_t width = digits.size();
    const int number = numberOf(digits);
    digits = std::to_wstring(number == INT_MAX ? number : number + 1);
    if (beginsWithZero && digits.size() > width) {
        digits = digits.substr(digits.size() - width);
        prefix = increasedSerial(prefix, 1);
    } else {
        while (digits.size() < width)
            digits = L"0" + digits;
    }
    return prefix + digits;
}

std::wstring carriedUp(std::wstring s, int step) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < s.size(); ++i)
        if (isAlphanumeric(s[i])) places.push_back(i);
    if (places.empty()) return s + L"1";
    int carry = step;
    for (std::size_t n = places.size(); n-- > 0;) {
        wchar_t& c = s[places[n]];
        if (n + 1 < places.size() && isDigit(s[places[n + 1]]) && !isDigit(c))
            return s.substr(0, places[n + 1]) + std::to_wstring(carry) + s.substr(places[n + 1]);
        const int count = isDigit(c) ? 10 : 26;
        const int limit = isDigit(c) ? L'9' : in(c, L'A', L'Z') ? L'Z' : L'z';
        int quotient = carry / count;
        int next = static_cast<int>(c) + carry % count;
        if (next > limit) {
            next -= count;
            ++quotient;
        }
        c = static_cast<wchar_t>(next);
        if (quotient < 1) return s;
        carry = quotient;
    }
    const wchar_t leftmost = s[places.front()];
    if (in(leftmost, L'a', L'z')) return static_cast<wchar_t>(carry % 26 + 96) + s;
    if (in(leftmost, L'A', L'Z')) return static_cast<wchar_t>(carry % 26 + 64) + s;
    return s;
}

// One character after the other; one without a place becomes "?", beyond the basic plane two of them.
std::string bytesOf(const std::wstring& text, bool isPattern) {
    std::string bytes;
    for (const wchar_t c : text) {
        std::string one;
        if (isPattern && c == 0xFF1F)
            one = "?";
        else if (!platform::encode(platform::ansiCodePage(), std::wstring(1, c), one))
            one = static_cast<char32_t>(c) > 0xFFFF ? "??" : "?";
        bytes += one;
    }
    return bytes;
}

std::string folded(std::string bytes) {
    for (char& byte : bytes)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    return bytes;
}

// A "*" stands for any bytes: every count of them is tried.
bool fits(const std::string& text, const std::string& pattern) {
    std::vector<char> reached(text.size() + 1, 0);  // whether the pattern so far fits so much of the text
    reached[0] = 1;
    for (const char wanted : pattern) {
        std::vector<char> next(text.size() + 1, 0);
        for (std::size_t i = 0; i <= text.size(); ++i) {
            if (!reached[i]) continue;
            if (wanted == '*') std::fill(next.begin() + static_cast<std::ptrdiff_t>(i), next.end(), 1);
            if (wanted != '*' && i < text.size() && (wanted == '?' || wanted == text[i])) next[i + 1] = 1;
        }
        reached = next;
    }
    return reached[text.size()] != 0;
}

bool fits(const std::string& text, const std::string& pattern, bool caseSensitive) {
    return caseSensitive ? fits(text, pattern) : fits(folded(text), folded(pattern));
}

}  // namespace

std::vector<std::wstring> splitSerial(const std::wstring& s) {
    std::vector<std::wstring> pieces;
    std::size_t start = 0, count = 0;
    bool runIsDigit = true;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const bool d = isDigit(s[i]);
        if (start == count) {
            runIsDigit = d;
            if (i == s.size() - 1) pieces.push_back(s.substr(i, 1));
            ++count;
            continue;
        }
        ++count;
        if (d != runIsDigit) {
            count = i;
            pieces.push_back(s.substr(start, i - start));
            start = i;
        } else if (i == s.size() - 1) {
            pieces.push_back(s.substr(start, count - start));
        }
    }
    return pieces;
}

int compareSerial(const std::wstring& a, const std::wstring& b) {
    if (a.empty() || b.empty()) return order(a, b);
    const std::vector<std::wstring> piecesOfA = splitSerial(a), piecesOfB = splitSerial(b);
    for (std::size_t i = 0; i < std::min(piecesOfA.size(), piecesOfB.size()); ++i) {
        const int first = numberOf(a), second = numberOf(b);
        const int one = isDigit(piecesOfA[i][0]) ? (first < second   ? -1
                                                    : first > second ? 1
                                                                     : 0)
                                                 : order(piecesOfA[i], piecesOfB[i]);
        if (one != 0) return one;
    }
    return sign(static_cast<int>(piecesOfA.size()) - static_cast<int>(piecesOfB.size()));
}

std::wstring increasedSerial(const std::wstring& serial, int step) {
    if (serial.empty()) return std::to_wstring(step);
    bool beginsWithZero = false;
    const int p = lastOfPrefix(serial, beginsWithZero);
    const bool isNumeric = p != static_cast<int>(serial.size()) - 1;
    return isNumeric ? countedUp(serial, p, beginsWithZero) : carriedUp(serial, step);
}

bool matchesWildcard(const std::wstring& text, const std::wstring& pattern, bool caseSensitive) {
    return fits(bytesOf(text, false), bytesOf(pattern, true), caseSensitive);
}

bool matchesWildcards(const std::wstring& text, const std::wstring& patterns, bool all, bool negate,
                      bool caseSensitive) {
    const std::string bytes = bytesOf(text, false), list = bytesOf(patterns, true) + ",";
    for (std::size_t begin = 0, end; begin < list.size(); begin = end + 1) {
        end = list.find(',', begin);
        const std::string pattern = list.substr(begin, end - begin);
        if (!all && pattern.empty()) continue;
        if (fits(bytes, pattern, caseSensitive) != all) return all == negate;
    }
    return all != negate;
}

}  // namespace qrs::fuzz
