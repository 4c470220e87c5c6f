// What is written at the end of a run, and the commands that open, save and close drawings.
#include <gtest/gtest.h>

#include "program.h"

namespace {

using Arguments = std::vector<std::string>;

constexpr const char* kThaw = "UnFrozenAllLayer";

}  // namespace

TEST(Files, WritesInPlaceAndKeepsThePrevious) {
    const Workplace place;
    for (const std::string name : {"building.dxf", "building-r12.dxf"}) {
        const std::string before = fileBytes(place.example(name));
        // Nothing changed: not rewritten.
        const auto time = std::filesystem::last_write_time(place.path(name));
        EXPECT_EQ(place.run({"--in-place", "-e", "REGEN", name}).code, 0);
        EXPECT_EQ(std::filesystem::last_write_time(place.path(name)), time);
        EXPECT_FALSE(place.has(name + ".bak"));

        const Outcome outcome = place.run({"--in-place", "-e", kThaw, name});
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        EXPECT_EQ(place.read(name + ".bak"), before);
        const std::vector<std::string> changes = changedLines(before, place.read(name));
        // Seven frozen layers, one of them locked as well.
        EXPECT_EQ(changes, (std::vector<std::string>{"1 > 0", "1 > 0", "1 > 0", "1 > 0", "1 > 0", "1 > 0", "5 > 4"}));
    }
}

TEST(Files, IsSavedOverItselfAgainAndAgainInOneSession) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome outcome =
        place.run({"--backup", "2", "building.dxf"},
                  "UnFrozenAllLayer\nQSAVE\n-LAYER\nN\nsecond\n\nQSAVE\n-LAYER\nN\nthird\n\nQSAVE\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error << outcome.out;
    const auto has = [&](const char* name, const char* layer) {
        return place.read(name).find(std::string("\n") + layer + "\r\n") != std::string::npos;
    };
    EXPECT_TRUE(has("building.dxf", "third"));
    EXPECT_TRUE(has("building.dxf.bak", "second"));
    EXPECT_FALSE(has("building.dxf.bak", "third"));
    EXPECT_FALSE(has("building.dxf.bak2", "second"));
    EXPECT_NE(place.read("building.dxf.bak2"),
              fileBytes(std::filesystem::path(QRS_SOURCE_DIR) / "examples/building.dxf"));
    EXPECT_FALSE(place.has("building.dxf.bak3"));
}

TEST(Files, WritesToAnotherFile) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    place.write("copy.dxf", "old");
    EXPECT_EQ(place.run({"-o", "copy.dxf", "building.dxf"}).code, 0);
    EXPECT_EQ(place.read("copy.dxf"), before);
    EXPECT_EQ(place.read("copy.dxf.bak"), "old");
    EXPECT_EQ(place.run({"-o", "thawed.dxf", "-e", kThaw, "building.dxf"}).code, 0);
    EXPECT_NE(place.read("thawed.dxf"), before);
    EXPECT_EQ(place.read("building.dxf"), before);

    // A failed command: nothing is written, unless the run keeps going.
    EXPECT_EQ(place.run({"-o", "none.dxf", "-e", kThaw, "-e", "Nonsense", "building.dxf"}).code, 1);
    EXPECT_FALSE(place.has("none.dxf"));
    EXPECT_EQ(place.run({"-o", "kept.dxf", "--keep-going", "-e", "Nonsense", "-e", kThaw, "building.dxf"}).code, 1);
    EXPECT_EQ(place.read("kept.dxf"), place.read("thawed.dxf"));

#if !defined(_WIN32)
    // The other form of a path is as good.
    std::filesystem::create_directory(place.path("out"));
    EXPECT_EQ(place.run({"-o", "out\\thawed.dxf", "-e", kThaw, ".\\Building.dxf"}).code, 0);
    EXPECT_EQ(place.read("out/thawed.dxf"), place.read("thawed.dxf"));
#endif

    const Outcome refused = place.run({"-o", "nowhere/x.dxf", "building.dxf"});
    EXPECT_EQ(refused.code, 4);
    EXPECT_NE(refused.error.find("nowhere"), std::string::npos) << refused.error;
}

TEST(Files, OpensSavesAndCloses) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    place.example("building-r12.dxf");
    std::filesystem::create_directory(place.path("out"));
    const Outcome outcome = place.run({"building.dxf"},
                                      "UnFrozenAllLayer\nSAVEAS\nout/first\nQSAVE\n"
                                      "OPEN\nbuilding-r12.dxf\nUnFrozenAllLayer\nQSAVE\nCLOSE\n"
                                      "NEW\n-LAYER\nN\nfresh\n\nQSAVE\nout/fresh.dxf\n"
                                      "QUIT\nNoSuchCommand\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error << outcome.out;
    EXPECT_EQ(place.read("building.dxf"), before);
    EXPECT_EQ(changedLines(before, place.read("out/first.dxf")).size(), 7u);
    EXPECT_TRUE(place.has("building-r12.dxf.bak"));
    // The new drawing was saved and reads again.
    const Outcome again = place.run({"-e", "-LAYER", "-e", "?", "-e", "fr*", "out/fresh.dxf"});
    EXPECT_EQ(again.code, 0) << again.error;
    EXPECT_NE(again.out.find("\"fresh\"     on"), std::string::npos) << again.out;

    // What --in-place is asked to write must still be there.
    for (const Arguments& left :
         {Arguments{"-e", "CLOSE"}, Arguments{"-e", "CLOSE", "-e", "OPEN", "-e", "out/first"}}) {
        Arguments arguments = {"--in-place", "building.dxf", "-e", kThaw};
        arguments.insert(arguments.end(), left.begin(), left.end());
        const Outcome outcomeOfLeaving = place.run(arguments);
        EXPECT_EQ(outcomeOfLeaving.code, 4) << outcomeOfLeaving.error;
    }
    EXPECT_EQ(place.read("building.dxf"), before);
}

TEST(Files, LoadsAndUnloadsPlugins) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome outcome =
        place.run({"building.dxf"}, "ARX\n?\nARX\nUnload\nqrs_pipeSystem\nARX\n?\nUnFrozenAllLayer\n");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.out.find("qrs_pipeSystem successfully unloaded."), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("No plug-ins are loaded."), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.error.find("UnFrozenAllLayer"), std::string::npos) << outcome.error;
}
