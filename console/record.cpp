// Records of runs as JSON.
#include "console/record.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "host/platform/files.h"

namespace qrs::console {

namespace {

using Json = nlohmann::ordered_json;
using host::CommandResult;

struct ResultName {
    CommandResult result;
    const char* name;
};
constexpr ResultName kResults[] = {
    {CommandResult::Done, "done"},
    {CommandResult::Refused, "refused"},
    {CommandResult::Cancelled, "cancelled"},
    {CommandResult::Failed, "failed"},
};

Json jsonOf(const RunRecord& record) {
    Json json = {{"changed", record.changed}, {"written", record.written}, {"commands", Json::array()}};
    for (const CommandEntry& command : record.commands)
        for (const ResultName& row : kResults)
            if (row.result == command.result)
                json["commands"].push_back({{"name", command.name}, {"result", row.name}});
    return json;
}

// Names of files may hold bytes of any kind.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::filesystem::path recordFile(const std::filesystem::path& runFolder) {
    return runFolder / "record.json";
}

std::filesystem::path scriptFile(const std::filesystem::path& runFolder) {
    return runFolder / "script";
}

bool writeRecord(const std::filesystem::path& runFolder, const RunRecord& record, platform::Error& error) {
    return platform::writeFileAtomically(recordFile(runFolder), dump(jsonOf(record)), 0, error);
}

RunRecord readRecord(const std::filesystem::path& runFolder) {
    RunRecord record;
    std::string text;
    platform::Error ignored;
    if (!platform::readFile(recordFile(runFolder), text, ignored)) return record;
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) return record;
    record.changed = json.value("changed", false);
    record.written = json.value("written", std::string());
    for (const Json& command : json.value("commands", Json::array()))
        for (const ResultName& row : kResults)
            if (command.value("result", std::string()) == row.name)
                record.commands.push_back({command.value("name", std::string()), row.result});
    return record;
}

std::string textOf(const ReportLine& line) {
    Json json = {{"drawing", line.drawing}, {"exitCode", line.exitCode}};
    json.update(jsonOf(line.record));
    json["messages"] = line.messages;
    json["seconds"] = std::round(line.seconds * 1000) / 1000;
    return dump(json);
}

}  // namespace qrs::console
