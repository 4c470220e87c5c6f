// Text: code pages and escapes, both ways.
#include "host/dxf/text.h"

#include "host/platform/codepage.h"
#include "tests/dxf/sample.h"

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
        {936, "\\M+0B9DC\\M+5B9G", L"\\M+0B9DC\\M+5B9G"},
        {936, "\\U+D83D\\U+0041\\U+DE00",
         L"\xD83D"
         L"A\xDE00"},
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

// The header tells how names are written, up to the version that writes UTF-8 whatever it tells.
TEST(Text, DrawingsOfEveryCodePage) {
    const struct {
        const char* codePage;
        std::string bytes;
        std::wstring text;
    } cases[] = {
        {"ANSI_936", "\xB8\xF8\xCB\xAE\x81\x5C", L"\u7ED9\u6C34\u4E57"},
        {"ANSI_950", "\xB3\x5C\xA5\x5C\xBB\x5C\xBA\xDE", L"\u8A31\u529F\u84CB\u7BA1"},
        {"ANSI_932", "\x95\x5C\x8E\xA6\x83\x5C\x8A\xC7", L"\u8868\u793A\u30BD\u7BA1"},
        {"ANSI_949", "\xB9\xE8\xB0\xFC\xB5\xB5\xB8\xE9", L"\uBC30\uAD00\uB3C4\uBA74"},
        {"ANSI_1250", "\xF8\x65\x7A\xE1\x6E\xED", L"\u0159ez\u00E1n\u00ED"},
        {"ANSI_1251", "\xF2\xF0\xF3\xE1\xE0", L"\u0442\u0440\u0443\u0431\u0430"},
        {"ANSI_1252", "St\xE4rke \x80", L"St\u00E4rke \u20AC"},
        {"ANSI_1253", "\xF3\xF9\xEB\xDE\xED\xE1", L"\u03C3\u03C9\u03BB\u03AE\u03BD\u03B1"},
        {"ANSI_1254", "\xFD\xF0\xFE\xDD", L"\u0131\u011F\u015F\u0130"},
        {"ANSI_1255", "\xF6\xE9\xF0\xE5\xF8", L"\u05E6\u05D9\u05E0\u05D5\u05E8"},
        {"ANSI_1256", "\xC3\xE4\xC8\xE6\xC8", L"\u0623\u0646\u0628\u0648\u0628"},
        {"ANSI_1257", "vamzd\xFEi\xF8", L"vamzd\u017Ei\u0173"},
        {"ANSI_1258", "\xF0\xE3\xF4\xEC", L"\u0111\u0103\u00F4\u0301"},
    };
    const std::wstring foreign = L"\u7ED9\u0416\u05D0\u00DF";  // some of it is in none of them
    for (const auto& one : cases) {
        for (const std::string version : {"AC1009", "AC1018", "AC1021"}) {
            SCOPED_TRACE(one.codePage + version);
            const bool isUtf8 = version == "AC1021";
            const std::string bytes = isUtf8 ? platform::toUtf8(one.text) : one.bytes;
            const test::Tags tags = {{0, "SECTION"},      {2, "HEADER"},     {9, "$ACADVER"}, {1, version},
                                     {9, "$DWGCODEPAGE"}, {3, one.codePage}, {0, "ENDSEC"},   {0, "SECTION"},
                                     {2, "ENTITIES"},     {0, "LINE"},       {8, bytes},      {0, "ENDSEC"},
                                     {0, "EOF"}};
            for (const std::string& file : {test::lay(tags), test::layBinary(tags, version != "AC1009")}) {
                const auto drawing = test::parse(file);
                ASSERT_NE(drawing, nullptr);
                const RecordId line = drawing->next(drawing->findSection("ENTITIES"));
                EXPECT_EQ(drawing->decode(drawing->name(drawing->record(line).layer)), one.text);
                EXPECT_EQ(drawing->encode(one.text), bytes);
                EXPECT_EQ(drawing->decode(drawing->encode(foreign)), foreign);
                EXPECT_EQ(drawing->encode(foreign).find("\\U+") == std::string::npos, isUtf8);
            }
        }
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
