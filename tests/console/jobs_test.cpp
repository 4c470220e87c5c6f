// The jobs of examples/scripts, over the drawings of examples/ and small ones of other programs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

#include "program.h"

namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

const fs::path kSources = QRS_SOURCE_DIR;
const fs::path kCorpus = kSources / ".." / "shared" / "corpus" / "dxf";
constexpr std::uintmax_t kLargest = 12'000;

struct Job {
    std::string script;
    std::string before;  // the job that ran on the drawing before it
};

const Job kJobs[] = {{"print-set", ""},
                     {"print-set-back", "print-set"},
                     {"architecture-on-one-layer", ""},
                     {"erase-dimensions", ""},
                     {"number-risers", ""},
                     {"text-styles", ""},
                     {"plumbing-sheet", ""},
                     {"lock-architecture", ""},
                     {"rename-old-layers", ""},
                     {"for-other-discipline", ""},
                     {"show-everything", ""}};

fs::path scriptOf(const Job& job) {
    return kSources / "examples" / "scripts" / (job.script + ".scr");
}

std::vector<std::string> namesOf(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".dxf") names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Differences counted by type of object and group code: "  LAYER 62: 4".
std::string summaryOf(const Json& compared) {
    std::map<std::string, int> counts;
    for (const Json& difference : compared["differences"]) {
        const std::string object = difference["object"];
        const std::string kind = difference["difference"];
        const bool isWhole = kind.rfind("onlyIn", 0) == 0;
        ++counts[object.substr(0, object.find(' ')) + " " +
                 (isWhole ? kind : std::to_string(difference["code"].get<int>()))];
    }
    std::string text;
    for (const auto& [what, count] : counts)
        text += "  " + what + ": " + std::to_string(count) + "\n";
    return text;
}

}  // namespace

TEST(Jobs, ChangeTheDrawingsOfTheExamplesAsTheyShould) {
    const Workplace place;
    const std::vector<std::string> names = namesOf(kSources / "examples");
    for (const std::string& name : names)
        place.example(name);
    std::string told;
    for (const Job& job : kJobs) {
        std::vector<std::string> arguments = {"-p", QRS_EXAMPLE_SIBLING, "-s",       scriptOf(job).string(),
                                              "-o", job.script + "/",    "--report", job.script + ".jsonl"};
        for (const std::string& name : names)
            arguments.push_back((job.before.empty() ? "" : job.before + "/") + name);
        const Outcome outcome = place.run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        for (const std::string& name : names) {
            const Outcome compared = place.run({"--compare", name, job.script + "/" + name, "--json"});
            ASSERT_LE(compared.code, 1) << compared.error;
            told += job.script + " " + name + "\n" + summaryOf(Json::parse(compared.out));
        }
    }
    EXPECT_EQ(told, fileBytes(kSources / "tests" / "console" / "jobs.txt"));
}

// All jobs one after the other: whatever a drawing lacks, they run to their end and leave it sound.
TEST(Jobs, RunOverDrawingsOfOtherPrograms) {
    if (!fs::exists(kCorpus)) GTEST_SKIP() << "no corpus beside the sources";
    const Workplace place;
    std::string script;
    for (const Job& job : kJobs)
        script += fileBytes(scriptOf(job));
    place.write("all.scr", script);
    std::string list;
    int files = 0;
    int number = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kCorpus)) {
        if (!entry.is_regular_file() || entry.file_size() > kLargest) continue;
        const std::string name = std::to_string(files++) + ".dxf";
        fs::copy_file(entry.path(), place.path(name));
        if (place.run({"--info", name}).code != 0) continue;
        list += name + "\n";
        ++number;
    }
    EXPECT_GT(number, 20);
    const Outcome done = place.run(
        {"-p", QRS_EXAMPLE_SIBLING, "-s", "all.scr", "-o", "done/", "--keep-going=drawings", "--list", "-"}, list);
    EXPECT_EQ(done.code, 0) << done.error;
#if !defined(_WIN32)  // no program of that system
    const std::string auditor = "/usr/bin/python3 '" QRS_SOURCE_DIR "/tests/standard/drawings.py' audit '" +
                                place.path("done").string() + "' >'" + place.path("told.txt").string() + "'";
    if (std::system(auditor.c_str()) != 0) GTEST_SKIP() << "no auditor";
    EXPECT_EQ(place.read("told.txt"), "");
#endif
}
