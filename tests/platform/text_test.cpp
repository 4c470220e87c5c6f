// Characters and short texts.
#include "host/platform/text.h"

#include <gtest/gtest.h>

#include "host/platform/textwidth.h"

using namespace qrs::platform;

TEST(Case, NamesCompareWithoutRegardToIt) {
    EXPECT_EQ(compareNoCase(L"WL-给水_ÀÉÿ", L"wl-给水_àéŸ"), 0);
    EXPECT_EQ(compareNoCase(L"ΑΣΏ", L"αςώ"), 0);
    EXPECT_EQ(compareNoCase(L"ЖЁ", L"жё"), 0);
    EXPECT_EQ(compareNoCase(L"ＰＩＰＥⅣⓐ", L"ｐｉｐｅⅳⒶ"), 0);
    EXPECT_LT(compareNoCase(L"a", L"B"), 0);
    EXPECT_GT(compareNoCase(L"ab", L"A"), 0);
    EXPECT_LT(compareNoCase(L"Z", L"_"), 0) << "upper case is compared: '_' comes after the letters";
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

TEST(Widths, AreThoseOfTheCharactersSeen) {
    const std::pair<const wchar_t*, std::size_t> widths[] = {
        {L"", 0},
        {L"WL-1", 4},
        {L"给水ＤＮ１００", 14},
        {L"DN\u00B7①—…", 6},
        {L"\U00020087\U00031350", 4},
        {L"e\u0301\u0323x", 2},                               // marks above and below
        {L"\u0E01\u0E31\u0E49", 1},                           // Thai, with a vowel and a tone above
        {L"\u1112\u1161\u11AB", 2},                           // a Korean syllable in its three letters
        {L"\U0001F600\U0001F6B0", 4},                         // a face, drinking water
        {L"\u2764", 1},                                       // a heart as text
        {L"\u2764\uFE0F", 2},                                 // and in colour
        {L"\U0001F44D\U0001F3FD", 2},                         // a hand and its skin
        {L"\U0001F468\u200D\U0001F469\u200D\U0001F467!", 3},  // a family
        {L"\U0001F1E8\U0001F1F3\U0001F1E9\U0001F1EA", 4},     // two flags
        {L"\uE000\u200B", 1},                                 // a user's own character
    };
    for (const auto& [text, width] : widths)
        EXPECT_EQ(columnsOf(text), width) << text;
    EXPECT_EQ(columnsOf(std::wstring(1, static_cast<wchar_t>(0xD83D))), 1u);
    EXPECT_EQ(paddedTo(L"e\u0301给", 5), L"e\u0301给  ");
    EXPECT_EQ(paddedTo(L"给水", 3), L"给水");
    EXPECT_EQ(shownInTable(std::wstring(255, L'n')), std::wstring(255, L'n'));
    EXPECT_EQ(shownInTable(std::wstring(3000, L'给')), std::wstring(126, L'给') + L"...");
}
