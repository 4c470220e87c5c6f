// CString, its formatter and CStringArray.
#include <gtest/gtest.h>

#include <climits>

#include "afx.h"
#include "host/platform/codepage.h"

namespace {

template <typename... Arguments>
std::wstring formatted(const wchar_t* format, Arguments... arguments) {
    CString text;
    text.Format(format, arguments...);
    return std::wstring(text.view());
}

}  // namespace

TEST(CString, FormatsAlikeOnEverySystem) {
    const void* const none = nullptr;
    EXPECT_EQ(formatted(L"%s|%S|%ls|%hs|%ws", L"给水", "\xB8\xF8", L"w", "n", L"x"), L"给水|给|w|n|x");
    EXPECT_EQ(formatted(L"[%-6s][%6s][%.2s][%*s][%-*s]", L"给水", L"给水", L"给水管", 4, L"a", 3, L"b"),
              L"[给水    ][    给水][给水][   a][b  ]");
    EXPECT_EQ(formatted(L"%c%C%lc%hc|%3c|", L'给', 'n', L'水', 'h', L'x'), L"给n水h|  x|");
    EXPECT_EQ(formatted(L"%d %i %5d|%-5d|%05d %+d % d", 1, -2, 3, 4, 5, 6, 7), L"1 -2     3|4    |00005 +6  7");
    EXPECT_EQ(formatted(L"%u %x %X %#x %o", UINT_MAX, 255u, 255u, 255u, 8u), L"4294967295 ff FF 0xff 10");
    EXPECT_EQ(formatted(L"%ld %lld %I64d %I64u %I32d %zu", -5L, LLONG_MIN, 1LL << 40, ULLONG_MAX, -3, sizeof(char)),
              L"-5 -9223372036854775808 1099511627776 18446744073709551615 -3 1");
    EXPECT_EQ(formatted(L"%hd %hhu", 65537, 257), L"1 1");
    EXPECT_EQ(formatted(L"%.3d|%5.3d|%.0f|%f|%.3f|%8.2f|%-8.1f|", 7, 7, 2.5, 0.5, 1.0005, 3.14159, 2.25),
              L"007|  007|2|0.500000|1.000|    3.14|2.2     |");
    EXPECT_EQ(formatted(L"%g %G %e %.*f", 1e-10, 0.0001, 12345.678, 1, 0.05), L"1e-10 0.0001 1.234568e+04 0.1");
    EXPECT_EQ(formatted(L"100%% %s %q %d", static_cast<const wchar_t*>(nullptr), 4), L"100% (null) %q 4");
    EXPECT_EQ(formatted(L"%p", none), std::wstring(sizeof(void*) * 2, L'0'));
    EXPECT_EQ(formatted(L"%s%", L"cut"), L"cut%");
    // A text without an end, as long as the precision says.
    const wchar_t unended[] = {L'a', L'b'};
    EXPECT_EQ(formatted(L"%.2s", unended), L"ab");
    CString self(L"a");
    self.Format(L"%s%s", static_cast<LPCWSTR>(self), static_cast<LPCWSTR>(self));
    self.AppendFormat(L"-%s", static_cast<LPCWSTR>(self));
    EXPECT_EQ(self, L"aa-aa");
}

TEST(CString, PartsAreCutToWhatIsThere) {
    const CString text(L"WL-12");
    EXPECT_EQ(text.Left(2) + L"|" + text.Left(99) + L"|" + text.Left(-1), L"WL|WL-12|");
    EXPECT_EQ(text.Right(2) + L"|" + text.Right(99) + L"|" + text.Right(-1), L"12|WL-12|");
    EXPECT_EQ(text.Mid(3) + L"|" + text.Mid(1, 2) + L"|" + text.Mid(9) + L"|" + text.Mid(-1, 2), L"12|L-||WL");
    EXPECT_EQ(text.SpanIncluding(L"LW"), L"WL");
    EXPECT_EQ(text[0], L'W');
    EXPECT_EQ(text[5], L'\0');
    EXPECT_EQ(text[-1], L'\0');
    EXPECT_EQ(CString(static_cast<LPCWSTR>(nullptr)).GetLength(), 0);
    EXPECT_EQ(CString(L"abc", 2), L"ab");
    EXPECT_EQ(CString(L'0', 3), L"000");
    EXPECT_EQ(CString("\xB8\xF8\xCB\xAE"), L"给水");
}

TEST(CString, FindsAndChanges) {
    CString text(L"a,b,,c");
    EXPECT_EQ(text.Find(L','), 1);
    EXPECT_EQ(text.Find(L",", 2), 3);
    EXPECT_EQ(text.Find(L"c", 99), -1);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.ReverseFind(L','), 4);
    EXPECT_EQ(text.Replace(L",", L",,"), 3);
    EXPECT_EQ(text, L"a,,b,,,,c");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L'a', L'A') + text.Remove(L','), 7);
    EXPECT_EQ(text.Insert(1, L"--") + text.Insert(99, L'!') + text.Insert(-1, L'<'), 5 + 6 + 7);
    EXPECT_EQ(text, L"<A--bc!");
    EXPECT_EQ(text.Delete(2, 2), 5);
    EXPECT_EQ(text.Delete(4, 99), 4);
    EXPECT_EQ(text, L"<Abc");
    EXPECT_EQ(CString(L" \t\u3000 x y\r\n").Trim(), L"x y");
    EXPECT_EQ(CString(L"**a*").TrimLeft(L'*'), L"a*");
    EXPECT_EQ(CString(L"xyax").TrimRight(L"xa"), L"xy");
    EXPECT_EQ(CString(L"xx").Trim(L'x'), L"");
    EXPECT_EQ(CString(L"aЖ").MakeUpper() + CString(L"AЖ").MakeLower() + CString(L"12").MakeReverse(), L"AЖaж21");
    text += text;
    text += static_cast<LPCWSTR>(text);
    text = static_cast<LPCWSTR>(text) + 12;
    EXPECT_EQ(text, L"<Abc");
}

TEST(CString, TokensBuffersAndOrder) {
    const CString list(L";;a;b;;c;");
    std::vector<std::wstring> tokens;
    int at = 0;
    for (CString token = list.Tokenize(L";", at); at != -1; token = list.Tokenize(L";", at))
        tokens.emplace_back(token);
    EXPECT_EQ(tokens, (std::vector<std::wstring>{L"a", L"b", L"c"}));

    CString buffer(L"ab");
    wchar_t* room = buffer.GetBuffer(10);
    room[2] = L'c';
    room[3] = L'\0';
    buffer.ReleaseBuffer();
    EXPECT_EQ(buffer, L"abc");
    buffer.GetBufferSetLength(5)[4] = L'z';
    buffer.ReleaseBuffer(2);
    EXPECT_EQ(buffer, L"ab");

    EXPECT_EQ(CString(L"a").Compare(L"b"), -1);
    EXPECT_EQ(CString(L"b").Compare(L"a"), 1);
    EXPECT_EQ(CString(L"Wl-1").CompareNoCase(L"wL-1"), 0);
    EXPECT_TRUE(CString(L"A") < CString(L"a") && L"A" < CString(L"a") && CString(L"b") >= L"a");
    EXPECT_TRUE(L"a" != CString(L"A") && L'x' + CString(L"y") + L'z' == L"xyz");
}

TEST(CStringArray, IndicesOutsideDoNoHarm) {
    CStringArray array;
    EXPECT_EQ(array.Add(CString(L"b")) + array.Add(array[0]), 1);
    array[1] = L"x";
    array.SetAt(0, array[1]);
    array.SetAt(2, CString(L"y"));
    array.SetAt(-1, CString(L"y"));
    EXPECT_EQ(array.GetUpperBound(), 1);
    EXPECT_EQ(array.GetAt(0) + array.GetAt(1) + array.GetAt(2) + array.GetAt(-1), L"xx");
}
