// Per-user settings in a file.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <limits>
#include <thread>

#include "../folder.h"
#include "host/platform/callrecord.h"
#include "host/platform/settings.h"
#include "limits.h"

using namespace qrs::platform;

namespace {

constexpr const wchar_t* kKey = L"Software\\QRS\\PWX\\PWXConfig";

class SettingsTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(settings.useFile(file, error)) << error.message; }

    const Folder scratch;
    const std::filesystem::path file = scratch / "deep/settings.ini";
    Settings& settings = Settings::user();
    Error error;
};

}  // namespace

TEST_F(SettingsTest, ValuesComeBackAsTheirKind) {
    EXPECT_EQ(settings.text(kKey, L"StandardFile"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(scratch / "deep")) << "reading makes nothing";
    const std::wstring texts[] = {L"",
                                  L"C:\\std\\pwx.qdsl",
                                  L"  two  blanks ",
                                  L"line\r\nnext\ttab",
                                  L"\\n",
                                  L"[a]=b;#c",
                                  L"给水\U0001F600",
                                  L"\x01\x7F\\",
                                  L" ",
                                  std::wstring(1, L'\0'),
                                  L"i:5",
                                  std::wstring(1, static_cast<wchar_t>(0xD83D))};
    int number = 0;
    for (const std::wstring& text : texts) {
        const std::wstring name = L"t" + std::to_wstring(number++);
        ASSERT_TRUE(settings.setText(kKey, name, text, error)) << error.message;
        EXPECT_EQ(settings.text(kKey, name), text);
    }
    // Names are as free as texts.
    for (const std::wstring name : {L"[x]", L"a=b", L" #edge ", L";", L"", L"名=\\", L"#a", L"\xFEFFx"}) {
        ASSERT_TRUE(settings.setText(kKey, name, name, error)) << error.message;
        EXPECT_EQ(settings.text(kKey, name), name);
    }
    for (const double real : {2.0, 0.1, -1e300, 1.0 / 3.0, 0.0, std::numeric_limits<double>::denorm_min()}) {
        ASSERT_TRUE(settings.setReal(kKey, L"LineTypeScale", real, error)) << error.message;
        EXPECT_EQ(settings.real(kKey, L"LineTypeScale"), real);
    }
    for (const std::int32_t integer : {0, -1, INT32_MIN, INT32_MAX}) {
        ASSERT_TRUE(settings.setInteger(kKey, L"Colour", integer, error));
        EXPECT_EQ(settings.integer(L"\\SOFTWARE\\qrs\\\\pwx\\PwxConfig\\", L"COLOUR"), integer);
    }
    EXPECT_EQ(settings.text(kKey, L"Colour"), std::nullopt);
    EXPECT_EQ(settings.integer(kKey, L"LineTypeScale"), std::nullopt);
    ASSERT_TRUE(settings.setText(kKey, L"colour", L"red", error));
    EXPECT_EQ(settings.integer(kKey, L"Colour"), std::nullopt) << "a value has one kind";
    EXPECT_FALSE(settings.setText(L"a\nb", L"x", L"", error));
    EXPECT_FALSE(settings.setText(L"\\", L"x", L"", error));
}

TEST_F(SettingsTest, ForeignLinesKeepTheirPlace) {
    ASSERT_TRUE(settings.setInteger(L"B", L"x", 1, error));
    scratch.write("deep/settings.ini",
                  "# mine\r\n[Other\\Program]\r\n  odd = q:later kind\r\nText=s:\xE7\xBB\x99\r\n; between\r\n"
                  "\r\n[b]\r\n X = i:1\r\nx=i:7\r\n# end");
    EXPECT_EQ(settings.integer(L"B", L"x"), 1);
    EXPECT_EQ(settings.text(L"other\\program", L"odd"), std::nullopt);
    ASSERT_TRUE(settings.setInteger(L"B", L"x", 2, error));
    ASSERT_TRUE(settings.setInteger(L"Other\\Program", L"New", 3, error));
    ASSERT_TRUE(settings.setReal(L"C", L"r", 2, error));
    EXPECT_EQ(scratch.read("deep/settings.ini"),
              "# mine\r\n[Other\\Program]\r\n  odd = q:later kind\r\nText=s:\xE7\xBB\x99\r\nNew=i:3\r\n; between\r\n"
              "\r\n[b]\r\n X = i:2\r\nx=i:7\r\n# end\r\n\r\n[C]\r\nr=r:2.0\r\n");
}

TEST_F(SettingsTest, DamagedFileIsToldAndNeverWrittenOver) {
    const std::pair<const char*, const char*> damages[] = {
        {"[a]\nx=i:5\n\nx y z\n", ":4: neither a section"},
        {"x=i:5\n", ":1: a value before"},
        {"\xEF\xBB\xBF[a\n", ":1: a section without"},
        {"[a]\nx=5\n", ":2: a value without"},
        {"[a]\nx=i:99999999999\n", ":2: no whole number"},
        {"[a]\nx=i:5z\n", ":2: no whole number"},
        {"[a]\nx=r:\n", ":2: no number"},
        {"[a]\nx=s:\\q\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u{110000}\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u12\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u\n", ":2: an unknown escape"},
        {"[a]\nx=\n", ":2: a value without"},
        {"[a]\nx={:1\n", ":2: a value without"},
        {"[a]\nx=s:\\u{}\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u{12\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u{1x}\n", ":2: an unknown escape"},
        {"[a]\nx=s:\\u{0000012}\n", ":2: an unknown escape"},
        {"[a]\nx=s:a\\\n", ":2: an unknown escape"},
        {"[a]\n\\q=i:1\n", ":2: an unknown escape in the name"},
        {"[a]\nx=I:5\n", ":2: a value without"},
        {"[a]\nx=s:\xB8\xF8\n", ":2: is not UTF-8"},
        {"[a]\nx=s:a\x01\n", ":2: holds a control character"},
    };
    ASSERT_TRUE(settings.setInteger(L"a", L"x", 1, error));
    for (const auto& [content, message] : damages) {
        scratch.write("deep/settings.ini", content);
        EXPECT_FALSE(settings.check(error)) << content;
        EXPECT_EQ(error.message.find(file.string() + message), 0u) << error.message;
        EXPECT_EQ(settings.integer(L"a", L"x"), std::nullopt);
        EXPECT_FALSE(settings.setInteger(L"a", L"x", 2, error));
        EXPECT_EQ(scratch.read("deep/settings.ini"), content);
    }
    scratch.write("other.ini", "damaged");
    scratch.write("deep/settings.ini", "\xEF\xBB\xBF[a]\nx=i:3");
    EXPECT_FALSE(settings.useFile(scratch / "other.ini", error));
    EXPECT_EQ(settings.integer(L"a", L"x"), 3) << "the former store stays in use";
    scratch.write("deep/settings.ini", "[a]\r\nx=i:3\r");
    EXPECT_TRUE(settings.setInteger(L"a", L"y", 4, error));
    EXPECT_EQ(scratch.read("deep/settings.ini"), "[a]\r\nx=i:3\r\ny=i:4\r\n") << "cut off in a line end";
    for (const std::wstring& key : {std::wstring(), std::wstring(L"a\x01"), std::wstring(L"a\x7F"),
                                    std::wstring(1, static_cast<wchar_t>(0xD83D))})
        EXPECT_FALSE(settings.setInteger(key, L"x", 4, error));
    chmod(file.c_str(), 0444);
    EXPECT_FALSE(settings.setInteger(L"a", L"x", 4, error));
    EXPECT_NE(error.message.find("is read-only"), std::string::npos);
    EXPECT_EQ(settings.integer(L"a", L"x"), 3);
}

TEST_F(SettingsTest, OnlyWhatDiffersIsWritten) {
    ASSERT_TRUE(settings.setText(kKey, L"StandardFile", L"a", error)) << error.message;
    ASSERT_TRUE(settings.setInteger(kKey, L"Colour", 3, error)) << error.message;
    std::filesystem::remove(scratch / "deep/settings.ini.lock");
    chmod((scratch / "deep").c_str(), 0555);
    chmod(file.c_str(), 0444);
    {
        const OrdinaryUser user;
        if (!user) GTEST_SKIP() << "no other user to be";
        EXPECT_TRUE(settings.setText(kKey, L"standardfile", L"a", error)) << error.message;
        EXPECT_TRUE(settings.setInteger(kKey, L"Colour", 3, error)) << error.message;
        EXPECT_FALSE(settings.setInteger(kKey, L"Colour", 4, error));
        EXPECT_NE(error.message.find(": Permission denied"), std::string::npos) << error.message;
        EXPECT_FALSE(settings.setReal(kKey, L"Colour", 3, error)) << "another kind is another value";
        EXPECT_EQ(settings.integer(kKey, L"Colour"), 3);
    }
    chmod((scratch / "deep").c_str(), 0755);
}

TEST_F(SettingsTest, FileReplacedByAnotherProgramIsSeenAtOnce) {
    std::filesystem::create_directory(scratch / "deep");
    // Same size, within one tick of the clock, and numbers of removed files are given again.
    for (int round = 0; round < 100; ++round) {
        scratch.write("fresh", "[a]\nx=i:" + std::to_string(100 + round) + "\n");
        std::filesystem::rename(scratch / "fresh", file);
        ASSERT_EQ(settings.integer(L"a", L"x"), 100 + round);
    }
}

TEST_F(SettingsTest, ProgramsTogetherLoseNothing) {
    constexpr int kPrograms = 4;
    constexpr int kValues = 40;
    const auto write = [&](int program) {
        Error failure;
        for (int value = 0; value < kValues; ++value) {
            const std::wstring name = L"v" + std::to_wstring(program) + L"_" + std::to_wstring(value);
            if (!settings.setInteger(kKey, name, value, failure)) return false;
            if (settings.integer(kKey, name) != value) return false;
        }
        return true;
    };
    std::vector<pid_t> children;
    for (int program = 0; program < kPrograms; ++program) {
        children.push_back(fork());
        if (children.back() == 0) _exit(write(program) ? 0 : 1);
    }
    // Threads of one program go along with them.
    bool done[2] = {false, false};
    std::thread first([&] { done[0] = write(kPrograms); });
    std::thread second([&] { done[1] = write(kPrograms + 1); });
    first.join();
    second.join();
    EXPECT_TRUE(done[0] && done[1]);
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    int missing = 0;
    for (int program = 0; program < kPrograms + 2; ++program) {
        for (int value = 0; value < kValues; ++value) {
            const std::wstring name = L"v" + std::to_wstring(program) + L"_" + std::to_wstring(value);
            if (settings.integer(kKey, name) != value) ++missing;
        }
    }
    EXPECT_EQ(missing, 0);
}

TEST_F(SettingsTest, HeldValuesStayInTheProgram) {
    ASSERT_TRUE(settings.setText(kKey, L"StandardFile", L"stored", error));
    settings.holdText(kKey, L"standardfile", L"");
    EXPECT_EQ(settings.text(kKey, L"StandardFile"), L"");
    EXPECT_TRUE(settings.setText(kKey, L"StandardFile", L"held", error));
    EXPECT_EQ(settings.text(kKey, L"StandardFile"), L"held");
    ASSERT_TRUE(settings.useFile(file, error));
    EXPECT_EQ(settings.text(kKey, L"StandardFile"), L"stored");
}

TEST_F(SettingsTest, AccessesAreRecordedInOrder) {
    CallRecorder recorder;
    settings.text(kKey, L"StandardFile");
    settings.setInteger(L"K", L"n", -2, error);
    settings.setReal(L"K", L"s", 3, error);
    settings.setText(L"K", L"t", L"给", error);
    const std::vector<std::string> expected = {"Settings::text(Software\\QRS\\PWX\\PWXConfig, StandardFile)",
                                               "Settings::setInteger(K, n, -2)", "Settings::setReal(K, s, 3.0)",
                                               "Settings::setText(K, t, \xE7\xBB\x99)"};
    EXPECT_EQ(recorder.calls(), expected);
}
