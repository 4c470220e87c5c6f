// Every call by which a drawing is written goes wrong in turn: the old drawing or the new one is there, whole.
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "program.h"

namespace fs = std::filesystem;

namespace {

// So many entities that the file is written in several pieces; and so many that two threads read it.
constexpr int kMany = 15000;
constexpr int kManyForTwo = 45000;

std::string bigDrawing(int lines) {
    std::string text =
        "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\nPIPE\n70\n1\n62\n1\n6\nCONTINUOUS\n"
        "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n";
    for (int i = 0; i < lines; ++i)
        text += "0\nLINE\n8\nPIPE\n10\n" + std::to_string(i) + ".0\n20\n1.0\n11\n2.0\n21\n3.0\n";
    return text + "0\nENDSEC\n0\nEOF\n";
}

// The environment of a run with a fault, of mappings in that file alone.
std::vector<std::string> with(const Workplace& place, const std::string& fault, const std::string& file) {
    return {"LD_PRELOAD=" QRS_FAULT_LIBRARY, "QRS_FAULT=" + fault, "QRS_FAULT_FILE=" + place.path(file).string(),
            "QRS_FAULT_MARK=" + place.path("struck").string(),
            // The sanitizers want to be first; the preloaded library has nothing of theirs.
            "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"};
}

class Faults : public testing::Test {
  protected:
    void SetUp() override { draw(kMany); }
    void draw(int lines) {
        before_ = bigDrawing(lines);
        after_ = before_;
        after_.replace(after_.find("70\n1\n62"), 4, "70\n0");
    }

    // One run with a fault. False when the program has made no such call any more.
    bool strike(const std::string& function, int number, const std::string& what) {
        const Workplace place;
        place.write("plan.dxf", before_);
        place.write("plan.dxf.bak", "older");
        place.write("plan.dxf.bak2", "oldest");
        outcome_ = place.run({"--backup", "2", "--in-place", "-e", "UnFrozenAllLayer", "plan.dxf"}, {},
                             with(place, function + " " + std::to_string(number) + " " + what, "plan.dxf"));
        const bool struck = place.has("struck");
        const std::string now = place.read("plan.dxf");
        EXPECT_TRUE(now == before_ || now == after_) << now.size() << " bytes";
        isNew_ = now == after_;
        backups_.clear();
        for (const char* name : {"plan.dxf.bak", "plan.dxf.bak2"})
            backups_.push_back(place.has(name) ? place.read(name) : "");
        EXPECT_TRUE(backups_[0] == before_ || !isNew_) << function << number;
        EXPECT_TRUE(backups_[1] == "older" || (!isNew_ && backups_[0] == "older")) << function << number;
        temporaries_ = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(place.path("")))
            temporaries_ += entry.path().filename().string().rfind(".qrs-", 0) == 0;
        return struck;
    }

    std::string before_;
    std::string after_;
    std::vector<std::string> backups_;  // the newest first
    Outcome outcome_;
    bool isNew_ = false;
    int temporaries_ = 0;
};

}  // namespace

TEST_F(Faults, EveryCallFailsInTurn) {
    // A full disk, one that is read-only or breaks, a folder of the network that is gone.
    const struct {
        const char* function;
        int reason;
        int code;
    } faults[] = {{"mmap", ESTALE, 3},  {"open", EROFS, 4},  {"open", ESTALE, 4},
                  {"write", ENOSPC, 4}, {"fsync", EIO, 4},   {"close", EDQUOT, 4},
                  {"fchmod", EPERM, 4}, {"link", ENOSPC, 4}, {"rename", ESTALE, 4}};
    int failed = 0;
    for (const auto& [function, reason, code] : faults) {
        for (int number = 1; number < 200 && strike(function, number, std::to_string(reason)); ++number) {
            const std::string call = std::string(function) + " " + std::to_string(number);
            // The run has told either that the drawing is as it was, or that it is the new one.
            EXPECT_EQ(outcome_.code, isNew_ ? 0 : code) << call << ": " << outcome_.error;
            if (!isNew_) {
                ++failed;
                EXPECT_EQ(backups_, (std::vector<std::string>{"older", "oldest"})) << call;
                EXPECT_NE(outcome_.error.find("plan.dxf"), std::string::npos) << call << ": " << outcome_.error;
            }
            EXPECT_EQ(temporaries_, 0) << call;
        }
        EXPECT_EQ(outcome_.code, 0) << function << ": without a fault the run is done";
        EXPECT_TRUE(isNew_) << function;
    }
    EXPECT_GE(failed, 9) << "several writes, a flush, three renames at least";
}

TEST_F(Faults, KilledAtEveryCall) {
    for (const char* function : {"open", "write", "fsync", "close", "link", "rename"})
        for (int number = 1; number < 200 && strike(function, number, "kill"); ++number)
            EXPECT_EQ(outcome_.code, 137) << function << number;
}

TEST_F(Faults, HalfAWriteIsGoneOnWith) {
    for (int number = 1; number < 200 && strike("write", number, "0"); ++number)
        EXPECT_TRUE(isNew_) << number << outcome_.error;
}

TEST_F(Faults, WithoutASecondThreadTheFirstDoesAll) {
    draw(kManyForTwo);
    int number = 1;
    for (; number < 50 && strike("thread", number, std::to_string(EAGAIN)); ++number) {
        EXPECT_TRUE(isNew_) << number;
        EXPECT_EQ(outcome_.code, 0) << number << ": " << outcome_.error;
    }
    EXPECT_GT(number, 2) << "one for signals and one that reads";
}

// Another program cuts a drawing short while it is mapped: that drawing has failed, and the others are done.
TEST_F(Faults, AFileThatIsCutEndsItsOwnWorkAlone) {
    for (const int lines : {kMany, kManyForTwo}) {
        SCOPED_TRACE(lines);
        draw(lines);
        const Workplace place;
        const auto write = [&] {
            for (const char* name : {"a.dxf", "b.dxf", "c.dxf"})
                place.write(name, before_);
        };
        const auto run = [&](const std::string& fault, std::vector<std::string> arguments) {
            write();
            return place.run(arguments, {}, with(place, fault, "b.dxf"));
        };
        const std::string cut = "b.dxf: was cut short by another program while it was read";
        const std::string unfreeze = "UnFrozenAllLayer";

        Outcome end =
            run("mmap 1 cut", {"--in-place", "--keep-going=drawings", "-e", unfreeze, "a.dxf", "b.dxf", "c.dxf"});
        EXPECT_EQ(end.code, 3);
        EXPECT_NE(end.error.find(cut), std::string::npos) << end.error;
        EXPECT_TRUE(place.read("a.dxf") == after_ && place.read("b.dxf").empty() && place.read("c.dxf") == after_);

        // In one process: the drawing that is not to be had any more leaves the others alone.
        end = run("mmap 1 cut", {"--in-place", "--keep-going", "-e", "OPEN", "-e", "b.dxf", "-e", unfreeze, "a.dxf"});
        EXPECT_EQ(end.code, 1);
        EXPECT_NE(end.error.find(cut), std::string::npos) << end.error;
        EXPECT_TRUE(place.read("a.dxf") == after_);
        end = run("mmap 1 cut", {"--info", "b.dxf"});
        EXPECT_EQ(end.code, 3);
        EXPECT_NE(end.error.find(cut), std::string::npos) << end.error;
        EXPECT_EQ(end.out, "");

        // Cut when the save begins, it has no copy that is whole.
        end = run("open 1 cut", {"-o", "new.dxf", "-e", unfreeze, "b.dxf"});
        EXPECT_EQ(end.code, 4);
        EXPECT_NE(end.error.find("b.dxf: was changed by another program"), std::string::npos) << end.error;
        EXPECT_FALSE(place.has("new.dxf"));

        // Written over then, it is nothing to be copied from, and what somebody else has written stays.
        for (const char* target : {"new.dxf", "b.dxf"}) {
            end = run("open 1 rewrite", {"-o", target, "-e", unfreeze, "b.dxf"});
            EXPECT_EQ(end.code, 4);
            EXPECT_NE(end.error.find("b.dxf: was changed by another program"), std::string::npos) << end.error;
            EXPECT_FALSE(place.has("new.dxf"));
            EXPECT_EQ(place.read("b.dxf"), std::string(before_.size(), '8'));
        }
    }
}

TEST_F(Faults, AFolderThatMayNotBeWrittenToKeepsItsFiles) {
    const Workplace place;
    fs::copy(fs::path(QRS_SOURCE_DIR) / "data", place.path("shut"));
    place.write("shut/plan.dxf", before_);
    const std::string standard = place.read("shut/pwx.qdsl");
    const auto count = [&] { return std::distance(fs::directory_iterator(place.path("shut")), {}); };
    const auto files = count();
    fs::permissions(place.path("shut"), fs::perms::owner_write, fs::perm_options::remove);
    std::vector<std::string> environment = with(place, "none 1 0", "shut/plan.dxf");
    environment.push_back("QRS_FAULT_USER=1");
    const std::pair<const char*, std::vector<std::string>> runs[] = {
        {"shut/plan.dxf: ", {"--in-place", "-e", "UnFrozenAllLayer", "shut/plan.dxf"}},
        {"shut/pwx.qdsl: ",
         {"--system", "shut", "-e", "gxsz", "-e", "系统属性...", "-e", "管线宽度=0.36", "-e", "OK", "-e", "OK"}},
        {"shut/pipe.dbf: ", {"-e", "dcsz", "-e", "导出到指定文件夹", "-e", "OK", "-e", "shut"}}};
    for (const auto& [told, words] : runs) {
        const Outcome end = place.run(words, {}, environment);
        EXPECT_EQ(end.code, 4) << told << end.error;
        EXPECT_NE(end.error.find(told), std::string::npos) << end.error;
    }
    fs::permissions(place.path("shut"), fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(place.read("shut/plan.dxf") == before_ && place.read("shut/pwx.qdsl") == standard);
    EXPECT_EQ(count(), files);
}
