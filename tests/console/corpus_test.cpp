// Drawings of other programs in all their forms: after commands only the tags differ that the commands are about.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "program.h"

namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

const fs::path kCorpus = fs::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dxf";
constexpr std::uintmax_t kLargest = 1'000'000;  // more than that only takes time
#if defined(_WIN32)
constexpr int kOf = 4;  // one drawing of so many: to start a program takes long under Wine
#else
constexpr int kOf = 1;
#endif

Json report(const Workplace& place, const std::vector<std::string>& arguments) {
    const Outcome outcome = place.run(arguments);
    return outcome.code > 1 ? Json() : Json::parse(outcome.out);
}

// Binary and old drawings, those of Chinese programs, and those that open with warnings.
bool isUnusual(const Json& info) {
    return info["form"] == "binary" || info["version"] < "AC1015" || info["codePage"] == 936 ||
           !info["warnings"].empty();
}

// A layer whose name means nothing else at the prompt.
std::string layerToTurnOff(const Json& info) {
    std::string name;
    for (const Json& layer : info["layers"]) {
        const std::string one = layer["name"];
        if (layer["defined"] == true && layer["off"] == false &&
            one.find_first_of(",*?#@.~[]`- ") == std::string::npos) {
            name = one;
        }
    }
    return name;
}

// What creating a layer and turning another off may change: the table gets a record more (with the table and its
// section where there was none), the other layer its colour, the header the next handle.
bool isExpected(const Json& difference, const std::string& other) {
    const std::string object = difference["object"];
    const auto begins = [&](const std::string& text) { return object.compare(0, text.size(), text) == 0; };
    const auto names = [&](const std::string& name) { return object.find("\"" + name + "\"") != std::string::npos; };
    if (difference["difference"] == "onlyInSecond")
        return (begins("LAYER ") && names("新图层")) || (begins("TABLE ") && names("LAYER")) ||
               object == "SECTION \"TABLES\"";
    const int code = difference["code"];
    return (begins("TABLE ") && names("LAYER") && code == 70) || (begins("$HANDSEED") && code == 5) ||
           (begins("LAYER ") && names(other) && code == 62);
}

}  // namespace

TEST(Corpus, ANewLayerAndOneTurnedOffChangeNothingElse) {
    if (!fs::exists(kCorpus)) GTEST_SKIP() << "no corpus beside the sources";
    const Workplace place;
    place.write("thaw.scr", "UnFrozenAllLayer\nSetAllPipeLayOpen\n");
    int number = 0, met = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kCorpus)) {
        if (!entry.is_regular_file() || entry.file_size() > kLargest || met++ % kOf != 0) continue;
        SCOPED_TRACE(entry.path().string());
        const Json info = report(place, {"--info", entry.path().string(), "--json"});
        if (info.is_null() || !isUnusual(info)) continue;
        const std::string before = std::to_string(number) + ".before.dxf";
        const std::string after = std::to_string(number++) + ".after.dxf";
        fs::copy_file(entry.path(), place.path(before));
        const std::string other = layerToTurnOff(info);
        place.write("layers.scr", "-LAYER\nN\n新图层\n" + (other.empty() ? "" : "OFF\n" + other + "\nY\n") + "\n");
        const Outcome made = place.run({"-s", "layers.scr", "-o", after, before});
        EXPECT_EQ(made.code, 0) << made.error;
        bool isNew = false;
        bool isOff = other.empty();
        const Json compared = report(place, {"--compare", before, after, "--json"});
        for (const Json& difference : compared["differences"]) {
            EXPECT_TRUE(isExpected(difference, other)) << difference;
            isNew |= difference["difference"] == "onlyInSecond" && difference["object"].get<std::string>()[0] == 'L';
            isOff |= difference.value("code", 0) == 62;
        }
        EXPECT_TRUE(isNew && isOff);

        EXPECT_EQ(place.run({"-s", "thaw.scr", "-o", "thawed.dxf", after}).code, 0);
        const Json thawed = report(place, {"--compare", after, "thawed.dxf", "--json"});
        for (const Json& difference : thawed["differences"]) {
            EXPECT_EQ(difference["object"].get<std::string>().rfind("LAYER ", 0), 0u) << difference;
            EXPECT_TRUE(difference["code"] == 62 || difference["code"] == 70) << difference;
        }
    }
    EXPECT_GT(number * kOf, 30);

#if !defined(_WIN32)  // no program of that system
    const std::string auditor = "/usr/bin/python3 '" QRS_SOURCE_DIR "/tests/standard/drawings.py' audit '" +
                                place.path("").string() + "' >'" + place.path("told.txt").string() + "'";
    if (std::system(auditor.c_str()) != 0) GTEST_SKIP() << "no auditor";
    EXPECT_EQ(place.read("told.txt"), "");
#endif
}
