// Folders are emptied without leaving them, and files copied whole or not at all.
#include "host/platform/tree.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "host/platform/files.h"
#include "scratch.h"

using namespace qrs::platform;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

TEST(Tree, EmptiesAFolderAndNothingOutsideOfIt) {
    const Scratch scratch;
    fs::create_directories(scratch / "outside/inner");
    scratch.put("outside/inner/kept.txt", "kept");
    fs::create_directories(scratch / "full/a/b");
    for (const char* name : {"full/.hidden", "full/a/b/deep.txt", "full/read-only.txt"})
        scratch.put(name, "x");
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
    EXPECT_EQ(scratch.get("outside/inner/kept.txt"), "kept");
    EXPECT_EQ(fs::status(scratch / "outside/inner/kept.txt").permissions(), fs::perms::owner_read);
    EXPECT_TRUE(isOwnFolder(scratch / "full"));
    EXPECT_FALSE(isOwnFolder(scratch / "to-full"));
    EXPECT_TRUE(liesInFolder(scratch / "to-full/x", scratch / "full/"));
    EXPECT_FALSE(liesInFolder(scratch / "fuller", scratch / "full"));
}

TEST(Tree, CopiesAreWholeAndStayWhereTheyAreSent) {
    const Scratch scratch;
    const std::string big(3'000'000, 'b');
    scratch.put("source", big);
    scratch.put("outside", "outside");
    fs::create_directories(scratch / "to/folder");
    scratch.put("to/read-only", "old");
    fs::permissions(scratch / "to/read-only", fs::perms::owner_read);
    fs::create_symlink("../outside", scratch / "to/link");
    fs::create_symlink("../source", scratch / "to/same");
    const auto copy = [&](const char* source, const char* target, LinkedTarget linked) {
        Error error;
        const bool done = copyFileAtomically(scratch / source, scratch / target, linked, error);
        EXPECT_EQ(done, !error) << error.message;
        return done;
    };
    const LinkedTarget follow = LinkedTarget::Follow, replace = LinkedTarget::Replace;
    EXPECT_TRUE(copy("source", "to/new", replace));
    EXPECT_TRUE(scratch.get("to/new") == big);
    for (const char* target : {"to/folder", "to/read-only", "to/same", "source", "missing/new"})
        EXPECT_FALSE(copy("source", target, replace)) << target;
    for (const char* source : {"missing", "to/folder"})
        EXPECT_FALSE(copy(source, "to/new", follow)) << source;
    {
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = 1'000'000;
        setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_FALSE(copy("source", "outside", follow)) << "no room";
        EXPECT_FALSE(copy("source", "to/link", replace)) << "no room";
        setrlimit(RLIMIT_FSIZE, &before);
    }
    EXPECT_TRUE(fs::is_symlink(scratch / "to/link"));
    EXPECT_EQ(scratch.get("outside"), "outside");
    EXPECT_TRUE(copy("source", "to/link", replace));
    EXPECT_FALSE(fs::is_symlink(scratch / "to/link"));
    EXPECT_EQ(scratch.get("outside"), "outside") << "the link gave way, not what it pointed to";
    fs::create_symlink("../outside", scratch / "to/second");
    EXPECT_TRUE(copy("source", "to/second", follow));
    EXPECT_TRUE(scratch.get("outside") == big);
    EXPECT_EQ(scratch.names(), (Names{"outside", "source", "to"})) << "no temporary file stays";
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch / "to"), fs::directory_iterator()), 6);
}
