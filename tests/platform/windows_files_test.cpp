// Files on Windows: what is open, mapped or held by another program while it is saved.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <utility>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/inputfile.h"
#include "host/platform/win32/handle.h"

using namespace qrs::platform;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

namespace {

Handle hold(const fs::path& file, DWORD sharing) {
    return Handle(CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
}

constexpr DWORD kReadOnly = FILE_SHARE_READ;
constexpr DWORD kEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

TEST(WindowsFiles, AreSavedOverThemselvesWhileTheyAreOpen) {
    const Folder scratch;
    Error error;
    scratch.write("plan.dxf", "first");
    const auto opened = MappedFile::open(scratch / "plan.dxf", error);
    ASSERT_TRUE(opened) << error.message;
    EXPECT_TRUE(opened->isSameFile(scratch.path() / "." / "PLAN.dxf"));
    std::string before = "first", earlier = "first";
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(writeFileAtomically(scratch / "plan.dxf", before, 2, error)) << error.message;
    EXPECT_FALSE(opened->isSameFile(scratch / "plan.dxf"));
    for (const char* content : {"second", "third", "fourth"}) {
        ASSERT_TRUE(opened->isUnchanged(error)) << error.message;
        ASSERT_TRUE(writeFileAtomically(scratch / "plan.dxf", content, 2, error)) << error.message;
        EXPECT_EQ(scratch.read("plan.dxf"), content);
        EXPECT_EQ(scratch.read("plan.dxf.bak"), before);
        EXPECT_EQ(scratch.read("plan.dxf.bak2"), earlier);
        earlier = std::exchange(before, content);
    }
    EXPECT_EQ(opened->bytes(), "first");
    EXPECT_EQ(scratch.names(), (Names{"plan.dxf", "plan.dxf.bak", "plan.dxf.bak2"}));
}

TEST(WindowsFiles, ChangesByOthersAreNoticed) {
    const Folder scratch;
    Error error;
    scratch.write("plan.dxf", "first");
    const auto opened = MappedFile::open(scratch / "plan.dxf", error);
    ASSERT_TRUE(opened);
    scratch.write("plan.dxf", "longer than before");
    EXPECT_TRUE(opened->isSameFile(scratch / "plan.dxf"));
    EXPECT_FALSE(opened->isUnchanged(error));
    EXPECT_NE(error.message.find("plan.dxf: was changed by another program"), std::string::npos) << error.message;
    // Twice within a second.
    const FileMark mark = fileMark(scratch / "plan.dxf");
    Sleep(50);
    scratch.write("plan.dxf", "LONGER than before");
    EXPECT_FALSE(isSameState(mark, fileMark(scratch / "plan.dxf")));
    fs::rename(scratch / "plan.dxf", scratch / "away.dxf");
    EXPECT_TRUE(opened->isUnchanged(error)) << "what was renamed is not changed";
}

TEST(WindowsFiles, AFailedSaveLeavesTheFolderAsItWas) {
    const Folder scratch;
    const std::pair<const char*, const char*> files[] = {
        {"plan.dxf", "old"}, {"plan.dxf.bak", "older"}, {"plan.dxf.bak2", "oldest"}};
    const Names names{"plan.dxf", "plan.dxf.bak", "plan.dxf.bak2"};
    for (const auto& [name, content] : files)
        scratch.write(name, content);
    // The drawing or one of its backups is held by a program that lets nobody rename it.
    for (const auto& [held, unused] : files) {
        const Handle handle = hold(scratch / held, kReadOnly);
        ASSERT_TRUE(handle);
        Error error;
        EXPECT_FALSE(writeFileAtomically(scratch / "plan.dxf", "new", 2, error)) << held;
        EXPECT_EQ(error.message.find((scratch / held).u8string() + ": "), 0u) << error.message;
        // The system's own words: UTF-8, and nothing after them.
        std::wstring text;
        EXPECT_TRUE(decodeStrict(kUtf8, error.message, text)) << error.message;
        EXPECT_EQ(text.find_first_of(L"?\r\n;"), std::wstring::npos) << error.message;
        for (const auto& [name, content] : files)
            EXPECT_EQ(scratch.read(name), content) << held;
        EXPECT_EQ(scratch.names(), names) << held;
    }
    // A folder that stands where a backup would.
    Error error;
    fs::remove(scratch / "plan.dxf.bak2");
    fs::create_directory(scratch / "plan.dxf.bak2");
    EXPECT_FALSE(writeFileAtomically(scratch / "plan.dxf", "new", 2, error));
    EXPECT_NE(error.message.find("plan.dxf.bak2: is a folder"), std::string::npos) << error.message;
    EXPECT_EQ(scratch.read("plan.dxf"), "old");
    EXPECT_EQ(scratch.read("plan.dxf.bak"), "older");
    EXPECT_EQ(scratch.names(), names);
}

TEST(WindowsFiles, ReadersOfTheOldFileKeepNobodyFromSaving) {
    const Folder scratch;
    Error error;
    scratch.write("plan.dxf", "old");
    scratch.write("plan.dxf.bak", "older");
    const Handle reader = hold(scratch / "plan.dxf", kEverything);
    ASSERT_TRUE(reader);
    SetFileAttributesW((scratch / "plan.dxf.bak").c_str(), FILE_ATTRIBUTE_READONLY);
    ASSERT_TRUE(writeFileAtomically(scratch / "plan.dxf", "new", 1, error)) << error.message;
    EXPECT_EQ(scratch.read("plan.dxf"), "new");
    EXPECT_EQ(scratch.read("plan.dxf.bak"), "old");
    EXPECT_EQ(scratch.names(), (Names{"plan.dxf", "plan.dxf.bak"}));

    SetFileAttributesW((scratch / "plan.dxf").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(writeFileAtomically(scratch / "plan.dxf", "newest", 1, error));
    EXPECT_NE(error.message.find("plan.dxf: is read-only"), std::string::npos) << error.message;
    SetFileAttributesW((scratch / "plan.dxf").c_str(), FILE_ATTRIBUTE_NORMAL);
}

// A drawing may name one: they lie in every folder, whatever stands after the dot. Newer systems have files of some of
// these names.
TEST(WindowsFiles, DevicesAreNeitherReadNorWritten) {
    const Folder scratch;
    for (const char* name : {"CON", "con.dxf", "NUL", "nul.dxf", "PRN", "AUX", "COM1", "LPT1.dxf", "CONIN$", "CONOUT$"})
        for (const fs::path& path : {fs::path(name), scratch / name}) {
            Error error;
            EXPECT_FALSE(MappedFile::open(path, error)) << path;
            EXPECT_NE(error.message, "") << path;
            EXPECT_FALSE(InputFile::open(path, error)) << path;
            std::string content;
            EXPECT_FALSE(readOrdinaryFile(path, 1000, content, error)) << path;
            if (path.is_relative()) continue;
            const bool isWritten = writeFileAtomically(path, "new", 0, error);
            EXPECT_EQ(scratch.names(), isWritten ? Names{name} : Names{}) << error.message;
            EXPECT_TRUE(!isWritten || scratch.read(name) == "new") << path;
            if (isWritten) fs::remove(path);
        }
}

TEST(WindowsFiles, TemporaryFolderIsThereWhateverTheVariablesSay) {
    const Folder scratch;
    const fs::path before = fs::temp_directory_path();
    const fs::path none = scratch / "none";
    for (const wchar_t* name : {L"TMP", L"TEMP"})
        SetEnvironmentVariableW(name, none.c_str());
    const std::wstring folder = temporaryFolder();
    for (const wchar_t* name : {L"TMP", L"TEMP"})
        SetEnvironmentVariableW(name, before.c_str());
    EXPECT_GT(folder.size(), 4u);
    EXPECT_TRUE(folderExists(folder)) << toUtf8(folder);
}
