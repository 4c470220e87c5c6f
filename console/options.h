// What the program was asked to do on its command line.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "console/audit.h"
#include "console/plotting.h"

namespace qrs::console {

// What the program returns to the system.
enum class ExitCode : int {
    Done = 0,
    CommandFailed = 1,  // or: --compare has found differences
    WrongUsage = 2,
    CannotRead = 3,   // drawing, script, plug-in, settings file, folder
    CannotWrite = 4,  // drawing, report
    BrokenOff = 5,    // of several drawings: the run of one was killed or broke down
};

struct Options {
    std::vector<std::filesystem::path> drawings;  // as given; those of the list are not among them
    std::optional<std::filesystem::path> list;    // "-" is standard input
    std::optional<std::filesystem::path> report;
    std::filesystem::path drawing;                // of this run; empty: a new drawing
    std::vector<std::string> lines;               // --execute, in the order given; UTF-8
    std::optional<std::filesystem::path> script;  // "-" is standard input
    std::filesystem::path output;                 // empty: none
    bool inPlace = false;
    int backups = 1;
    std::optional<std::string> converter;        // nothing: that of the settings, or none
    std::vector<std::filesystem::path> plugins;  // beside the module
    bool withoutModule = false;
    std::optional<std::filesystem::path> system;    // nothing: the installed data
    std::optional<std::filesystem::path> settings;  // nothing: the user's own
    std::vector<std::filesystem::path> support;
    std::optional<unsigned> codePage;
    double timeoutSeconds = 0;       // 0: none
    bool keepGoing = false;          // after a failed command
    bool keepGoingDrawings = false;  // after a failed drawing
    bool strict = false;
    bool allWarnings = false;
    // One of several runs that another run of the program has started: a folder of this run's own, which its script
    // comes from and its record goes to. Empty: a run that a user has started.
    std::filesystem::path runFolder;
    std::vector<std::string> arguments;  // as they came, without the program's name
    // Reports instead of a run.
    std::filesystem::path described;              // --info; empty: none
    std::vector<std::filesystem::path> compared;  // --compare: two, or none
    bool asJson = false;
    AuditOptions audit;
    PlotOptions plot;
    bool isQuiet = false;  // prompts and what commands print are not shown

    // Without commands a picture alone is meant.
    bool hasScript() const { return script.has_value() || !lines.empty() || audit.isWanted() || plot.isWanted(); }
};

// What became of the command line: the options, or a text to print and the code to return at once.
struct ParsedOptions {
    std::optional<Options> options;
    std::string text;  // help or version (Done), or one line that says what is wrong (WrongUsage)
    ExitCode code = ExitCode::Done;
};

// The language of all that is said from now on, the refusal of an option included: that of --language, else the
// locale's.
void chooseLanguage(const std::vector<std::string>& arguments);

// The arguments in UTF-8, the program's name first.
ParsedOptions parseOptions(const std::vector<std::string>& arguments);

}  // namespace qrs::console
