// Folders are emptied without leaving them, and files copied whole or not at all.
#include "host/platform/tree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "../folder.h"
#include "host/platform/files.h"
#include "limits.h"

using namespace qrs::platform;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

TEST(Tree, EmptiesAFolderAndNothingOutsideOfIt) {
    const Folder scratch;
    fs::create_directories(scratch / "outside/inner");
    scratch.write("outside/inner/kept.txt", "kept");
    fs::create_directories(scratch / "full/a/b");
    for (const char* name : {"full/.hidden", "full/a/b/deep.txt", "full/read-only.txt"})
        scratch.write(name, "x");
    fs::create_directory_symlink("../outside", scratch / "full/folder-link");
    fs::create_directory_symlink(scratch / "outside/inner", scratch / "full/a/absolute");
    fs::create_symlink("../outside/inner/kept.txt", scratch / "full/file-link");
    fs::create_symlink("nowhere", scratch / "full/dangling");
    ASSERT_EQ(mkfifo((scratch / "full/pipe").c_str(), 0600), 0);
    // A second name of a file outside: its permissions are the file's own.
    fs::create_hard_link(scratch / "outside/inner/kept.txt", scratch / "full/second-name");
    fs::permissions(scratch / "outside/inner/kept.txt", fs::perms::owner_read);
    fs::permissions(scratch / "full/read-only.txt", fs::perms::owner_read);
    fs::permissions(scratch / "full/a/b", fs::perms::none);
    fs::permissions(scratch / "full/a", fs::perms::owner_read | fs::perms::owner_exec);

    Error error;
    fs::create_directory_symlink("full", scratch / "to-full");
    for (const char* name : {"to-full", "to-full/", "missing", "outside/inner/kept.txt"})
        EXPECT_FALSE(emptyFolder(scratch / name, error)) << name;
    EXPECT_TRUE(fs::exists(scratch / "full/a/b"));
    EXPECT_EQ(kindOfName(scratch / "to-full/"), NameKind::Link);
    EXPECT_EQ(kindOfName(scratch / "full/dangling"), NameKind::Link);
    EXPECT_EQ(kindOfName(scratch / "full/pipe"), NameKind::Other);
    EXPECT_EQ(kindOfName(scratch / "missing"), NameKind::Missing);

    EXPECT_TRUE(emptyFolder(scratch / "full/", error)) << error.message;
    EXPECT_TRUE(fs::is_empty(scratch / "full"));
    EXPECT_EQ(scratch.read("outside/inner/kept.txt"), "kept");
    EXPECT_EQ(fs::status(scratch / "outside/inner/kept.txt").permissions(), fs::perms::owner_read);
    EXPECT_TRUE(isOwnFolder(scratch / "full"));
    EXPECT_FALSE(isOwnFolder(scratch / "to-full"));
    EXPECT_TRUE(liesInFolder(scratch / "to-full/x", scratch / "full/"));
    EXPECT_FALSE(liesInFolder(scratch / "fuller", scratch / "full"));
}

TEST(Tree, CopiesAreWholeAndStayWhereTheyAreSent) {
    const Folder scratch;
    const std::string big(3'000'000, 'b');
    scratch.write("source", big);
    fs::create_directories(scratch / "to/folder");
    fs::create_symlink("../source", scratch / "to/same");
    scratch.write("outside", "outside");
    fs::create_symlink("../outside", scratch / "to/link");
    const auto copy = [&](const char* source, const char* target) {
        Error error;
        const bool done = copyFileAtomically(scratch / source, scratch / target, LinkedTarget::Replace, error);
        EXPECT_EQ(done, !error) << error.message;
        return done;
    };
    EXPECT_TRUE(copy("source", "to/new"));
    EXPECT_TRUE(scratch.read("to/new") == big);
    for (const char* target : {"to/folder", "to/same", "source", "missing/new"})
        EXPECT_FALSE(copy("source", target)) << target;
    for (const char* source : {"missing", "to/folder"})
        EXPECT_FALSE(copy(source, "to/new")) << source;
    {
        const FileSizeLimit full(1'000'000);
        EXPECT_FALSE(copy("source", "to/link"));
    }
    EXPECT_TRUE(fs::is_symlink(scratch / "to/link"));
    EXPECT_EQ(scratch.names(), (Names{"outside", "source", "to"})) << "no temporary file stays";
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "to"), fs::directory_iterator()), 4);
}
