// Text: code pages and escapes, both ways.
#include "host/dxf/text.h"

#include <gtest/gtest.h>

#include "host/platform/codepage.h"

namespace qrs::dxf {
namespace {

TEST(Text, DecodesEscapesAndCodePages) {
    const struct {
        unsigned codePage;
        std::string bytes;
        std::wstring text;
    } cases[] = {
        {936, "plain", L"plain"},
        {936, "\xB9\xDC\xB5\xC0", L"\u7BA1\u9053"},
        {65001, "\xE7\xAE\xA1 \\U+9053", L"\u7BA1 \u9053"},
        {1252, "a\\U+00e9\\U+4E2D", L"a\u00E9\u4E2D"},
        // The second byte of the first character is a backslash: no escape begins there.
        {936, "\x81\x5CU+4E2D", L"\u4E57U+4E2D"},
        {932, "\x95\x5CM+1", L"\u8868M+1"},
        {1252, "\\M+5B9DC\\M+18AC7\\M+2BADE\\M+3B0A1\\M+48861", L"\u7BA1\u7BA1\u7BA1\uAC00\uAC00"},
        {936, "\\M+50041", L"A"},
        {65001, "\\U+D83D\\U+DE00!", L"\U0001F600!"},
        {936, "\\U+D83D\\U+DE", L"\xD83D\\U+DE"},
        // What is no escape stays, carets and the format codes of multi-line text with it.
        {936, "\\U+12G4\\M+6B9DC\\M+5\\u+4E2D\\P^J^ %%d\\", L"\\U+12G4\\M+6B9DC\\M+5\\u+4E2D\\P^J^ %%d\\"},
        {936, "\\M+5FFFF", L"\\M+5FFFF"},
        {936, "", L""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(decodeText(one.codePage, one.bytes), one.text) << one.bytes;
}

TEST(Text, EncodesWhatTheCodePageLacksAsEscapes) {
    EXPECT_EQ(encodeText(936, L"\u7BA1-1"), "\xB9\xDC-1");
    EXPECT_EQ(encodeText(1252, L"\u7BA1\u00E9"), "\\U+7BA1\xE9");
    EXPECT_EQ(encodeText(1252, L"x\U0001F600"), "x\\U+D83D\\U+DE00");
    EXPECT_EQ(encodeText(platform::kUtf8, L"\u7BA1\U0001F600"), "\xE7\xAE\xA1\xF0\x9F\x98\x80");
    for (const unsigned codePage : {936u, 950u, 1252u, platform::kUtf8}) {
        const std::wstring text = L"DN100 \u7BA1\u9053 \u00E9\u0416 \U00020000 \\P";
        EXPECT_EQ(decodeText(codePage, encodeText(codePage, text)), text) << codePage;
    }
}

TEST(Text, NamesOfCodePages) {
    EXPECT_EQ(codePageOf("ANSI_936"), 936u);
    EXPECT_EQ(codePageOf(" ansi_1252 "), 1252u);
    EXPECT_EQ(codePageOf("GB2312"), 936u);
    EXPECT_EQ(codePageOf("dos850"), 850u);
    EXPECT_EQ(codePageOf("johab"), 1361u);
    EXPECT_EQ(codePageOf("ANSI_1200"), 0u);
    EXPECT_EQ(codePageOf(""), 0u);
}

}  // namespace
}  // namespace qrs::dxf
