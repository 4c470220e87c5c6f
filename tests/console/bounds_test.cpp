// Files made to hurt cost no more than the others: five seconds and half a gigabyte for a megabyte. The system ends
// what takes more, which shows as no exit code.
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "hostile.h"
#include "program.h"

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

#if defined(QRS_SANITIZE)
constexpr int kSeconds = 20;
#else
constexpr int kSeconds = 5;
#endif
constexpr int kMegabytes = 512;

class Bounds : public testing::Test {
  protected:
    Bounds() { place.limit(kSeconds, kMegabytes); }

    // Ended by itself, with what is to be told on standard error and not much else.
    Outcome expectEnd(const HostileFile& file, const Arguments& arguments, const std::string& told) {
        Outcome outcome = place.run(arguments);
        EXPECT_TRUE(outcome.code >= 0 && outcome.code <= 4) << file.name << ": " << outcome.code << outcome.error;
        EXPECT_NE(outcome.error.find(told), std::string::npos) << file.name << ": " << outcome.error.substr(0, 2000);
        return outcome;
    }

    Workplace place;
};

// Looks at everything, changes everything, and takes some of it back.
const char* const kScript =
    "SetAllPipeLayOpen\nUnFrozenAllLayer\nSELECT\nC\n-10,-10\n100,100\n\nCHPROP\nC\n3\n\nU\n"
    "LIST\n(ssget \"X\" '((0 . \"*\")(8 . \"~A*\")))\n\nCloseSelLayer\n0.5,0.5\n\nU\nxxyh\nALL\n\ngxgd\n\n"
    "hbtc\n0.5,0.5\n0.5,0.5\n\nyshf\nEraseSelLayer\nALL\n\nU\n-LAYER\nF\n*\n\n";

}  // namespace

TEST_F(Bounds, HoldForDrawings) {
    place.write("all.scr", kScript);
    place.write("plain.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    // Each drawing is looked at in one of these ways, and plotted in one.
    const Arguments looks[] = {{"--compare", "plain.dxf", "hostile.dxf"},
                               {"--check", "--references", "hostile.dxf"},
                               {"--pipes", "hostile.dxf"},
                               {"--info", "hostile.dxf"},
                               {"--repair", "auto", "-o", "out.dxf", "hostile.dxf"}};
    const Arguments plots[] = {{"--plot", "out.png", "hostile.dxf"},
                               {"--plot", "out.pdf", "hostile.dxf"},
                               {"--plot", "out.svg", "--layout", "Layout1", "hostile.dxf"},
                               {"--plot-compare", "plain.dxf", "hostile.dxf", "-o", "out.png"}};
    std::size_t number = 0;
    for (const HostileFile& file : hostileDrawings()) {
        place.write("hostile.dxf", file.bytes);
        expectEnd(file, {"--keep-going", "-s", "all.scr", "-o", "out.dxf", "hostile.dxf"}, file.told);
        expectEnd(file, looks[number % std::size(looks)], "");
        expectEnd(file, plots[number++ % std::size(plots)], "");
    }
}

TEST_F(Bounds, HoldForStandards) {
    fs::copy(fs::path(QRS_SOURCE_DIR) / "data", place.path("system"), fs::copy_options::recursive);
    place.example("pipes.dxf");
    for (const HostileFile& file : hostileStandards()) {
        place.write("system/pwx.qdsl", file.bytes);
        expectEnd(file,
                  {"--system", "system", "-e", "gxgd", "-e", "", "-e", "OpenLayer", "-e", "", "-e", "gxsz", "-e", "",
                   "pipes.dxf"},
                  file.told);
        expectEnd(file, {"--system", "system", "--check", "pipes.dxf"}, "");
    }
}

TEST_F(Bounds, HoldForTables) {
    fs::copy(fs::path(QRS_SOURCE_DIR) / "data", place.path("system"), fs::copy_options::recursive);
    place.example("pipes.dxf");
    // Sizes and prefixes of materials, and what can be chosen of linetypes and layers.
    place.write("tables.scr",
                "ASKPIPE\n(handent \"106\")\ngxsz\n系统图层...\n新建...\nX\nOK\n用户图层...\n"
                "Cancel\nCancel\nCancel\nCancel\n");
    const Arguments asked = {"--system", "system", "-p", QRS_EXAMPLE_SIBLING, "-s", "tables.scr", "pipes.dxf"};
    for (const char* table : {"linetype", "pipe", "DataStore", "userlayer"}) {
        const std::string name = std::string("system/") + table, shipped = place.read(name + ".dbf");
        for (const HostileFile& file : hostileTables()) {
            place.write(name + ".dbf", file.bytes);
            if (!file.memo.empty()) place.write(name + ".dbt", std::string(512, ' ') + file.memo);
            expectEnd(file, asked, file.told);
            if (table == std::string("linetype"))
                expectEnd(file, {"--system", "system", "--check", "pipes.dxf"}, file.told);
        }
        place.write(name + ".dbf", shipped);
    }
}

// Such files are also taken for severities and accepted findings.
TEST_F(Bounds, HoldForMappings) {
    place.example("pipes.dxf");
    for (const HostileFile& file : hostileMappings()) {
        place.write("hostile.csv", file.bytes);
        expectEnd(file, {"--repair", "hostile.csv", "--dry-run", "pipes.dxf"}, file.told);
        expectEnd(file, {"--check", "--rules", "hostile.csv", "pipes.dxf"}, "");
        place.write("pipes.dxf.accepted", file.bytes);
        expectEnd(file, {"--check", "pipes.dxf"}, "");
        fs::remove(place.path("pipes.dxf.accepted"));
    }
}

TEST_F(Bounds, HoldForSettings) {
    fs::create_directory(place.path("import"));
    for (const HostileFile& file : hostileSettings()) {
        place.write("settings.ini", file.bytes);
        const Outcome outcome = expectEnd(file, {"--settings", "settings.ini", "-e", "UnFrozenAllLayer"}, file.told);
        EXPECT_EQ(outcome.code, *file.told == '\0' ? 0 : 3) << file.name << ": " << outcome.error;
        place.write("import/setting.ini", file.bytes);
        expectEnd(file, {"--settings", "other.ini", "-e", "drsz", "-e", "2", "-e", "import"}, "");
    }
}

TEST_F(Bounds, HoldForScripts) {
    place.example("building.dxf");
    for (const HostileFile& file : hostileScripts()) {
        place.write("hostile.scr", file.bytes);
        expectEnd(file, {"--keep-going", "-s", "hostile.scr", "building.dxf"}, file.told);
    }
}
