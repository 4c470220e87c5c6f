// Files appear whole or not at all.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <thread>

#include "../folder.h"
#include "host/platform/files.h"
#include "limits.h"

using namespace qrs::platform;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

namespace {

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

}  // namespace

TEST(AtomicFile, WritesPiecesOfEverySizeInOrder) {
    const Folder scratch;
    std::string expected;
    Error error;
    AtomicFile file;
    ASSERT_TRUE(file.begin(scratch / "big.dxf", error)) << error.message;
    // Sizes around the gathering size and the step of one call.
    for (const std::size_t size : {1u, 100u, 262143u, 1u, 262144u, 3u, 20'000'000u, 0u, 5u, 262145u}) {
        std::string piece(size, static_cast<char>('a' + expected.size() % 23));
        file.write(piece);
        expected += piece;
    }
    EXPECT_FALSE(fs::exists(scratch / "big.dxf"));
    ASSERT_TRUE(file.commit(true, error)) << error.message;
    EXPECT_TRUE(scratch.read("big.dxf") == expected);
    EXPECT_EQ(scratch.names(), Names{"big.dxf"}) << "no backup of what was not there, no temporary file";
}

TEST(AtomicFile, KeepsBackupPermissionsAndLinks) {
    const Folder scratch;
    Error error;
    scratch.write("plan.dxf", "old");
    scratch.write("plan.dxf.bak", "older");
    fs::create_directory(scratch / "links");
    fs::create_symlink("../plan.dxf", scratch / "links/inner");
    fs::create_symlink("links/inner", scratch / "outer");
    chmod((scratch / "plan.dxf").c_str(), 0641);

    ASSERT_TRUE(writeFileAtomically(scratch / "outer", "new", true, error)) << error.message;
    EXPECT_TRUE(fs::is_symlink(scratch / "outer"));
    EXPECT_TRUE(fs::is_symlink(scratch / "links/inner"));
    EXPECT_EQ(scratch.read("plan.dxf"), "new");
    EXPECT_EQ(modeOf(scratch / "plan.dxf"), 0641u);
    EXPECT_EQ(scratch.read("plan.dxf.bak"), "old");
    EXPECT_EQ(scratch.names(), (Names{"links", "outer", "plan.dxf", "plan.dxf.bak"}));

    // A backup that already is the same file under a second name.
    fs::remove(scratch / "plan.dxf.bak");
    fs::create_hard_link(scratch / "plan.dxf", scratch / "plan.dxf.bak");
    ASSERT_TRUE(writeFileAtomically(scratch / "plan.dxf", "newest", true, error)) << error.message;
    EXPECT_EQ(scratch.read("plan.dxf.bak"), "new");
    EXPECT_EQ(scratch.names().size(), 4u);

    // A link to a file that is still to be made; a new file gets what the user's mask leaves.
    fs::create_symlink("made.dxf", scratch / "dangling");
    const mode_t mask = umask(027);
    ASSERT_TRUE(writeFileAtomically(scratch / "dangling", "x", true, error)) << error.message;
    umask(mask);
    EXPECT_EQ(modeOf(scratch / "made.dxf"), 0640u);
    EXPECT_TRUE(fs::is_symlink(scratch / "dangling"));
}

TEST(AtomicFile, RefusesWhatMustStay) {
    const Folder scratch;
    Error error;
    scratch.write("fixed.dxf", "kept");
    chmod((scratch / "fixed.dxf").c_str(), 0444);
    EXPECT_FALSE(writeFileAtomically(scratch / "fixed.dxf", "new", true, error));
    EXPECT_EQ(error.message, (scratch / "fixed.dxf").string() + ": is read-only");
    EXPECT_FALSE(writeFileAtomically(scratch.path(), "new", true, error));
    EXPECT_NE(error.message.find(": is a folder"), std::string::npos);
    EXPECT_FALSE(writeFileAtomically("/dev/null", "new", true, error));
    EXPECT_FALSE(writeFileAtomically(scratch / "none\n/file", "new", true, error));
    EXPECT_NE(error.message.find("none?/file: No such file"), std::string::npos) << error.message;
    fs::create_symlink("loop", scratch / "loop");
    EXPECT_FALSE(writeFileAtomically(scratch / "loop", "new", true, error));
    EXPECT_EQ(scratch.read("fixed.dxf"), "kept");

    // A backup that cannot be put in place stops the save.
    scratch.write("plan.dxf", "old");
    fs::create_directory(scratch / "plan.dxf.bak");
    EXPECT_FALSE(writeFileAtomically(scratch / "plan.dxf", "new", true, error));
    EXPECT_NE(error.message.find("plan.dxf.bak: "), std::string::npos) << error.message;
    EXPECT_EQ(scratch.read("plan.dxf"), "old");

    // Given up half way.
    {
        AtomicFile file;
        ASSERT_TRUE(file.begin(scratch / "plan.dxf", error));
        file.write("half");
    }
    EXPECT_EQ(scratch.read("plan.dxf"), "old");
    EXPECT_EQ(scratch.names(), (Names{"fixed.dxf", "loop", "plan.dxf", "plan.dxf.bak"}));
}

TEST(AtomicFile, LeavesEverythingWhenTheDiskTakesNoMore) {
    const Folder scratch;
    scratch.write("plan.dxf", "old");
    const std::string big(3'000'000, 'x');
    // At once, and by pieces that are gathered until the end.
    for (const std::size_t piece : {big.size(), std::size_t{1000}}) {
        Error error;
        AtomicFile file;
        ASSERT_TRUE(file.begin(scratch / "plan.dxf", error));
        const FileSizeLimit limit(1'000'000);
        for (std::size_t at = 0; at < big.size(); at += piece)
            file.write(std::string_view(big).substr(at, piece));
        EXPECT_FALSE(file.commit(true, error));
        EXPECT_EQ(error.message, (scratch / "plan.dxf").string() + ": File too large");
        EXPECT_EQ(scratch.read("plan.dxf"), "old");
        EXPECT_EQ(scratch.names(), Names{"plan.dxf"});
    }
}

TEST(AtomicFile, NobodySeesHalfAFile) {
    const Folder scratch;
    const std::string one(300'000, '1');
    const std::string two(500'000, '2');
    scratch.write("plan.dxf", one);
    std::atomic<bool> stop{false};
    int looks = 0;
    int halves = 0;
    std::thread reader([&] {
        while (!stop) {
            std::string seen;
            Error error;
            if (!readFile(scratch / "plan.dxf", seen, error) || (seen != one && seen != two)) ++halves;
            ++looks;
        }
    });
    for (int i = 0; i < 40; ++i) {
        Error error;
        EXPECT_TRUE(writeFileAtomically(scratch / "plan.dxf", i % 2 ? one : two, true, error)) << error.message;
    }
    stop = true;
    reader.join();
    EXPECT_GT(looks, 0);
    EXPECT_EQ(halves, 0);
}

TEST(MappedFile, StaysWhenItsNameIsGivenToAnotherFile) {
    const Folder scratch;
    Error error;
    scratch.write("plan.dxf", "  0\nSECTION\n");
    scratch.write("empty.dxf", "");
    const auto mapped = MappedFile::open(scratch / "plan.dxf", error);
    ASSERT_TRUE(mapped);
    EXPECT_TRUE(mapped->isSameFile(scratch.path() / "." / "plan.dxf"));
    AtomicFile file;
    ASSERT_TRUE(file.begin(scratch / "plan.dxf", error));
    file.write(mapped->bytes());
    file.write("more");
    ASSERT_TRUE(file.commit(false, error));
    EXPECT_EQ(mapped->bytes(), "  0\nSECTION\n");
    EXPECT_FALSE(mapped->isSameFile(scratch / "plan.dxf"));
    EXPECT_EQ(scratch.read("plan.dxf"), "  0\nSECTION\nmore");

    EXPECT_TRUE(mapped->isUnchanged(error)) << "replaced is not changed: " << error.message;

    const auto empty = MappedFile::open(scratch / "empty.dxf", error);
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->bytes().empty());
    for (const fs::path& refused : {scratch.path(), fs::path("/dev/zero"), scratch / "none"}) {
        EXPECT_FALSE(MappedFile::open(refused, error)) << refused;
        EXPECT_EQ(error.message.find(refused.string() + ": "), 0u) << error.message;
    }
}
