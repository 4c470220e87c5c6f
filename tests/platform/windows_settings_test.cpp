// The user's settings in the registry.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host/platform/settings.h"
#include "host/platform/win32/handle.h"

using namespace qrs::platform;

namespace {

constexpr const wchar_t* kWriter = L"QRS_TEST_WRITER";  // "<key> <number>": this program writes along with another
constexpr int kValues = 40;

class Registry : public testing::Test {
  protected:
    Registry() : key_(L"Software\\QRS-test-" + std::to_wstring(GetCurrentProcessId())) {}
    ~Registry() override { RegDeleteTreeW(HKEY_CURRENT_USER, key_.c_str()); }

    static std::wstring nameOf(int writer, int value) {
        return L"v" + std::to_wstring(writer) + L"_" + std::to_wstring(value);
    }
    bool writeAll(const std::wstring& key, int writer) {
        for (int value = 0; value < kValues; ++value) {
            const std::wstring name = nameOf(writer, value);
            if (!settings.setInteger(key, name, value, error) || settings.integer(key, name) != value) return false;
        }
        return true;
    }

    std::wstring key_;
    Settings& settings = Settings::user();
    Error error;
};

// This program again, for the one test that writes.
Handle startWriter(const std::wstring& key, int number) {
    SetEnvironmentVariableW(kWriter, (std::to_wstring(number) + key).c_str());
    std::wstring program(32768, L'\0');
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::wstring line = L"\"" + std::wstring(program.c_str()) + L"\" --gtest_filter=Registry.IsWrittenByAnotherProgram";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    const BOOL started =
        CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process);
    SetEnvironmentVariableW(kWriter, nullptr);
    if (!started) return Handle();
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

}  // namespace

TEST_F(Registry, ValuesComeBackAsTheirKind) {
    EXPECT_EQ(settings.text(key_, L"StandardFile"), std::nullopt);
    for (const std::wstring text : {L"", L"C:\\std\\pwx.qdsl", L"line\r\nnext", L"给水\U0001F600"}) {
        ASSERT_TRUE(settings.setText(key_, L"StandardFile", text, error)) << error.message;
        EXPECT_EQ(settings.text(key_, L"standardfile"), text);
    }
    const std::wstring longText(5000, L'给');
    ASSERT_TRUE(settings.setText(key_, L"名", longText, error)) << error.message;
    EXPECT_EQ(settings.text(L"\\" + key_ + L"\\", L"名"), longText);
    for (const double real : {2.0, -1e300, 1.0 / 3.0, std::ldexp(1, -1074)}) {
        ASSERT_TRUE(settings.setReal(key_, L"LineTypeScale", real, error)) << error.message;
        EXPECT_EQ(settings.real(key_, L"LineTypeScale"), real);
    }
    for (const std::int32_t integer : {-1, INT32_MIN, INT32_MAX}) {
        ASSERT_TRUE(settings.setInteger(key_ + L"\\deep\\er", L"Colour", integer, error)) << error.message;
        EXPECT_EQ(settings.integer(key_ + L"\\deep\\er", L"Colour"), integer);
    }
    EXPECT_EQ(settings.integer(key_, L"LineTypeScale"), std::nullopt) << "a value has one kind";
    // What another program has written in its own way.
    DWORD number = 7;
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), L"other", REG_QWORD, &number, sizeof number), 0);
    EXPECT_EQ(settings.integer(key_, L"other"), std::nullopt);
}

TEST_F(Registry, IsWrittenByAnotherProgram) {
    wchar_t text[200] = {};
    if (GetEnvironmentVariableW(kWriter, text, 200) == 0) GTEST_SKIP() << "started by the test that follows";
    EXPECT_TRUE(writeAll(text + 1, text[0] - L'0')) << error.message;
}

TEST_F(Registry, ProgramsTogetherLoseNothing) {
    std::vector<Handle> writers;
    for (int number = 1; number <= 3; ++number)
        writers.push_back(startWriter(key_, number));
    EXPECT_TRUE(writeAll(key_, 0)) << error.message;
    for (const Handle& writer : writers) {
        ASSERT_TRUE(writer);
        WaitForSingleObject(writer.value(), INFINITE);
        DWORD code = 1;
        GetExitCodeProcess(writer.value(), &code);
        EXPECT_EQ(code, 0u);
    }
    int missing = 0;
    for (int writer = 0; writer <= 3; ++writer)
        for (int value = 0; value < kValues; ++value)
            missing += settings.integer(key_, nameOf(writer, value)) != value;
    EXPECT_EQ(missing, 0);
}
