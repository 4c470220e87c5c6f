// Dictionary files keep what is not theirs, in whatever encoding.
#include "qrs_dict.h"

#include <gtest/gtest.h>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace platform = qrs::platform;

namespace {

// The encodings of such files: one of the marks, or null for the ANSI code page.
const char* const encodings[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", nullptr};

std::string encoded(const char* mark, const std::string& utf8) {
    const std::wstring text = platform::fromUtf8(utf8);
    std::string bytes = mark ? mark : "";
    if (!mark) platform::encode(platform::ansiCodePage(), text, bytes);
    if (bytes.size() != 2) return mark ? mark + utf8 : bytes;
    for (const wchar_t unit : text) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += *mark == '\xFE' ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

class Dict : public ::testing::Test {
  protected:
    ~Dict() override { platform::setAnsiCodePage(936); }

    std::wstring file() const { return platform::innerPath(folder_ / "setting.ini"); }
    bool read(TWDict& dict, const std::string& bytes) const {
        folder_.write("setting.ini", bytes);
        std::wstring reason;
        const bool done = dict.ReadFile(file(), reason);
        EXPECT_EQ(done, reason.empty());
        return done;
    }
    std::string written(const TWDict& dict) const {
        std::wstring reason;
        EXPECT_TRUE(dict.WriteFile(file(), reason)) << platform::toUtf8(reason);
        return folder_.read("setting.ini");
    }

  private:
    Folder folder_;
};

}  // namespace

TEST_F(Dict, KeepsForeignLinesInEveryEncoding) {
    // 運 ends in the byte of a backslash in the ANSI code page; the last line has no end.
    const std::string before =
        "Owner = 运維\r\n; a note\r\n[Foreign]\n喷头半径=9\r\n\r\n [ 设备设置 ] ; kept\r\n"
        "  喷头半径 \t=  1.0  \r\nno key at all\r\n喷头半径=8\r\nother=\"two words\"\r\n; behind\r\n[室外设置]";
    const std::string after =
        "Owner = 运維\r\n; a note\r\n[Foreign]\n喷头半径=9\r\n\r\n [ 设备设置 ] ; kept\r\n"
        "  喷头半径 \t=  2.5\r\nno key at all\r\n喷头半径=8\r\nother=\"two words\"\r\n设备支持3D=1\r\n; behind\r\n"
        "[室外设置]\r\n检查井直径=100000.0\r\n\r\n[其它设置]\r\n选择预览=0\r\n";
    for (const char* mark : encodings) {
        SCOPED_TRACE(mark ? mark : "ANSI");
        TWDict dict;
        ASSERT_TRUE(read(dict, encoded(mark, before)));
        EXPECT_TRUE(written(dict) == encoded(mark, before));
        TWDict& equipment = *dict.FindOrAddDict(L"设备设置");
        double radius = 0.0;
        std::wstring text;
        EXPECT_TRUE(equipment.GetValue(L"喷头半径", radius));
        EXPECT_EQ(radius, 1.0);
        EXPECT_TRUE(equipment.GetValue(L"OTHER", text));
        EXPECT_EQ(text, L"two words");
        EXPECT_TRUE(dict.GetValue(L"owner", text));
        EXPECT_EQ(text, L"运維");
        EXPECT_TRUE(equipment.SetValue(L"喷头半径", 2.5));
        EXPECT_TRUE(equipment.SetValue(L"设备支持3D", 1));
        EXPECT_TRUE(dict.FindOrAddDict(L"室外设置")->SetValue(L"检查井直径", 1e5));
        EXPECT_TRUE(dict.FindOrAddDict(L"其它设置")->SetValue(L"选择预览", 0));
        EXPECT_TRUE(written(dict) == encoded(mark, after));
    }
}

TEST_F(Dict, StartsAnewAndRefusesWhatItCannotKeep) {
    TWDict dict;
    std::wstring reason, text;
    ASSERT_TRUE(dict.ReadFile(file(), reason)) << "a missing file is empty";
    EXPECT_EQ(dict.FindDict(L"A"), nullptr);
    TWDict& section = *dict.FindOrAddDict(L"A");
    for (const wchar_t* key : {L"", L" x", L"a=b", L"[a", L";a", L"a\nb"})
        EXPECT_FALSE(section.SetValue(key, std::wstring(L"1"))) << platform::toUtf8(key);
    for (const wchar_t* name : {L"", L"a]b", L"a\r", L"a "})
        EXPECT_EQ(dict.FindOrAddDict(name), nullptr) << platform::toUtf8(name);
    EXPECT_FALSE(section.SetValue(L"k", std::wstring(L"1\n[B]")));
    for (const wchar_t* value : {L" blank", L"\"quoted\"", L"it's'", L"a=b", L"", L"\U0001F6B0"}) {
        EXPECT_TRUE(section.SetValue(L"k", std::wstring(value)));
        EXPECT_TRUE(section.GetValue(L"k", text));
        EXPECT_EQ(text, value);
    }
    std::int32_t number = 7;
    EXPECT_FALSE(section.GetValue(L"k", number));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(written(dict), "\xEF\xBB\xBF[A]\r\nk=\xF0\x9F\x9A\xB0\r\n");

    // Damaged files leave what was read before.
    for (const std::string& bytes : {std::string("\xFF\xFE[\0A", 5), std::string("a=\0", 3), std::string("a=\xFF\xFF")})
        EXPECT_FALSE(read(dict, bytes));
    EXPECT_TRUE(section.GetValue(L"k", text));

    // Characters that the file's code page lacks turn it into UTF-8, foreign texts included.
    platform::setAnsiCodePage(1252);
    ASSERT_TRUE(read(dict, "[caf\xE9]\nx=\xFC\n"));
    EXPECT_TRUE(dict.FindOrAddDict(L"设备设置")->SetValue(L"喷头半径", 1.0));
    EXPECT_EQ(written(dict), "\xEF\xBB\xBF[café]\nx=ü\n\n[设备设置]\n喷头半径=1.0\n");
}
