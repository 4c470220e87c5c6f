// Scripts: how they are read, what a transcript looks like, and what stops them.
#include <gtest/gtest.h>

#include <algorithm>

#include "program.h"

namespace {

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

enum class ByteOrder { Little, Big };

std::string utf16Of(const std::string& utf8, ByteOrder order) {
    std::string bytes;
    for (const char16_t unit : std::filesystem::u8path(utf8).u16string()) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        bytes += order == ByteOrder::Little ? low : high;
        bytes += order == ByteOrder::Little ? high : low;
    }
    return bytes;
}

}  // namespace

TEST(Script, ShowsEverythingAsTheExampleSays) {
    const Workplace place;
    place.example("building.dxf");
    const std::filesystem::path scripts = std::filesystem::path(QRS_SOURCE_DIR) / "examples" / "scripts";
    const Outcome outcome =
        place.run({"-s", (scripts / "show-everything.scr").string(), "-o", "shown.dxf", "building.dxf"});
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.out, fileBytes(scripts / "show-everything.txt"));

    // Only flags, colours and visibility of what was hidden have changed.
    std::vector<std::string> changes = changedLines(place.read("building.dxf"), place.read("shown.dxf"));
    std::size_t expected = 0;
    for (const std::string change : {"1 > 0", "4 > 0", "5 > 0", "-7 > 7", "-5 > 5", "-1 > 1"}) {
        const auto behind = std::remove(changes.begin(), changes.end(), change);
        expected += static_cast<std::size_t>(changes.end() - behind);
        changes.erase(behind, changes.end());
    }
    EXPECT_TRUE(changes.empty()) << changes.front();
    EXPECT_GE(expected, 15u);
}

TEST(Script, ReadsEveryFormOfTextFile) {
    const Workplace place;
    place.example("building.dxf");
    const std::string name = "图层";
    const std::string gbk = "\xCD\xBC\xB2\xE3";
    const auto script = [](const std::string& layer, const std::string& end) {
        return "; make it" + end + "-LAYER" + end + "N" + end + layer + end + "?" + end + layer + end;
    };
    const std::string utf16 = utf16Of(script(name, "\r\n"), ByteOrder::Little);
    const std::string forms[] = {script(name, "\n"),
                                 script(name, "\r\n"),
                                 "\xEF\xBB\xBF" + script(name, "\n"),
                                 script(gbk, "\r\n"),
                                 script(name, "\n").substr(0, script(name, "\n").size() - 1),
                                 utf16,
                                 "\xFF\xFE" + utf16,
                                 utf16Of(script(name, "\n"), ByteOrder::Big),
                                 "\xFE\xFF" + utf16Of(script(name, "\n"), ByteOrder::Big)};
    for (const std::string& form : forms) {
        place.write("make.scr", form);
        const Outcome outcome = place.run({"-s", "make.scr", "building.dxf"});
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        EXPECT_NE(outcome.out.find("\"" + name + "\"      on"), std::string::npos) << outcome.out;
    }
    for (const std::string& noText : {std::string("REGEN\0\0\0\n", 9), utf16.substr(1), "\xFF\xFE" + utf16 + "R"}) {
        place.write("bad.scr", noText);
        const Outcome outcome = place.run({"-s", "bad.scr", "building.dxf"});
        EXPECT_EQ(outcome.code, 3) << outcome.out;
        EXPECT_NE(outcome.error.find("bad.scr: not a script"), std::string::npos) << outcome.error;
        EXPECT_EQ(outcome.out, "");
    }
    // Standard input is a script like any other, with "-s -" and without.
    EXPECT_EQ(place.run({"-s", "-", "building.dxf"}, forms[3]).out, place.run({"building.dxf"}, forms[1]).out);
}

TEST(Script, RunsLinesBeforeTheScript) {
    const Workplace place;
    place.write("one.scr", "SETVAR\nUSERI1\n3\nSETVAR\nUSERI1\n");
    const Outcome outcome = place.run({"-s", "one.scr", "-e", "SETVAR", "-e", "USERI1", "-e", "2"});
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    const std::size_t first = outcome.out.find("<0>: 2"), second = outcome.out.find("<2>: 3");
    EXPECT_LT(first, second) << outcome.out;
    EXPECT_NE(second, std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("<3>: "), std::string::npos) << outcome.out;
}

TEST(Script, StopsAtAFailureUnlessItKeepsGoing) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    place.write("bad.scr", "; comment\nUnFrozenAllLayer\nNoSuchCommand\nREGEN\n");
    const Outcome stopped = place.run({"-s", "bad.scr", "--in-place", "building.dxf"});
    EXPECT_EQ(stopped.code, 1);
    EXPECT_NE(stopped.error.find("bad.scr:3: "), std::string::npos) << stopped.error;
    EXPECT_NE(stopped.error.find("\"NoSuchCommand\""), std::string::npos) << stopped.error;
    EXPECT_EQ(countOf(stopped.out, "REGEN\n"), 0u) << stopped.out;
    EXPECT_EQ(place.read("building.dxf"), building);

    const Outcome wentOn = place.run({"-s", "bad.scr", "--keep-going", "--in-place", "building.dxf"});
    EXPECT_EQ(wentOn.code, 1);
    EXPECT_EQ(countOf(wentOn.out, "Regenerating model."), 2u) << wentOn.out;
    EXPECT_NE(place.read("building.dxf"), building);
    EXPECT_EQ(place.read("building.dxf.bak"), building);

    const Outcome opened = place.run({"-e", "OPEN", "-e", "none.dxf", "-e", "REGEN", "building.dxf"});
    EXPECT_EQ(opened.code, 1);
    EXPECT_NE(opened.error.find("--execute 2: "), std::string::npos) << opened.error;
}

TEST(Script, CancelsWhatIsLeftUnanswered) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    // The prompt of UnLockSelLayer is not answered: nothing is unlocked.
    const Outcome outcome = place.run({"-e", "UnLockSelLayer", "--in-place", "building.dxf"});
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(place.read("building.dxf"), building);
    // Esc in a script cancels, too, and the script goes on.
    const Outcome cancelled = place.run({"building.dxf"}, "-LAYER\nOFF\n^C\nREGEN\n");
    EXPECT_EQ(cancelled.code, 0) << cancelled.error;
    EXPECT_EQ(countOf(cancelled.out, "*Cancel*"), 1u) << cancelled.out;
    // At the command prompt there is nothing to cancel.
    EXPECT_EQ(place.run({"building.dxf"}, "^C\nREGEN\n").out, "Command: ^C\nCommand: REGEN\nRegenerating model.\n");
    EXPECT_EQ(countOf(cancelled.out, "Regenerating model."), 1u) << cancelled.out;
}
