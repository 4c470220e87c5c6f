// Several drawings in one call: order, results, the report; refusals; DWG drawings through a converter; kept states.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "program.h"

namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

std::vector<Json> linesOf(const std::string& report) {
    std::vector<Json> lines;
    std::istringstream stream(report);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// How the plug-in's command ends a run.
#if defined(_WIN32)
const std::string kBrokenOff = "ended with exit code 99";
#else
const std::string kBrokenOff = "was ended by signal 9";
#endif

// A DWG drawing as the converter of these tests has it: the version, and then the text of a DXF drawing.
const std::string kDwgMark("AC1032\0", 7);
std::string converter(const std::string& fault = {}) {
    return "'" QRS_CONVERTER "' {in} {out} {from} " + fault;
}

}  // namespace

TEST(Batch, RunsEachDrawingOnItsOwn) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    place.example("site.dxf");
    place.write("damaged.dxf", building.substr(0, building.size() / 2));
    fs::create_directory(place.path("below"));
    place.write("below/building.dxf", building);
    place.write("list.txt",
                "\xEF\xBB\xBF"
                "below/building.dxf\r\n\r\nsite.dxf\r\n");
    place.write("thaw.scr", "UnFrozenAllLayer\nSETVAR\nUSERI1\n");
    place.write("report.jsonl", "{\"drawing\":\"earlier\"}\n");
    const std::vector<std::string> arguments = {"-s",   "thaw.scr", "--list",       "list.txt",     "-o",
                                                "out/", "--report", "report.jsonl", "building.dxf", "damaged.dxf"};
    const Outcome stopped = place.run(arguments);
    EXPECT_EQ(stopped.code, 3) << stopped.error;
    EXPECT_TRUE(has(stopped.error, "\nqrsconsole: 4 drawings: 1 done, 1 failed, 2 not run; 1 changed, 1 written\n"))
        << stopped.error;

    std::vector<std::string> goesOn = arguments;
    goesOn.push_back("--keep-going=drawings");
    const Outcome outcome = place.run(goesOn);
    EXPECT_EQ(outcome.code, 3) << outcome.error;
    EXPECT_TRUE(has(outcome.error,
                    "qrsconsole: building.dxf: done, 1 command refused or cancelled, written to out/building.dxf\n"))
        << outcome.error;
    EXPECT_TRUE(has(outcome.error, "qrsconsole: damaged.dxf: failed (exit code 3)\n")) << outcome.error;
    EXPECT_TRUE(has(outcome.error, "qrsconsole: 4 drawings: 3 done, 1 failed; 2 changed, 3 written\n"))
        << outcome.error;
    EXPECT_FALSE(has(outcome.error, "\r")) << "a bar without a terminal";
    EXPECT_EQ(place.read("out/below/building.dxf"), place.read("out/building.dxf"));
    EXPECT_NE(place.read("out/building.dxf"), building);
    EXPECT_EQ(place.read("building.dxf"), building);
    const std::vector<Json> lines = linesOf(place.read("report.jsonl"));
    ASSERT_EQ(lines.size(), 7u);
    const Json &first = lines[3], &damaged = lines[4];
    EXPECT_EQ(first["drawing"], "building.dxf");
    EXPECT_EQ(first["exitCode"], 0);
    EXPECT_EQ(first["changed"], true);
    EXPECT_EQ(first["commands"], Json::parse(R"([{"name":"UnFrozenAllLayer","result":"done"},
                                                 {"name":"SETVAR","result":"cancelled"}])"));
    EXPECT_EQ(damaged["exitCode"], 3);
    EXPECT_TRUE(has(damaged["messages"][0], "damaged.dxf:")) << damaged;
    EXPECT_EQ(lines[5]["drawing"], "below/building.dxf");

    // A run that breaks down takes none of the others with it.
    const Outcome killed =
        place.run({"-p", QRS_PLUGIN_BESIDE, "--keep-going", "-e", "ENDATONCE", "building.dxf", "site.dxf"});
    EXPECT_EQ(killed.code, 5) << killed.error;
    EXPECT_TRUE(has(killed.error, "site.dxf: the run " + kBrokenOff + "\n")) << killed.error;

    const Outcome twice = place.run({"-e", "REGEN", "-o", "new/", "building.dxf", "below/building.dxf"});
    EXPECT_EQ(twice.code, 2);
    EXPECT_TRUE(has(twice.error, "would both be written")) << twice.error;
    EXPECT_FALSE(place.has("new"));
}

TEST(Batch, RefusalsStandInTheLogAndFailWhenStrict) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    const struct {
        std::string script, told;
    } cases[] = {
        {"-LAYER\nFreeze\nnowhere\n\n", "job.scr:7: Cannot find layer \"nowhere\"."},
        {"LockSelLayer\nnonsense\n\n", "*Invalid selection*"},
        {"hbtc\n(handent \"1\")\n\n", "job.scr:6: Nothing is found: (handent \"1\")"},
        {"LockSelLayer\n(ssget \"X\"\n  '((8 . \"A\"))\n\n", "job.scr:6: *Invalid expression*: a closing"},
        {"yshf\n", "job.scr:5: 没有找到相关信息，图层颜色恢复失败！"},
        {"UnLockSelLayer\n", "job.scr:5: UNLOCKSELLAYER: not answered: 请选择要解锁"},
        {"UnLockSelLayer\n^C\n", "job.scr:6: UNLOCKSELLAYER: cancelled: 请选择要解锁"},
        {"drsz\n2\n.\n", "job.scr:7: 没有导入任何设置文件！"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.script);
        place.write("job.scr", "-LAYER\nMake\nnew\n\n" + one.script);
        const Outcome told = place.run({"-s", "job.scr", "-o", "told.dxf", "building.dxf"});
        EXPECT_EQ(told.code, 0);
        EXPECT_TRUE(has(told.error, one.told)) << told.error;
        const Outcome strict = place.run({"--strict", "-s", "job.scr", "--in-place", "building.dxf"});
        EXPECT_EQ(strict.code, 1);
        EXPECT_TRUE(has(strict.error, one.told)) << strict.error;
        EXPECT_EQ(place.read("building.dxf"), building);
    }
    // What is so already is no refusal, nor is a selection of nothing.
    place.write("job.scr",
                "-LAYER\nFreeze\nno*\n\nLockSelLayer\nALL\n\nLockSelLayer\nALL\n(ssget \"X\" '((8 . \"none\")))\n\n");
    const Outcome already = place.run({"--strict", "-s", "job.scr", "building.dxf"});
    EXPECT_EQ(already.code, 0) << already.error;
}

TEST(Batch, KeepsAsManyEarlierStatesAsAsked) {
    const Workplace place;
    place.example("building.dxf");
    std::vector<std::string> states = {place.read("building.dxf")};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(place
                      .run({"--backup", "3", "--in-place", "-e", "-LAYER", "-e", "N", "-e", "new" + std::to_string(i),
                            "-e", "", "building.dxf"})
                      .code,
                  0);
        states.push_back(place.read("building.dxf"));
    }
    EXPECT_EQ(place.read("building.dxf.bak"), states[3]);
    EXPECT_EQ(place.read("building.dxf.bak2"), states[2]);
    EXPECT_EQ(place.read("building.dxf.bak3"), states[1]);
    EXPECT_FALSE(place.has("building.dxf.bak4"));
}

TEST(Batch, SumsUpWhatIsDamaged) {
    const Workplace place;
    std::string building = fileBytes(place.example("building.dxf"));
    const std::size_t at = building.find(" 10\r\n", building.find("\nENTITIES")) + 5;
    building.replace(at, building.find('\r', at) - at, "12,5");
    const std::size_t version = building.find("AC10", building.find("$ACADVER"));
    building.replace(version, 6, "AC1099");
    place.write("damaged.dxf", building);
    const Outcome summed = place.run({"-e", "REGEN", "damaged.dxf"});
    EXPECT_TRUE(has(summed.error, "damaged.dxf: 2 errors: 1 unknown version (line ")) << summed.error;
    EXPECT_EQ(std::count(summed.error.begin(), summed.error.end(), '\n'), 1);
    for (const Outcome& all :
         {place.run({"--warnings", "-e", "REGEN", "damaged.dxf"}), place.run({"--info", "damaged.dxf"})}) {
        EXPECT_TRUE(has(all.error + all.out, ": the version AC1099 is not known")) << all.error;
        EXPECT_TRUE(has(all.error + all.out, ": group code 10 has the value 12,5, which")) << all.error;
    }
}

TEST(Batch, WorksOnDwgDrawingsThroughAConverter) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    const std::string dwg = kDwgMark + building;
    place.write("a house.dwg", dwg);
    const std::vector<std::string> thaw = {"--in-place", "-e", "UnFrozenAllLayer", "a house.dwg"};
    const auto run = [&](const std::string& command, std::vector<std::string> more) {
        more.insert(more.begin(), {"--converter", command});
        return place.run(more);
    };
    const Outcome none = place.run(thaw);
    EXPECT_EQ(none.code, 3);
    EXPECT_TRUE(has(none.error, "a house.dwg: a DWG drawing of 2018; save it as DXF, or name a converter"))
        << none.error;

    // Whatever a converter does, a drawing that it does not bring back whole stays as it was.
    const struct {
        std::string command;
        int code;
        std::string told;
    } faulty[] = {
        {converter("refuse"), 3, "the converter ended with exit code 3 (not today)"},
        {converter("nothing"), 3, "the converter wrote no drawing (done)"},
        {"no-such-program {in} {out}", 3, "does not start"},
        {converter("nonsense"), 3, ""},
        {converter("unlicensed"), 4, "ended with exit code 1 (no license)"},
        {converter("vanish"), 4, "wrote no drawing"},
        {converter("older"), 4, "a DWG drawing of 2000 instead of one of 2018"},
#if !defined(_WIN32)
        {"sh -c 'echo gone; kill -9 $$' {in} {out}", 3, "was ended by signal 9 (gone)"},
#endif
    };
    for (const auto& one : faulty) {
        SCOPED_TRACE(one.command);
        const Outcome outcome = run(one.command, thaw);
        EXPECT_EQ(outcome.code, one.code) << outcome.error;
        EXPECT_TRUE(has(outcome.error, one.told)) << outcome.error;
        EXPECT_EQ(place.read("a house.dwg"), dwg);
        EXPECT_FALSE(place.has("a house.dwg.bak"));
    }
    std::vector<std::string> inTime = thaw;
    inTime.insert(inTime.begin(), {"--timeout", "0.5"});
    EXPECT_EQ(run(converter("hang"), inTime).code, 1);
    EXPECT_EQ(place.read("a house.dwg"), dwg);

    // An unchanged drawing is not converted back; a saving command means the drawing.
    EXPECT_EQ(run(converter("unlicensed"), {"--in-place", "-e", "REGEN", "a house.dwg"}).code, 0);
    EXPECT_EQ(run(converter(), {"-e", "UnFrozenAllLayer", "-e", "QSAVE", "a house.dwg"}).code, 0);
    const std::string thawed = place.read("a house.dwg");
    EXPECT_EQ(place.read("a house.dwg.bak"), dwg);
    EXPECT_EQ(thawed.substr(0, 7), kDwgMark);
    EXPECT_EQ(run(converter(), {"-o", "house.dxf", "-e", "REGEN", "a house.dwg"}).code, 0);
    EXPECT_EQ(place.read("house.dxf"), thawed.substr(7));
    // The settings name it as well.
    place.write("settings.ini", "[Software\\QRS\\PWX\\Console]\nConverter=s:" + converter() + "\n");
    place.write("a house.dwg", dwg);
    const Outcome set =
        place.run({"--settings", "settings.ini", "--in-place", "-e", "UnFrozenAllLayer", "a house.dwg"});
    EXPECT_EQ(set.code, 0) << set.error;
    EXPECT_EQ(place.read("a house.dwg"), thawed);
}
