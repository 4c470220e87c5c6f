// Text in code pages and in UTF-8.
#include <gtest/gtest.h>

#include "host/platform/codepage.h"

using namespace qrs::platform;

namespace {
constexpr wchar_t kBad = 0xFFFD;
}

TEST(CodePages, EveryCharacterComesBackAsItsBytes) {
    struct Page {
        unsigned number;
        std::size_t pairs;  // at least so many two-byte characters
    };
    for (const Page& page : {Page{936, 21000}, Page{950, 13000}, Page{932, 7000}, Page{949, 17000}, Page{1252, 0},
                             Page{1250, 0}, Page{1255, 0}, Page{1258, 0}, Page{874, 0}, Page{437, 0}, Page{850, 0}}) {
        ASSERT_TRUE(isKnownCodePage(page.number)) << page.number;
        std::size_t pairs = 0;
        std::size_t changed = 0;
        for (unsigned first = 0x80; first < 0x100; ++first) {
            for (unsigned second = 0x30; second < 0x100; ++second) {
                const bool isPair = isLeadByte(page.number, static_cast<unsigned char>(first));
                const std::string bytes = isPair ? std::string{static_cast<char>(first), static_cast<char>(second)}
                                                 : std::string{static_cast<char>(first)};
                std::wstring text;
                std::string back;
                if (decodeStrict(page.number, bytes, text)) {
                    EXPECT_EQ(text.size(), 1u);
                    EXPECT_TRUE(encode(page.number, text, back));
                    // Second codes of one character come back as its usual one, which reads the same.
                    if (back != bytes) ++changed;
                    EXPECT_EQ(decode(page.number, back), text);
                    if (isPair) ++pairs;
                }
                if (!isPair) break;
            }
        }
        EXPECT_GE(pairs, page.pairs) << page.number;
        EXPECT_LE(changed, page.number == 932 ? 400u : 10u) << page.number;
    }
    EXPECT_FALSE(isKnownCodePage(37)) << "not built on ASCII";
    EXPECT_FALSE(isKnownCodePage(4711));
}

TEST(CodePages, GbkTextOfDrawings) {
    EXPECT_EQ(decode(936, "WL-\xB8\xF8\xCB\xAE 1\x80"), L"WL-\u7ED9\u6C34 1\u20AC");
    std::string bytes;
    EXPECT_TRUE(encode(936, L"\u7ED9\u6C34\uFF1F", bytes));
    EXPECT_EQ(bytes, "\xB8\xF8\xCB\xAE\xA3\xBF");
    EXPECT_EQ(decode(936, "\xAA\xA1\xA1\x40"), L"\uE000\uE4C6") << "characters of the user's own";
    EXPECT_FALSE(encode(936, L"ab\U0001F600", bytes));
    EXPECT_EQ(bytes, "ab");

    // A broken character takes no byte of what follows it with it.
    std::wstring text;
    EXPECT_FALSE(decodeStrict(936, "\xB8\nx\xB8", text));
    EXPECT_EQ(text, (std::wstring{kBad, L'\n', L'x', kBad}));
    EXPECT_EQ(decode(936, "\xFFz"), (std::wstring{kBad, L'z'}));
    EXPECT_TRUE(isLeadByte(936, 0x81));
    EXPECT_FALSE(isLeadByte(936, 0x80));
    EXPECT_FALSE(isLeadByte(932, 0xB1)) << "a half-width letter";
    EXPECT_FALSE(isLeadByte(kUtf8, 0xE7));
    EXPECT_EQ(decode(932, "\xB1\x5C"), L"\uFF71\\") << "the backslash stays one";
    EXPECT_EQ(decode(1252, "\x81\x93"), L"\u0081\u201C");
}

TEST(CodePages, WholeGb18030) {
    constexpr unsigned kPage = 54936;
    std::wstring text;
    const std::wstring known = L"\u4E00\u20AC\u0080\u0250\u9FA6\U00020087\U0001F600x\U0010FFFF\\";
    const std::string bytes =
        "\xD2\xBB\xA2\xE3\x81\x30\x81\x30\x81\x30\xAB\x37\x82\x35\x8F\x33\x95\x32\x90\x31\x94\x39\xFC\x36x\xE3\x32\x9A"
        "\x35\\";
    std::string back;
#if defined(_WIN32)
    if (!encode(kPage, L"\u4E00", back)) GTEST_SKIP() << "a system without this page";
#endif
    EXPECT_TRUE(decodeStrict(kPage, bytes, text));
    EXPECT_EQ(text, known);
    EXPECT_TRUE(encode(kPage, known, back));
    EXPECT_EQ(back, bytes);

    // Every character has its bytes; a few of the private area have lost theirs to others.
    int missing = 0;
    int changed = 0;
    for (char32_t codePoint = 0x80; codePoint <= 0x10FFFF; codePoint += codePoint < 0x10000 ? 1 : 61) {
        if (codePoint >= 0xD800 && codePoint < 0xE000) continue;
        std::wstring one;
        appendCodePoint(one, codePoint);
        if (!encode(kPage, one, back)) {
            ++missing;
            EXPECT_TRUE((codePoint >= 0xE000 && codePoint < 0xF900) || codePoint == 0xFFFF) << std::hex << +codePoint;
        } else if (!decodeStrict(kPage, back, text) || text != one) {
            ++changed;
        }
    }
    EXPECT_LE(missing, 100);
    EXPECT_EQ(changed, 0);

    // Cut short, no digit, between the planes, above the last one: each byte by itself where it is none.
    for (const char* broken : {"\x81\x30\x81", "\x81\x30\x81 x", "\x81\x30", "\x85\x30\x81\x30", "\xFE\x39\xFE\x39",
                               "\xE3\x32\x9A\x36", "\xFF"})
        EXPECT_FALSE(decodeStrict(kPage, broken, text)) << broken;
    EXPECT_EQ(decode(kPage, "\x81\x30\x81 x"), (std::wstring{kBad, L'0', kBad, L' ', L'x'}));
}

TEST(CodePages, AnsiCodePageIsOneTheSystemKnows) {
    EXPECT_EQ(ansiCodePage(), 936u);
    EXPECT_FALSE(setAnsiCodePage(4711));
    EXPECT_EQ(ansiCodePage(), 936u);
    EXPECT_TRUE(setAnsiCodePage(1252));
    EXPECT_EQ(ansiCodePage(), 1252u);
    EXPECT_TRUE(setAnsiCodePage(936));
}

TEST(CodePages, Utf8LosesNothing) {
    const std::string good = "a\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    std::wstring text;
    EXPECT_TRUE(decodeStrict(kUtf8, good, text));
    EXPECT_EQ(toUtf8(text), good);
    // Overlong, too high, cut short, bytes that begin nothing: each byte by itself.
    EXPECT_EQ(fromUtf8("\xC0\x80"), (std::wstring{kBad, kBad}));
    EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), std::wstring(4, kBad));
    EXPECT_EQ(fromUtf8("\xE7\xBB"), (std::wstring{kBad, kBad}));
    EXPECT_EQ(fromUtf8("\xE7\xBBx\x80"), (std::wstring{kBad, kBad, L'x', kBad}));
    // A lone surrogate is no text, but comes back; a pair becomes one character.
    const std::string lone = "\xED\xA0\xBD.";
    EXPECT_FALSE(decodeStrict(kUtf8, lone, text));
    EXPECT_EQ(toUtf8(text), lone);
    EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}), "\xF0\x9F\x98\x80");
    // UTF-16 keeps them, too.
    for (const unsigned utf16 : {kUtf16Little, kUtf16Big}) {
        std::string bytes;
        EXPECT_TRUE(encode(utf16, L"\u7ED9\U0001F600", bytes));
        EXPECT_TRUE(decodeStrict(utf16, bytes, text));
        EXPECT_EQ(text, L"\u7ED9\U0001F600");
        EXPECT_FALSE(decodeStrict(utf16, bytes.substr(0, 4), text));
        EXPECT_EQ(text, (std::wstring{0x7ED9, static_cast<wchar_t>(0xD83D)}));
        EXPECT_FALSE(decodeStrict(utf16, bytes.substr(0, 3), text)) << "half a unit";
        EXPECT_FALSE(isKnownCodePage(utf16)) << "not built on ASCII";
    }
    std::size_t at = 1;
    EXPECT_EQ(nextCodePoint(L"x\U0001F600", at), U'\U0001F600');
}
