// Starts the run of each drawing, passes on what it prints, and tells what became of it.
#include "console/batch.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "console/batchlist.h"
#include "console/record.h"
#include "console/run.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/process.h"
#include "host/platform/program.h"
#include "host/platform/textwidth.h"
#include "host/platform/tree.h"

namespace qrs::console {

using platform::translated;

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kOwnMark = "qrsconsole: ";

// A bar below the lines on standard error; nothing where that is no terminal.
class Bar {
  public:
    explicit Bar(std::size_t count) : count_(count), isShown_(platform::isTerminal(2)) {}
    ~Bar() { wipe(); }
    Bar(const Bar&) = delete;
    Bar& operator=(const Bar&) = delete;

    void show(std::size_t done, std::size_t failed, const std::string& drawing) {
        constexpr std::size_t kLength = 20;
        constexpr std::size_t kLineWidth = 79;
        if (!isShown_) return;
        const std::size_t filled = count_ == 0 ? 0 : done * kLength / count_;
        std::string text = "[" + std::string(filled, '#') + std::string(kLength - filled, '-') + "] " +
                           std::to_string(done) + "/" + std::to_string(count_);
        if (failed > 0) text += translated(", %1 failed", failed);
        std::wstring line = platform::fromUtf8(text + "  " + drawing);
        while (platform::columnsOf(line) > kLineWidth)
            line.pop_back();
        wipe();
        line_ = platform::toUtf8(line);
        draw();
    }

    // Again, after what was printed over it.
    void draw() {
        if (line_.empty() || std::exchange(isDrawn_, true)) return;
        platform::writeStandardError(line_);
    }

    // With blanks: not every console knows the terminals' own way.
    void wipe() {
        if (!std::exchange(isDrawn_, false)) return;
        const std::string blanks(platform::columnsOf(platform::fromUtf8(line_)), ' ');
        platform::writeStandardError("\r" + blanks + "\r");
    }

  private:
    std::size_t count_;
    bool isShown_;
    bool isDrawn_ = false;
    std::string line_;
};

// What one run prints as errors, line by line, each with the name of its drawing.
class Messages {
  public:
    Messages(std::string drawing, Bar& bar) : drawing_(std::move(drawing)), bar_(bar) {}

    void take(std::string_view piece) {
        begun_ += piece;
        for (std::size_t end; (end = begun_.find('\n')) != std::string::npos; begun_.erase(0, end + 1))
            tell(begun_.substr(0, end));
    }
    std::vector<std::string> finish() {
        if (!begun_.empty()) tell(std::exchange(begun_, {}));
        return std::move(all_);
    }

  private:
    void tell(std::string line) {
        if (line.compare(0, kOwnMark.size(), kOwnMark) == 0) line.erase(0, kOwnMark.size());
        bar_.wipe();
        // Many begin with the drawing's path, or with its name alone, which says little among those of other folders.
        if (line.compare(0, drawing_.size(), drawing_) == 0) {
            complain(line);
        } else {
            const std::string name = fs::u8path(drawing_).filename().u8string() + ": ";
            if (line.compare(0, name.size(), name) == 0) line.erase(0, name.size());
            complain(drawing_ + ": " + line);
        }
        all_.push_back(std::move(line));
        bar_.draw();
    }

    std::string drawing_;
    Bar& bar_;
    std::string begun_;
    std::vector<std::string> all_;
};

// A name that is no option of the run, whatever it begins with.
std::string asArgument(const fs::path& path) {
    const std::string text = path.u8string();
    return !text.empty() && text.front() == '-' ? "./" + text : text;
}

class Batch {
  public:
    Batch(const Options& options, std::vector<BatchItem> items, const fs::path& folder)
        : options_(options), items_(std::move(items)), folder_(folder), bar_(items_.size()) {}

    ExitCode run() {
        for (const BatchItem& item : items_) {
            bar_.show(done_, failed_, item.drawing.u8string());
            const int code = runOne(item);
            ++done_;
            if (code != 0) ++failed_;
            worst_ = std::max(worst_, code);
            if (code != 0 && !options_.keepGoingDrawings) break;
        }
        bar_.wipe();
        tellAll();
        return static_cast<ExitCode>(worst_);
    }

  private:
    platform::Program programFor(const BatchItem& item) const {
        platform::Program program;
        program.words = {platform::programFile().u8string(), "--run-folder", folder_.u8string(), "--run-drawing",
                         asArgument(item.drawing)};
        if (!item.output.empty()) program.words.insert(program.words.end(), {"--run-output", asArgument(item.output)});
        program.words.insert(program.words.end(), options_.arguments.begin(), options_.arguments.end());
        return program;
    }

    int runOne(const BatchItem& item) {
        ReportLine line;
        line.drawing = item.drawing.u8string();
        platform::Error error;
        if (!item.output.empty() && !platform::makeFolders(item.output.parent_path(), error)) {
            complain(error.message);
            line.messages.push_back(error.message);
            line.exitCode = static_cast<int>(ExitCode::CannotWrite);
        } else {
            runProgramOf(item, line);
        }
        bar_.wipe();
        complain(line.drawing + ": " + outcomeOf(line));
        if (line.record.changed) ++changed_;
        if (!line.record.written.empty()) ++written_;
        if (options_.report && !platform::appendToFile(*options_.report, textOf(line), error)) {
            complain(error.message);
            return std::max(line.exitCode, static_cast<int>(ExitCode::CannotWrite));
        }
        return line.exitCode;
    }

    void runProgramOf(const BatchItem& item, ReportLine& line) {
        platform::Error ignored;
        platform::writeFileAtomically(recordFile(folder_), {}, 0, ignored);
        Messages messages(line.drawing, bar_);
        platform::Program program = programFor(item);
        program.output = [this](std::string_view piece) {
            if (isOutputSeen_) bar_.wipe();
            outputWorks_ = platform::writeStandardOutput(piece) && outputWorks_;
        };
        program.errors = [&messages](std::string_view piece) { messages.take(piece); };
        program.output("; " + line.drawing + "\n");
        const auto begin = std::chrono::steady_clock::now();
        const platform::ProgramEnd end = platform::runProgram(program);
        line.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        line.record = readRecord(folder_);
        line.messages = messages.finish();
        line.exitCode = end.code;
        if (end.how != platform::ProgramEnd::How::Exited || end.code > static_cast<int>(ExitCode::BrokenOff)) {
            line.exitCode = static_cast<int>(ExitCode::BrokenOff);
            line.messages.push_back(translated("the run %1", end.text));
            complain(line.drawing + ": " + line.messages.back());
        }
        if (!outputWorks_) line.exitCode = std::max(line.exitCode, static_cast<int>(ExitCode::CannotWrite));
    }

    static std::string outcomeOf(const ReportLine& line) {
        const auto refused =
            std::count_if(line.record.commands.begin(), line.record.commands.end(), [](const CommandEntry& command) {
                return command.result == host::CommandResult::Refused ||
                       command.result == host::CommandResult::Cancelled;
            });
        std::string text = line.exitCode == 0 ? translated("done") : translated("failed (exit code %1)", line.exitCode);
        if (refused > 0)
            text += refused == 1 ? translated(", 1 command refused or cancelled")
                                 : translated(", %1 commands refused or cancelled", refused);
        if (!line.record.written.empty())
            text += line.record.written == line.drawing ? translated(", written")
                                                        : translated(", written to %1", line.record.written);
        else if (line.record.changed)
            text += translated(", changes not written");
        else if (line.exitCode == 0)
            text += translated(", not changed");
        return text;
    }

    void tellAll() const {
        std::string text = items_.size() == 1
                               ? translated("1 drawing: %1 done, %2 failed", done_ - failed_, failed_)
                               : translated("%1 drawings: %2 done, %3 failed", items_.size(), done_ - failed_, failed_);
        if (done_ < items_.size()) text += translated(", %1 not run", items_.size() - done_);
        text += translated("; %1 changed, %2 written", changed_, written_);
        complain(text);
    }

    const Options& options_;
    std::vector<BatchItem> items_;
    const fs::path& folder_;
    Bar bar_;
    std::size_t done_ = 0, failed_ = 0, changed_ = 0, written_ = 0;
    int worst_ = 0;
    bool outputWorks_ = true;
    bool isOutputSeen_ = platform::isTerminal(1);
};

ExitCode fails(ExitCode code, const std::string& message) {
    complain(message);
    return code;
}

// What several drawings cannot be run with, or nothing.
std::string findBatchMisuse(const Options& options) {
    const bool listIsInput = options.list && *options.list == "-";
    if (!options.hasScript() && (listIsInput || platform::isTerminal(0)))
        return translated("several drawings, and --report, need --script or --execute");
    const bool isOne = options.drawings.size() == 1 && !options.list;
    if (!options.output.empty() && !isOne && !isFolderName(options.output))
        return translated("--output of several drawings needs a folder, with a slash at its end");
    return {};
}

// The script of all the runs, read once: it may come from a pipe.
bool keepScript(const Options& options, const fs::path& folder, platform::Error& error) {
    std::string script;
    if (options.script && *options.script != "-") {
        if (!platform::readFile(*options.script, script, error)) return false;
    } else if (options.script || !options.hasScript()) {
        script = readStandardInput();
    }
    return platform::writeFileAtomically(scriptFile(folder), script, 0, error);
}

}  // namespace

bool isBatch(const Options& options) {
    return options.drawings.size() > 1 || options.list || options.report;
}

bool isFolderName(const fs::path& name) {
    return !name.has_filename() || platform::folderExists(platform::innerPath(name));
}

ExitCode runBatch(const Options& options) {
    platform::removeTemporariesWhenEnded(true);
    if (const std::string misuse = findBatchMisuse(options); !misuse.empty())
        return fails(ExitCode::WrongUsage, misuse);
    if (options.codePage) platform::setAnsiCodePage(*options.codePage);
    platform::Error error;
    std::vector<BatchItem> items;
    if (!collectDrawings(options, items, error)) return fails(ExitCode::CannotRead, error.message);
    if (!options.output.empty()) {
        if (!isFolderName(options.output))
            items.front().output = options.output;
        else if (!chooseOutputs(options.output, items, error))
            return fails(ExitCode::WrongUsage, error.message);
    }
    if (options.report && !platform::appendToFile(*options.report, {}, error))
        return fails(ExitCode::CannotWrite, error.message);
    const auto folder = platform::PrivateFolder::make(error);
    if (!folder) return fails(ExitCode::CannotWrite, error.message);
    if (!keepScript(options, folder->path(), error)) return fails(ExitCode::CannotRead, error.message);
    return Batch(options, std::move(items), folder->path()).run();
}

}  // namespace qrs::console
