// What became of one drawing: for the report, and from a run to the run that has started it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/editor/hostapp.h"
#include "host/platform/error.h"

namespace qrs::console {

struct CommandEntry {
    std::string name;
    host::CommandResult result;
};

struct RunRecord {
    std::vector<CommandEntry> commands;
    bool changed = false;  // the drawing was, whether it was written or not
    std::string written;   // the file; empty when none was
};

// The file in a run's folder that its record goes to, and the one its script comes from.
std::filesystem::path recordFile(const std::filesystem::path& runFolder);
std::filesystem::path scriptFile(const std::filesystem::path& runFolder);

bool writeRecord(const std::filesystem::path& runFolder, const RunRecord& record, platform::Error& error);
// An empty record when there is none, since the run was broken off.
RunRecord readRecord(const std::filesystem::path& runFolder);

// A run as a line of the report.
struct ReportLine {
    std::string drawing;
    int exitCode = 0;
    double seconds = 0;
    std::vector<std::string> messages;
    RunRecord record;
};
std::string textOf(const ReportLine& line);

}  // namespace qrs::console
