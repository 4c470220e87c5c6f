// Characters and short texts.
#include "host/platform/text.h"

#include <gtest/gtest.h>

using namespace qrs::platform;

TEST(Case, NamesCompareWithoutRegardToIt) {
    EXPECT_EQ(compareNoCase(L"WL-给水_ÀÉÿ", L"wl-给水_àéŸ"), 0);
    EXPECT_EQ(compareNoCase(L"ΑΣΏ", L"αςώ"), 0);
    EXPECT_EQ(compareNoCase(L"ЖЁ", L"жё"), 0);
    EXPECT_EQ(compareNoCase(L"ＰＩＰＥⅣⓐ", L"ｐｉｐｅⅳⒶ"), 0);
    EXPECT_LT(compareNoCase(L"a", L"B"), 0);
    EXPECT_GT(compareNoCase(L"ab", L"A"), 0);
    EXPECT_LT(compareNoCase(L"Z", L"_"), 0) << "upper case is compared: '_' lies behind the letters";
    EXPECT_NE(compareNoCase(L"ı", L"I"), 0);
    EXPECT_NE(compareNoCase(L"ß", L"SS"), 0);
    EXPECT_EQ(foldCase(L"straße ÷ ǆ ×"), L"STRAßE ÷ Ǆ ×");
    EXPECT_EQ(lowerCaseText(L"ΑΣ Ǆ ЁЖ ŸÀ× Ⅳ"), L"ασ ǆ ёж ÿà× ⅳ");

    // Surrogates count as the characters they make, whatever stands in front of them.
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(compareNoCase(L"A" + pair + L"b", L"a\U0001F600B"), 0);
    EXPECT_LT(compareNoCase(pair, L"\U0001F601"), 0);
    EXPECT_GT(compareNoCase(L"a" + pair, L"A" + pair.substr(0, 1) + L"\uFF41"), 0);
    EXPECT_LT(compareNoCase(pair.substr(0, 1), pair), 0);
}
