// The rules of serials, as drawings in use show them, and wildcards beside a search that tries every way.
#include <gtest/gtest.h>

#include <climits>
#include <random>
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
    // A piece ends where the kind changes. From the second one on it takes its kind from its second character, and the
    // last one of the serial loses its first of two characters, or its last of more.
    const std::pair<const wchar_t*, Texts> cuts[] = {
        {L"", {}},
        {L"-", {L"-"}},
        {L"ABC", {L"ABC"}},
        {L"123", {L"123"}},
        {L"1A", {L"1"}},
        {L"12A3", {L"12", L"3"}},
        {L"WL-1", {L"WL-"}},
        {L"WL-12", {L"WL-", L"2"}},
        {L"WL-123", {L"WL-", L"12"}},
        {L"A1B", {L"A", L"B"}},
        {L"A1B2", {L"A", L"1B"}},
        {L"A12BC3", {L"A", L"12", L"BC"}},
        {L"WL-1a22", {L"WL-", L"1a", L"2"}},
        {L"立1-A2", {L"立", L"1-A"}},
    };
    for (const auto& [serial, pieces] : cuts)
        EXPECT_EQ(split(serial), pieces);

    const std::tuple<const wchar_t*, const wchar_t*, int> orders[] = {
        {L"10", L"9", 1},        {L"1A", L"2A", -1},     {L"WL-10", L"WL-12", 0}, {L"a", L"B", 1},
        {L"", L"A", -1},         {L"A", L"", 1},         {L"", L"", 0},           {L"AC", L"AB", 1},
        {L"A1B", L"A1C", -1},    {L"A12", L"A", 1},      {L"A", L"A12", -1},      {L"AA1BB", L"AA2BBC1", 0},
        {L"-5A12", L"-6A12", 1}, {L"12AB", L"12AC1", 1}, {L"2-1A", L"2-2B", -1},  {L"B1", L"A22", 1},
        {L"A11", L"1", 1},       {L"1", L"A11", 1}};
    for (const auto& [a, b, order] : orders)
        EXPECT_EQ(CompareSerial(a, b), order) << shown(a) << shown(b);

    const std::tuple<const wchar_t*, int, const wchar_t*> next[] = {
        {L"9", 1, L"10"},          {L"09", 1, L"10"},        {L"099", 1, L"100"},  {L"0099", 1, L"0100"},
        {L"0", 1, L"1"},           {L"00", 1, L"01"},        {L"000", 1, L"001"},  {L"WL-9", 5, L"WL-10"},
        {L"WL-009", 1, L"WL-010"}, {L"WL-99", 1, L"WL-100"}, {L"A9", 1, L"A10"},   {L"A", 3, L"D"},
        {L"Z", 1, L"AA"},          {L"z", 1, L"aa"},         {L"1A", 1, L"1B"},    {L"1Z", 1, L"2A"},
        {L"9Z", 1, L"0A"},         {L"A9Z", 1, L"A10A"},     {L"A-Z", 1, L"B-A"},  {L"立-Z", 1, L"A立-A"},
        {L"-", 1, L"-1"},          {L"#", 1, L"#1"},         {L"", 7, L"7"},       {L"3b", 30, L"4f"},
        {L"A", 30, L"AE"},         {L"z", -3, L"w"},         {L"zz", 700, L"bax"}, {L"Z", 700000, L"NB"},
        {L"z", 700000, L"nb"},     {L"Az", 1, L"Ba"},        {L"9#z", 1, L"0#a"},  {L"1A9Z", 1, L"1A10A"},
        {L"立9Z", 1, L"立0A"},     {L"3b", 700, L"9z"},      {L"00", 12, L"12"},   {L"A0Z9", 9, L"A0Z10"},
        {L"m0909", 1, L"m0910"},
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

TEST(Serials, KnowDigitsAndNumbersAndCutTexts) {
    EXPECT_TRUE(IsDigit(L"0", false) && IsDigit(L"10", true));
    EXPECT_FALSE(IsDigit(L"0", true) || IsDigit(L"", false) || IsDigit(L"1\xFF11", false));
    for (const wchar_t* text : {L"0", L"-5", L".5", L"1e5e", L"12.", L"-1e999", L"e", L""})
        EXPECT_TRUE(IsStrAllNum(text)) << shown(text);
    for (const wchar_t* text : {L"-", L".", L"-0", L".0", L"-0.0e3", L".e5", L"1.2.3", L"1-2", L"1e-5", L"+1", L"1 "})
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
    // Neither segments nor texts have a limit, and one that nearly fits everywhere does not take long.
    EXPECT_TRUE(matches(std::wstring(20000, L'a') + L"bc", L"a*" + std::wstring(200, L'a') + L"?b*c"));
    EXPECT_FALSE(matches(std::wstring(20000, L'a'), L"*" + std::wstring(200, L'a') + L"?b*"));
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
