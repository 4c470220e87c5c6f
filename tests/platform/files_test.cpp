// Names in the inner form, and finding files by them.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "../folder.h"
#include "host/platform/files.h"
#include "host/platform/wildcard.h"
#include "limits.h"

using namespace qrs::platform;
namespace fs = std::filesystem;

TEST(Paths, RoundTripKeepsEveryByte) {
    for (const std::string native : {"/srv/std/pwx.qdsl", "relative/name", "/", "", "/srv/\xE7\xBB\x99\xE6\xB0\xB4.dxf",
                                     "/srv/\xB8\xF8\xCB\xAE.dxf", "/odd\\name/x", "/cut\xE7\xBB",
                                     "/sur\xED\xB2\x80/\xF0\x9F\x98\x80", "/mixed\xFF\\\xE7\xBB\x99"}) {
        EXPECT_EQ(nativePath(innerPath(native)).native(), native);
    }
    EXPECT_EQ(innerPath("/srv/std/pwx.qdsl"), L"\\srv\\std\\pwx.qdsl");
    EXPECT_EQ(innerFromTyped(L"/srv\\a/b"), L"\\srv\\a\\b");
    EXPECT_EQ(joinPath(L"\\srv\\", L"\\x.dbf"), L"\\srv\\x.dbf");
    EXPECT_EQ(joinPath(L"\\srv", L"x.dbf"), L"\\srv\\x.dbf");
    EXPECT_EQ(joinPath(L"\\", L"x.dbf"), L"\\x.dbf");
    EXPECT_EQ(joinPath(L"", L"x.dbf"), L"x.dbf");
}

TEST(Paths, NamesAreFoundWithoutRegardToCase) {
    const Folder scratch;
    const std::wstring inner = innerPath(scratch.path());
    fs::create_directories(scratch / "Std/\xC3\xA9tude");
    scratch.write("Std/pwx.qdsl", "");
    scratch.write("Std/\xC3\xA9tude/Pipe.DBF", "");
    EXPECT_EQ(nativePath(inner + L"\\STD\\PWX.QDSL"), scratch / "Std/pwx.qdsl");
    EXPECT_EQ(nativePath(inner + L"\\std\\\u00C9TUDE\\pipe.dbf"), scratch / "Std/\xC3\xA9tude/Pipe.DBF");
    EXPECT_EQ(nativePath(inner + L"\\std\\..\\STD\\pwx.qdsl").lexically_normal(), scratch / "Std/pwx.qdsl");
    // What does not exist stays as written, after what does.
    EXPECT_EQ(nativePath(inner + L"\\std\\New Folder\\New.dxf"), scratch / "Std/New Folder/New.dxf");
    EXPECT_TRUE(fileExists(inner + L"\\sTd\\pWx.QdSl"));
    EXPECT_FALSE(fileExists(inner + L"\\sTd"));
    EXPECT_TRUE(folderExists(inner + L"\\sTd"));

    // Typed with backslashes in a shell, unless a name holds them.
    const std::string folder = scratch.path().string();
    EXPECT_EQ(nativeFromTyped(folder + "\\STD\\pwx.qdsl"), scratch / "Std/pwx.qdsl");
    EXPECT_EQ(nativeFromTyped(folder + "/STD/pwx.qdsl"), scratch / "STD/pwx.qdsl");
    EXPECT_EQ(nativeFromTyped("new\\\xB8\xF8.dxf"), fs::path("new/\xB8\xF8.dxf"));
    scratch.write("odd\\name", "");
    EXPECT_EQ(nativeFromTyped(folder + "/odd\\name"), scratch / "odd\\name");

    // The exact name wins, else the first in order.
    scratch.write("Std/PWX.qdsl", "");
    scratch.write("Std/Pwx.qdsl", "");
    EXPECT_EQ(nativePath(inner + L"\\Std\\pwx.qdsl"), scratch / "Std/pwx.qdsl");
    EXPECT_EQ(nativePath(inner + L"\\Std\\pwx.QDSL"), scratch / "Std/PWX.qdsl");
}

TEST(Paths, FoldersAreListedByPattern) {
    const Folder scratch;
    for (const char* name : {"a.dbf", "B.DBF", "ab.dbf", "c.txt", "noextension"})
        scratch.write(name, "");
    fs::create_directory(scratch / "folder.dbf");
    const auto list = [&](const wchar_t* pattern) {
        std::vector<std::wstring> names = listFiles(innerPath(scratch.path()), pattern);
        std::sort(names.begin(), names.end());
        return names;
    };
    using List = std::vector<std::wstring>;
    EXPECT_EQ(list(L"*.dbf"), (List{L"B.DBF", L"a.dbf", L"ab.dbf"}));
    EXPECT_EQ(list(L"?.DBF"), (List{L"B.DBF", L"a.dbf"}));
    EXPECT_EQ(list(L"*.*").size(), 5u);
    EXPECT_TRUE(listFiles(L"\\no\\such\\folder", L"*").empty());
    EXPECT_TRUE(matchesWildcard(L"aXbXc", L"a*x?"));
    EXPECT_TRUE(matchesWildcard(L"aab", L"*ab"));
    EXPECT_FALSE(matchesWildcard(L"ab", L"a?b"));
    EXPECT_FALSE(matchesWildcard(L"", L"?"));
    EXPECT_TRUE(matchesWildcard(L"\U0001F600", L"?"));
}

TEST(Paths, ReadingTellsWhyNot) {
    const Folder scratch;
    std::string content;
    Error error;
    scratch.write("zeros", std::string("a\0b\r\n", 5) + std::string(100'000, 'z'));
    ASSERT_TRUE(readFile(scratch / "zeros", content, error)) << error.message;
    EXPECT_TRUE(content == scratch.read("zeros"));
    EXPECT_TRUE(readFile("/proc/self/status", content, error));
    EXPECT_NE(content.find("VmPeak"), std::string::npos) << "a file that tells no size";
    EXPECT_FALSE(readFile(scratch.path(), content, error));
    EXPECT_EQ(error.message, scratch.path().string() + ": is a folder");
    EXPECT_FALSE(readFile(scratch / "none", content, error));
    EXPECT_EQ(error.message, (scratch / "none").string() + ": No such file or directory");
}

TEST(Paths, OnlyOrdinaryFilesUpToALimit) {
    const Folder scratch;
    std::string content;
    Error error;
    const auto refusal = [&](const fs::path& native, std::uint64_t most) {
        content = "old";
        error = Error();
        EXPECT_FALSE(readOrdinaryFile(native, most, content, error)) << native;
        EXPECT_EQ(content, "");
        return error.message;
    };
    scratch.write("eight", "12345678");
    EXPECT_TRUE(readOrdinaryFile(scratch / "eight", 8, content, error)) << error.message;
    EXPECT_EQ(content, "12345678");
    EXPECT_EQ(refusal(scratch / "eight", 7), (scratch / "eight").string() + ": is larger than 7 bytes");
    scratch.write("large", std::string((1 << 20) + 1, 'x'));
    EXPECT_EQ(refusal(scratch / "large", 1 << 20), (scratch / "large").string() + ": is larger than 1 MB");
    EXPECT_TRUE(readOrdinaryFile("/proc/self/status", 1 << 20, content, error));
    EXPECT_NE(content.find("VmPeak"), std::string::npos) << "a file that tells no size";
    EXPECT_EQ(refusal("/proc/self/status", 100), "/proc/self/status: is larger than 100 bytes");

    ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusal(scratch / "pipe", 8), (scratch / "pipe").string() + ": is no ordinary file");
    EXPECT_EQ(refusal("/dev/zero", 8), "/dev/zero: is no ordinary file");
    EXPECT_EQ(refusal(scratch.path(), 8), scratch.path().string() + ": is a folder");
    EXPECT_EQ(refusal(scratch / "none", 8), (scratch / "none").string() + ": No such file or directory");
}

TEST(Paths, NotThereIsToldFromOutOfReach) {
    const Folder scratch;
    Error error;
    const std::wstring inner = innerPath(scratch.path());
    const auto look = [&](const wchar_t* name) {
        error = Error();
        return presenceOf(inner + name, error);
    };
    scratch.write("pwx.qdsl", "");
    ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0600), 0);
    for (const wchar_t* name : {L"", L"\\pwx.qdsl", L"\\PWX.QDSL", L"\\pipe"})
        EXPECT_EQ(look(name), Presence::Present) << name;
    fs::create_symlink("nowhere", scratch / "dangling");
    for (const wchar_t* name : {L"\\none", L"\\none\\pwx.qdsl", L"\\pwx.qdsl\\inside", L"\\dangling"}) {
        EXPECT_EQ(look(name), Presence::Missing) << name;
        EXPECT_FALSE(error) << error.message;
    }
    fs::create_symlink("round", scratch / "round");
    EXPECT_EQ(look(L"\\round\\pwx.qdsl"), Presence::Unreachable);
    EXPECT_EQ(error.message, (scratch / "round/pwx.qdsl").string() + ": Too many levels of symbolic links");
    EXPECT_EQ(look(L"\\round"), Presence::Unreachable);

    for (const char* folder : {"closed", "unlisted"}) {
        fs::create_directories(scratch / folder / "inside");
        scratch.write(std::string(folder) + "/inside/pwx.qdsl", "");
    }
    fs::permissions(scratch / "closed", fs::perms::none);
    fs::permissions(scratch / "unlisted", fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec);
    {
        const OrdinaryUser user;
        if (!user) GTEST_SKIP() << "no other user to be";
        EXPECT_EQ(look(L"\\closed"), Presence::Present);
        EXPECT_EQ(look(L"\\closed\\inside\\pwx.qdsl"), Presence::Unreachable);
        EXPECT_EQ(error.message, (scratch / "closed/inside/pwx.qdsl").string() + ": Permission denied");
        // Its names cannot be read, so nobody can tell whether one fits but for its case.
        EXPECT_EQ(look(L"\\unlisted\\inside\\pwx.qdsl"), Presence::Present);
        EXPECT_EQ(look(L"\\unlisted\\Inside\\pwx.qdsl"), Presence::Unreachable);
    }
    fs::permissions(scratch / "closed", fs::perms::owner_all);
    fs::permissions(scratch / "unlisted", fs::perms::owner_all);
}
