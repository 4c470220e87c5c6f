// The rules of serials and wildcards: what drawings in use show, and random serials beside the rules said otherwise.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cwchar>
#include <random>
#include <regex>
#include <tuple>

#include "afxcoll.h"
#include "host/platform/codepage.h"
#include "PwxTool.h"

using namespace PwxTool;

namespace {

using Texts = std::vector<std::wstring>;

std::string shown(const std::wstring& text) {
    return "\"" + qrs::platform::toUtf8(text) + "\"";
}

Texts split(const std::wstring& serial) {
    std::vector<CString> pieces{L"left over"};
    const bool any = SplitSerial(serial.c_str(), pieces);
    EXPECT_EQ(any, !pieces.empty());
    return {pieces.begin(), pieces.end()};
}

std::wstring increased(const std::wstring& serial, int step = 1) {
    CString text = serial.c_str();
    IncreaseSerial(text, step);
    return std::wstring(text.view());
}

// --- the rules, said otherwise

bool digit(wchar_t c) {
    return std::wstring(L"0123456789").find(c) != std::wstring::npos;
}

int number(const std::wstring& text) {
    const long long value = std::wcstoll(text.c_str(), nullptr, 10);
    return static_cast<int>(value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : value);
}

// A piece ends where the kind changes; a later one looks for that from its third character on, takes its kind from the
// second, and at the end of the serial gives the second of two, or all but the last.
Texts splitModel(const std::wstring& s) {
    Texts pieces;
    for (std::size_t begin = 0, end = 0; begin < s.size(); begin = end) {
        const std::size_t kindAt = begin == 0 ? 0 : begin + 1;
        for (end = kindAt + 1; end < s.size() && digit(s[end]) == digit(s[kindAt]);)
            ++end;
        if (end < s.size() || begin == 0)
            pieces.push_back(s.substr(begin, end - begin));
        else if (const std::size_t rest = s.size() - begin; rest > 1)
            pieces.push_back(rest == 2 ? s.substr(begin + 1) : s.substr(begin, rest - 1));
    }
    return pieces;
}

int compareModel(const std::wstring& a, const std::wstring& b) {
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    if (a.empty() || b.empty()) return sign(a.compare(b));
    const Texts A = splitModel(a), B = splitModel(b);
    for (std::size_t i = 0; i < A.size() && i < B.size(); ++i) {
        const long long r = digit(A[i][0]) ? static_cast<long long>(number(a)) - number(b) : A[i].compare(B[i]);
        if (r != 0) return r < 0 ? -1 : 1;
    }
    return A.size() == B.size() ? 0 : A.size() > B.size() ? 1 : -1;
}

// Letters and digits in a row of their own, counted up from its back.
std::wstring carriedModel(std::wstring s, int step) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < s.size(); ++i)
        if (s[i] < 128 && std::isalnum(static_cast<int>(s[i])) != 0) places.push_back(i);
    if (places.empty()) return s + L"1";
    int carry = step;
    for (std::size_t k = places.size(); k-- > 0;) {
        wchar_t& c = s[places[k]];
        if (k + 1 < places.size() && digit(s[places[k + 1]]) && !digit(c))
            return s.substr(0, places[k + 1]) + std::to_wstring(carry) + s.substr(places[k + 1]);
        const int base = digit(c) ? 10 : 26;
        const wchar_t limit = digit(c) ? L'9' : c >= L'a' ? L'z' : L'Z';
        int q = carry / base;
        int t = static_cast<int>(c) + carry % base;
        if (t > static_cast<int>(limit)) t -= base, q += 1;
        c = static_cast<wchar_t>(t);
        if (q < 1) return s;
        carry = q;
    }
    const wchar_t front = s[places[0]];
    return digit(front) ? s : std::wstring(1, static_cast<wchar_t>(carry % 26 + (front >= L'a' ? 96 : 64))) + s;
}

std::wstring increasedModel(const std::wstring& s, int step) {
    if (s.empty()) return std::to_wstring(step);
    int p = static_cast<int>(s.size()) - 1;
    while (p >= 0 && digit(s[static_cast<std::size_t>(p)]))
        --p;
    const bool flag = p < 0 && s[0] == L'0';
    const int last = static_cast<int>(s.size()) - 1;
    if (p < 0 && last > 0) {
        const std::size_t first = s.find_first_not_of(L"0");
        p = first == std::wstring::npos ? last : static_cast<int>(first) - 1;
    }
    if (p == last) return carriedModel(s, step);
    const std::wstring prefix = s.substr(0, static_cast<std::size_t>(p + 1));
    std::wstring digits = s.substr(static_cast<std::size_t>(p + 1));
    const std::size_t width = digits.size();
    digits = std::to_wstring(number(digits) + 1);
    if (flag && digits.size() > width) return increasedModel(prefix, 1) + digits.substr(digits.size() - width);
    while (digits.size() < width)
        digits = L"0" + digits;
    return prefix + digits;
}

// No zero that begins with "-" or "."; no second point, no "-" behind the first character.
bool numberModel(const std::wstring& s) {
    static const std::wregex plain(L"(?![-.][0.]*(e.*)?$)-?[0-9e]*(\\.[0-9e]*)?");
    return std::regex_match(s, plain);
}

// Every way a pattern may fit is tried.
bool fitsModel(const wchar_t* text, const wchar_t* pattern) {
    if (*pattern == L'\0') return *text == L'\0';
    if (*pattern == L'*') return fitsModel(text, pattern + 1) || (*text != L'\0' && fitsModel(text + 1, pattern));
    return *text != L'\0' && (*pattern == L'?' || *pattern == *text) && fitsModel(text + 1, pattern + 1);
}

std::mt19937 engine{20240611};

std::wstring randomText(const std::wstring& alphabet, std::size_t longest) {
    std::wstring made(engine() % (longest + 1), L' ');
    for (wchar_t& c : made)
        c = alphabet[engine() % alphabet.size()];
    return made;
}

bool matches(const std::wstring& text, const std::wstring& pattern, bool caseSensitive = true) {
    return MatchingString(text.c_str(), pattern.c_str(), caseSensitive);
}

}  // namespace

TEST(Serials, FollowWhatDrawingsInUseShow) {
    const std::pair<const wchar_t*, Texts> cuts[] = {
        {L"", {}},           {L"ABC", {L"ABC"}},         {L"123", {L"123"}},           {L"1A", {L"1"}},
        {L"WL-1", {L"WL-"}}, {L"WL-12", {L"WL-", L"2"}}, {L"WL-123", {L"WL-", L"12"}}, {L"A1B", {L"A", L"B"}},
    };
    for (const auto& [serial, pieces] : cuts)
        EXPECT_EQ(split(serial), pieces);

    const std::tuple<const wchar_t*, const wchar_t*, int> orders[] = {
        {L"10", L"9", 1}, {L"1A", L"2A", -1}, {L"WL-10", L"WL-12", 0}, {L"a", L"B", 1}, {L"", L"A", -1}};
    for (const auto& [a, b, order] : orders)
        EXPECT_EQ(CompareSerial(a, b), order) << shown(a) << shown(b);

    const std::tuple<const wchar_t*, int, const wchar_t*> next[] = {
        {L"9", 1, L"10"},          {L"09", 1, L"10"},        {L"099", 1, L"100"}, {L"0099", 1, L"0100"},
        {L"0", 1, L"1"},           {L"00", 1, L"01"},        {L"000", 1, L"001"}, {L"WL-9", 5, L"WL-10"},
        {L"WL-009", 1, L"WL-010"}, {L"WL-99", 1, L"WL-100"}, {L"A9", 1, L"A10"},  {L"A", 3, L"D"},
        {L"Z", 1, L"AA"},          {L"z", 1, L"aa"},         {L"1A", 1, L"1B"},   {L"1Z", 1, L"2A"},
        {L"9Z", 1, L"0A"},         {L"A9Z", 1, L"A10A"},     {L"A-Z", 1, L"B-A"}, {L"立-Z", 1, L"A立-A"},
        {L"-", 1, L"-1"},          {L"#", 1, L"#1"},         {L"", 7, L"7"},      {L"3b", 30, L"4f"},
    };
    for (const auto& [serial, step, expected] : next)
        EXPECT_EQ(increased(serial, step), expected);
}

// The range of 32 bits ends at its largest number; nothing long takes long.
TEST(Serials, EndAtTheLargestNumber) {
    EXPECT_EQ(increased(L"2147483646"), L"2147483647");
    EXPECT_EQ(increased(L"2147483647"), L"2147483647");
    EXPECT_EQ(increased(L"WL-99999999999999999999"), L"WL-00000000002147483647");
    EXPECT_EQ(CompareSerial(L"99999999999", L"2147483647"), 0);
    EXPECT_EQ(CompareSerial(L"-99999999999-99", L"-7-99"), -1);
    EXPECT_EQ(increased(L"AZ", INT_MAX).size(), 3u);
    increased(L"AZ", INT_MIN);
    const std::wstring zeros(1000000, L'0');
    EXPECT_EQ(increased(zeros), zeros.substr(1) + L"1");
    EXPECT_EQ(increased(zeros + L"9"), zeros.substr(1) + L"10");
    EXPECT_EQ(CompareSerial((L"A" + zeros).c_str(), (L"A" + zeros).c_str()), 0);
    std::wstring changing;
    for (int i = 0; i < 300000; ++i)
        changing += L"1AA";
    EXPECT_EQ(CompareSerial(changing.c_str(), (changing + L"11").c_str()), -1);
}

TEST(Serials, AgreeWithTheRulesSaidOtherwise) {
    for (int i = 0; i < 300000; ++i) {
        const std::wstring a = randomText(L"0019AZaz-#z立 ", 8);
        const std::wstring b = randomText(L"0019AZaz-", 8);
        const int step = std::array{1, 2, 9, 26, 30, 700, 100000, -3}[engine() % 8];
        ASSERT_EQ(split(a), splitModel(a)) << shown(a);
        ASSERT_EQ(CompareSerial(a.c_str(), b.c_str()), compareModel(a, b)) << shown(a) << shown(b);
        ASSERT_EQ(increased(a, step), increasedModel(a, step)) << shown(a) << step;
        const std::wstring plain = randomText(L"0012.-e5", 6);
        ASSERT_EQ(IsStrAllNum(plain.c_str()), numberModel(plain)) << shown(plain);
    }
}

TEST(Serials, KnowDigitsAndNumbersAndCutTexts) {
    EXPECT_TRUE(IsDigit(L"0", false) && IsDigit(L"10", true));
    EXPECT_FALSE(IsDigit(L"0", true) || IsDigit(L"", false) || IsDigit(L"1\xFF11", false));
    for (const wchar_t* text : {L"0", L"-5", L".5", L"1e5e", L"12.", L"-1e999", L""})
        EXPECT_TRUE(IsStrAllNum(text)) << shown(text);
    for (const wchar_t* text : {L"-", L".", L"-0", L".0", L"1.2.3", L"1-2", L"+1", L"1 "})
        EXPECT_FALSE(IsStrAllNum(text)) << shown(text);

    const auto cut = [](const wchar_t* text, const wchar_t* delimiters) {
        CStringArray parts;
        parts.Add(L"left over");
        SplitText(text, delimiters, parts);
        std::wstring joined;
        for (INT_PTR i = 0; i < parts.GetSize(); ++i)
            joined += std::wstring(parts.GetAt(i).view()) + L"/";
        return joined;
    };
    EXPECT_EQ(cut(L",;JL-1, ;WL-2;", L",; "), L"JL-1/WL-2/");
    EXPECT_EQ(cut(L"", L","), L"/");
    EXPECT_EQ(cut(L",,", L","), L",,/");
    EXPECT_EQ(cut(L"a,b", L""), L"a,b/");
}

TEST(Wildcards, FitAsEveryOtherWayOfTryingFits) {
    for (int i = 0; i < 100000; ++i) {
        const std::wstring text = randomText(L"aab", 12);
        const std::wstring pattern = randomText(L"aab??**", 9);
        ASSERT_EQ(matches(text, pattern), fitsModel(text.c_str(), pattern.c_str())) << shown(text) << shown(pattern);
    }
    // Segments beyond one and two words of 64.
    const std::wstring run = std::wstring(70, L'a') + L"?" + std::wstring(70, L'a');
    const std::wstring text = std::wstring(200, L'a') + L"b" + std::wstring(70, L'a');
    EXPECT_TRUE(matches(text + L"xc", L"*b" + run.substr(0, 70) + L"x*"));
    EXPECT_TRUE(matches(text, L"*" + run + L"*b*"));
    EXPECT_FALSE(matches(text, L"*b" + run + L"*"));
    // A long text against a segment that nearly fits everywhere.
    EXPECT_FALSE(matches(std::wstring(1000000, L'a'), L"*" + std::wstring(500, L'a') + L"?b*"));
}

TEST(Wildcards, CompareBytesOfTheCodePage) {
    ASSERT_EQ(qrs::platform::ansiCodePage(), 936u);
    EXPECT_TRUE(matches(L"ABC", L"a?c", false));
    EXPECT_FALSE(matches(L"ABC", L"a?c"));
    EXPECT_TRUE(matches(L"abc", L"a\xFF1F\xFF1F"));
    // A Chinese character is two bytes.
    EXPECT_FALSE(matches(L"立管", L"??"));
    EXPECT_TRUE(matches(L"立管", L"????"));
    // The second half of one may be a letter, and is then folded as one: D2 61 and D2 41.
    const CString small("\xD2\x61", 2), large("\xD2\x41", 2);
    EXPECT_TRUE(MatchingString(small, large, false));
    EXPECT_FALSE(MatchingString(small, large, true));
    // What the code page lacks counts as "?": in a pattern it fits any byte, two of them beyond the basic plane.
    std::wstring face;
    qrs::platform::appendCodePoint(face, 0x1F600);
    EXPECT_TRUE(matches(face, L"??"));
    EXPECT_TRUE(matches(L"ab", face));
    EXPECT_TRUE(matches(L"a", L"\x00EF"));

    // Of "WL-1" and of an empty text: whether all fit, and whether any does; negating turns both round.
    const std::tuple<const wchar_t*, const wchar_t*, bool, bool> lists[] = {
        {L"WL-1", L"JL*,wl*", false, true}, {L"WL-1", L",JL*,", false, false}, {L"WL-1", L"w*,*1", true, true},
        {L"WL-1", L"w*,", false, true},     {L"", L",", true, false},          {L"WL-1", L"", false, false}};
    for (const auto& [text, list, all, any] : lists)
        for (const bool negate : {false, true}) {
            EXPECT_EQ(MultiMatching(text, list, 5, negate, false), all != negate) << shown(list);
            EXPECT_EQ(MultiMatching(text, list, 0, negate, false), any != negate) << shown(list);
        }
}
