// The rules of serials and wildcards: what drawings in use show, and random serials beside the rules said otherwise.
#include <gtest/gtest.h>

#include <climits>
#include <cwchar>
#include <random>
#include <regex>

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
    Texts texts;
    for (const CString& piece : pieces)
        texts.emplace_back(piece);
    return texts;
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
    std::size_t begin = 0;
    while (begin < s.size()) {
        const bool isFirst = begin == 0;
        const std::size_t kindAt = isFirst ? 0 : begin + 1;
        std::size_t end = kindAt + 1;
        while (end < s.size() && digit(s[end]) == digit(s[kindAt]))
            ++end;
        if (end < s.size()) {
            pieces.push_back(s.substr(begin, end - begin));
        } else if (isFirst) {
            pieces.push_back(s);
        } else if (s.size() - begin == 2) {
            pieces.push_back(s.substr(begin + 1));
        } else if (s.size() - begin > 2) {
            pieces.push_back(s.substr(begin, s.size() - 1 - begin));
        }
        begin = end;
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
    if (front >= L'a') return std::wstring(1, static_cast<wchar_t>(carry % 26 + 96)) + s;
    if (front >= L'A') return std::wstring(1, static_cast<wchar_t>(carry % 26 + 64)) + s;
    return s;
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

bool numberModel(const std::wstring& s) {
    static const std::wregex plain(L"-?[0-9e]*(\\.[0-9e]*)?");
    const bool isZero = std::wcstod(s.c_str(), nullptr) == 0.0;
    return std::regex_match(s, plain) && !(isZero && !s.empty() && (s[0] == L'.' || s[0] == L'-'));
}

// Every way a pattern may fit is tried at once.
bool fitsModel(const std::string& text, const std::string& pattern) {
    std::vector<char> fits(text.size() + 1, 0);
    fits[0] = 1;
    for (const char c : pattern) {
        std::vector<char> next(text.size() + 1, 0);
        for (std::size_t i = 0; i <= text.size(); ++i) {
            if (c == '*')
                next[i] = fits[i] || (i > 0 && next[i - 1]);
            else if (i > 0)
                next[i] = fits[i - 1] && (c == '?' || c == text[i - 1]);
        }
        fits = next;
    }
    return fits.back() != 0;
}

class Random {
  public:
    std::wstring text(const std::wstring& alphabet, std::size_t longest) {
        std::wstring made(engine_() % (longest + 1), L' ');
        for (wchar_t& c : made)
            c = alphabet[engine_() % alphabet.size()];
        return made;
    }
    int one(std::initializer_list<int> numbers) { return numbers.begin()[engine_() % numbers.size()]; }

  private:
    std::mt19937 engine_{20240611};
};

bool matches(const std::wstring& text, const std::wstring& pattern, bool caseSensitive = true) {
    return MatchingString(text.c_str(), pattern.c_str(), caseSensitive);
}

}  // namespace

TEST(Serials, FollowWhatDrawingsInUseShow) {
    EXPECT_EQ(split(L""), Texts());
    EXPECT_EQ(split(L"ABC"), Texts{L"ABC"});
    EXPECT_EQ(split(L"WL-1"), Texts{L"WL-"});
    EXPECT_EQ(split(L"WL-12"), (Texts{L"WL-", L"2"}));
    EXPECT_EQ(split(L"WL-123"), (Texts{L"WL-", L"12"}));
    EXPECT_EQ(split(L"A1B"), (Texts{L"A", L"B"}));

    EXPECT_EQ(CompareSerial(L"10", L"9"), 1);
    EXPECT_EQ(CompareSerial(L"1A", L"2A"), -1);
    EXPECT_EQ(CompareSerial(L"WL-10", L"WL-12"), 0);
    EXPECT_EQ(CompareSerial(L"a", L"B"), 1);
    EXPECT_LT(CompareSerial(L"", L"A"), 0);

    const std::pair<const wchar_t*, const wchar_t*> next[] = {
        {L"9", L"10"},     {L"09", L"10"},         {L"099", L"100"},      {L"0099", L"0100"}, {L"WL-9", L"WL-10"},
        {L"0", L"1"},      {L"WL-009", L"WL-010"}, {L"WL-99", L"WL-100"}, {L"-", L"-1"},      {L"A", L"B"},
        {L"Z", L"AA"},     {L"z", L"aa"},          {L"1A", L"1B"},        {L"1Z", L"2A"},     {L"9Z", L"0A"},
        {L"A9Z", L"A10A"}, {L"A9", L"A10"},        {L"A-Z", L"B-A"},      {L"00", L"01"},     {L"000", L"001"},
        {L"#", L"#1"},     {L"立-Z", L"A立-A"},
    };
    for (const auto& [serial, expected] : next)
        EXPECT_EQ(increased(serial), expected);
    EXPECT_EQ(increased(L"WL-9", 5), L"WL-10");
    EXPECT_EQ(increased(L"A", 3), L"D");
    EXPECT_EQ(increased(L"", 7), L"7");
    EXPECT_EQ(increased(L"3b", 30), L"4f");
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
    Random random;
    for (int i = 0; i < 300000; ++i) {
        const std::wstring a = random.text(L"0019AZaz-#z立 ", 8);
        const std::wstring b = random.text(L"0019AZaz-", 8);
        const int step = random.one({1, 2, 9, 26, 30, 700, 100000});
        ASSERT_EQ(split(a), splitModel(a)) << shown(a);
        ASSERT_EQ(CompareSerial(a.c_str(), b.c_str()), compareModel(a, b)) << shown(a) << shown(b);
        ASSERT_EQ(increased(a, step), increasedModel(a, step)) << shown(a) << step;
        const std::wstring plain = random.text(L"0012.-e5", 6);
        ASSERT_EQ(IsStrAllNum(plain.c_str()), numberModel(plain)) << shown(plain);
    }
}

TEST(Serials, KnowDigitsAndNumbersAndCutTexts) {
    EXPECT_TRUE(IsDigit(L"0", false));
    EXPECT_FALSE(IsDigit(L"0", true));
    EXPECT_TRUE(IsDigit(L"10", true));
    EXPECT_FALSE(IsDigit(L"", false));
    EXPECT_FALSE(IsDigit(L"1\xFF11", false));
    for (const wchar_t* text : {L"0", L"-5", L".5", L"1e5e", L"12.", L"-1e999"})
        EXPECT_TRUE(IsStrAllNum(text)) << shown(text);
    for (const wchar_t* text : {L"-", L".", L"-0", L".0", L"1.2.3", L"1-2", L"+1", L"1 "})
        EXPECT_FALSE(IsStrAllNum(text)) << shown(text);
    // Too small for a double, unless the exponent makes up for it.
    const std::wstring tiny = L"." + std::wstring(500, L'0') + L"1";
    EXPECT_FALSE(IsStrAllNum(tiny.c_str()));
    EXPECT_FALSE(IsStrAllNum((tiny + L"e100").c_str()));
    EXPECT_TRUE(IsStrAllNum((tiny + L"e400").c_str()));
    EXPECT_TRUE(IsStrAllNum((tiny + L"e9999999999999999999999").c_str()));

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
    Random random;
    for (int i = 0; i < 200000; ++i) {
        const std::wstring text = random.text(L"aab", 12);
        const std::wstring pattern = random.text(L"aab??**", 9);
        const std::string bytes(text.begin(), text.end());
        ASSERT_EQ(matches(text, pattern), fitsModel(bytes, std::string(pattern.begin(), pattern.end())))
            << shown(text) << shown(pattern);
    }
    // Segments beyond one and two words of 64.
    const std::wstring run = std::wstring(70, L'a') + L"?" + std::wstring(70, L'a');
    const std::wstring text = std::wstring(200, L'a') + L"b" + std::wstring(70, L'a');
    EXPECT_TRUE(matches(text + L"xc", L"*b" + run.substr(0, 70) + L"x*"));
    EXPECT_TRUE(matches(text, L"*" + run + L"*b*"));
    EXPECT_FALSE(matches(text, L"*b" + run + L"*"));
    // A long text against a segment that nearly fits everywhere.
    EXPECT_FALSE(matches(std::wstring(1000000, L'a'), L"*" + std::wstring(500, L'a') + L"?b*"));
    EXPECT_TRUE(matches(L"", L"*"));
    EXPECT_FALSE(matches(L"a", L""));
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

    const auto multi = [](const wchar_t* text, const wchar_t* patterns, int all, bool negate) {
        return MultiMatching(text, patterns, all, negate, false);
    };
    EXPECT_TRUE(multi(L"WL-1", L"JL*,wl*", 0, false));
    EXPECT_FALSE(multi(L"WL-1", L"JL*,wl*", 0, true));
    EXPECT_FALSE(multi(L"WL-1", L",JL*,", 0, false));
    EXPECT_TRUE(multi(L"WL-1", L"JL*", 0, true));
    EXPECT_FALSE(multi(L"", L",", 0, false));
    EXPECT_TRUE(multi(L"WL-1", L"w*,*1", 5, false));
    EXPECT_FALSE(multi(L"WL-1", L"w*,*1", 5, true));
    EXPECT_FALSE(multi(L"WL-1", L"w*,", 1, false));
    EXPECT_TRUE(multi(L"WL-1", L"w*,", 1, true));
    EXPECT_TRUE(multi(L"", L",", 1, false));
}
