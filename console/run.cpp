// One run of the program: settings, drawing, plug-ins, commands, and the drawing written at the end.
#include "console/run.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

#include "console/batch.h"
#include "console/converter.h"
#include "console/help.h"
#include "console/places.h"
#include "console/record.h"
#include "console/report.h"
#include "console/script.h"
#include "console/standard.h"
#include "console/terminals.h"
#include "host/commands/hostcommands.h"
#include "host/editor/faults.h"
#include "host/editor/hostapp.h"
#include "host/objectarx/acdocman.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/lostfile.h"
#include "host/platform/process.h"
#include "host/platform/settings.h"
#include "host/platform/tree.h"
#include "host/platform/watch.h"
#include "host/report/hostreport.h"
#include "qrs_drawings.h"

namespace qrs::console {

using platform::translated;

namespace {

// A failure that ends the run before or after the commands.
struct Failure {
    ExitCode code = ExitCode::Done;
    std::string message;

    explicit operator bool() const { return code != ExitCode::Done; }
};

Failure readScript(const Options& options, Script& script) {
    int number = 0;
    for (const std::string& line : options.lines)
        script.addLine(line, ++number);
    if (!options.script && options.hasScript()) return {};
    const std::string name =
        !options.script || *options.script == "-" ? translated("standard input") : options.script->u8string();
    // The run of several drawings has read the script for all of them.
    const bool isGiven = !options.runFolder.empty();
    std::string bytes;
    platform::Error error;
    if (!isGiven && (!options.script || *options.script == "-")) {
        bytes = readStandardInput();
    } else {
        const std::filesystem::path file = isGiven ? scriptFile(options.runFolder) : *options.script;
        if (!platform::readFile(file, bytes, error)) return {ExitCode::CannotRead, error.message};
    }
    if (!script.addBytes(bytes, name, error)) return {ExitCode::CannotRead, error.message};
    return {};
}

Failure useFolder(const std::filesystem::path& folder, const char* option) {
    if (platform::folderExists(platform::innerPath(folder))) return {};
    return {ExitCode::CannotRead, translated("%1: %2 is no folder that can be read", option, folder.u8string())};
}

Failure setFolders(const Options& options, host::Application& application) {
    if (options.system) {
        if (Failure failure = useFolder(*options.system, "--system")) return failure;
    }
    application.setSystemFolder(systemFolder(options));
    for (const std::filesystem::path& folder : options.support) {
        if (Failure failure = useFolder(folder, "--support")) return failure;
        application.addSupportFolder(innerFolder(folder));
    }
    return {};
}

Failure useSettings(const Options& options) {
    platform::Error error;
    platform::Settings& settings = platform::Settings::user();
    // The user's own store is looked at, too: a damaged one would be taken for empty.
    const bool readable = options.settings ? settings.useFile(*options.settings, error) : settings.check(error);
    if (!readable) return {ExitCode::CannotRead, error.message};
    // Whoever names a folder means its standard, this once.
    if (options.system) QrsExport::UseDefaultStandardFile();
    return {};
}

Failure setUp(const Options& options) {
    if (options.codePage) platform::setAnsiCodePage(*options.codePage);
    return useSettings(options);
}

// What a drawing holds can be told without the user's settings, too.
Failure prepareReport(const Options& options) {
    if (options.codePage) platform::setAnsiCodePage(*options.codePage);
    if (options.described.empty()) return {};
    if (options.system)
        if (Failure failure = useFolder(*options.system, "--system")) return failure;
    const Failure failure = useSettings(options);
    if (!failure || options.settings) return failure;
    complain(failure.message);
    return {};
}

// The drawing of a run: the file that it is opened from, which is another one when it is a DWG drawing.
struct OpenedDrawing {
    std::unique_ptr<ConvertedDrawing> converted;

    const std::filesystem::path& file(const Options& options) const {
        return converted ? converted->file() : options.drawing;
    }
};

Failure openDrawing(const Options& options, host::Application& application, OpenedDrawing& opened) {
    platform::Error error;
    if (!host::dwgReleaseOf(options.drawing).empty()) {
        opened.converted = ConvertedDrawing::make(options, options.drawing, error);
        if (!opened.converted) return {ExitCode::CannotRead, error.message};
        // What the drawing refers to lies beside it.
        const std::filesystem::path named = std::filesystem::absolute(options.drawing);
        application.addSupportFolder(innerFolder(named.parent_path()));
        QrsExport::SetConvertedFile(platform::innerPath(opened.file(options)), platform::innerPath(named));
    }
    if (options.drawing.empty())
        application.newDocument();
    else if (!application.openDocument(opened.file(options), error))
        return {ExitCode::CannotRead, error.message};
    for (const std::string& fault : application.documentFaults())
        complain(fault);
    return {};
}

Failure loadPlugins(const Options& options, host::Application& application) {
    for (const std::filesystem::path& folder : pluginFolders())
        application.addPluginFolder(folder);
    for (const std::filesystem::path& plugin : pluginsToLoad(options)) {
        platform::Error error;
        if (!application.loadPlugin(plugin, error)) return {ExitCode::CannotRead, error.message};
    }
    return {};
}

// The drawing the program was started with, as long as no command closes it.
class StartedDrawing : public AcApDocManagerReactor {
  public:
    explicit StartedDrawing(AcApDocument* document) : document_(document) { acDocManager->addReactor(this); }
    ~StartedDrawing() override { acDocManager->removeReactor(this); }

    void documentToBeDestroyed(AcApDocument* document) override {
        if (document == document_) document_ = nullptr;
    }
    bool isCurrent(const host::Application& application) const {
        return document_ != nullptr && application.currentDocument() == document_;
    }

  private:
    AcApDocument* document_;
};

// Writes the current drawing, a DXF one, as DWG.
bool saveAsDwg(const Options& options, host::Application& application, const std::filesystem::path& target,
               platform::Error& error) {
    const auto folder = platform::PrivateFolder::make(error);
    if (!folder) return false;
    const std::filesystem::path dxf = folder->path() / target.stem().concat(".dxf");
    host::DrawingInfo info;
    return application.saveDocument(dxf, error) && host::describeDrawing(dxf, info, error) &&
           writeAsDwg(options, dxf, platform::toUtf8(info.release), target, error);
}

// Writes a DWG drawing that was changed; one that was not is left alone or copied.
bool writeConverted(const Options& options, host::Application& application, ConvertedDrawing& converted,
                    std::string& written, platform::Error& error) {
    const std::filesystem::path& target = options.inPlace ? options.drawing : options.output;
    if (!options.inPlace && !isNamedDwg(target)) {
        written = target.u8string();
        return application.saveDocument(target, error);
    }
    if (application.hasUnsavedChanges() && !application.saveDocument(converted.file(), error)) return false;
    if (!converted.wasWritten()) {
        if (options.inPlace) return true;
        written = target.u8string();
        return converted.copyTo(target, error);
    }
    written = target.u8string();
    return converted.putBack(target, error);
}

// Writes the drawing the program was started with, as --output and --in-place ask.
Failure writeDrawing(const Options& options, host::Application& application, const StartedDrawing& started,
                     OpenedDrawing& opened, std::string& written) {
    if (options.output.empty() && !options.inPlace) return {};
    if (!started.isCurrent(application))
        return {ExitCode::CannotWrite,
                translated("%1 is not the current drawing any more; not written", options.drawing.u8string())};
    platform::Error error;
    if (opened.converted) {
        if (writeConverted(options, application, *opened.converted, written, error)) return {};
        written.clear();
        return {ExitCode::CannotWrite, error.message};
    }
    if (options.inPlace && !application.hasUnsavedChanges()) return {};
    const std::filesystem::path& target = options.inPlace ? options.drawing : options.output;
    const bool done = !options.inPlace && isNamedDwg(target) ? saveAsDwg(options, application, target, error)
                                                             : application.saveDocument(target, error);
    if (!done) return {ExitCode::CannotWrite, error.message};
    written = target.u8string();
    return {};
}

// A saving command has written the DXF that a DWG drawing became: the user means the drawing.
Failure keepSaved(const Options& options, OpenedDrawing& opened, std::string& written) {
    if (!opened.converted || !opened.converted->wasWritten()) return {};
    platform::Error error;
    if (!opened.converted->putBack(options.drawing, error)) return {ExitCode::CannotWrite, error.message};
    if (written.empty()) written = options.drawing.u8string();
    return {};
}

// The lines typed in earlier sessions: beside the user's settings.
std::filesystem::path historyFile() {
    for (const auto& [variable, below] : {std::pair("XDG_CONFIG_HOME", L""), std::pair("HOME", L".config")}) {
        const std::optional<std::wstring> value = platform::environment(variable);
        if (!value || value->empty()) continue;
        const std::filesystem::path folder = platform::nativePath(platform::innerFromTyped(*value)) / below;
        if (folder.is_absolute()) return folder / "qrs_pipeSystem" / "history";
    }
    return {};
}

bool isPersonAtTerminal(const Options& options) {
    return options.runFolder.empty() && !options.hasScript() && platform::isTerminal(0);
}

bool isEditedByPerson(const Options& options) {
    return isPersonAtTerminal(options) && platform::isTerminal(1);
}

std::unique_ptr<ConsoleTerminal> makeTerminal(const Options& options, Script script) {
    if (options.isQuiet) return std::make_unique<QuietTerminal>(std::move(script));
    if (!isPersonAtTerminal(options)) return std::make_unique<ScriptTerminal>(std::move(script));
    if (!isEditedByPerson(options)) return std::make_unique<PlainTerminal>();
    const auto complete = [](std::wstring_view typed) {
        const host::Application* application = host::Application::current();
        return application == nullptr ? host::Completion() : application->complete(typed);
    };
    return makeInteractiveTerminal(complete, historyFile());
}

// Commands that read drawings besides the current one take DWG files, too.
class ConvertedFile : public QrsExport::TConvertedFile {
  public:
    explicit ConvertedFile(std::unique_ptr<ConvertedDrawing> drawing) : drawing_(std::move(drawing)) {}
    std::wstring File() const override { return platform::innerPath(drawing_->file()); }

  private:
    std::unique_ptr<ConvertedDrawing> drawing_;
};

QrsExport::TConverter converterFor(const Options& options) {
    return [options](const std::wstring& file, std::unique_ptr<QrsExport::TConvertedFile>& converted,
                     std::wstring& reason) {
        const std::filesystem::path named = platform::nativePath(file);
        if (host::dwgReleaseOf(named).empty()) return true;
        platform::Error error;
        auto drawing = ConvertedDrawing::make(options, named, error);
        reason = platform::fromUtf8(error.message);
        if (drawing) converted = std::make_unique<ConvertedFile>(std::move(drawing));
        return converted != nullptr;
    };
}

Failure prepare(const Options& options, host::Application& application, OpenedDrawing& opened) {
    application.setStrict(options.strict);
    application.setBackups(options.backups);
    application.setAllWarnings(options.allWarnings);
    QrsExport::SetConverter(converterFor(options));
    QrsExport::SetReadWatcher([all = options.allWarnings](AcDbDatabase& database) {
        for (const std::string& fault : host::faultLines(database, all))
            complain(fault);
    });
    if (isNamedDwg(options.output) && converterOf(options).empty())
        return {ExitCode::WrongUsage,
                options.output.u8string() + ": " + translated("writing DWG needs a converter (--converter)")};
    if (Failure failure = setFolders(options, application)) return failure;
    if (Failure failure = openDrawing(options, application, opened)) return failure;
    return loadPlugins(options, application);
}

// Names and answers stand in messages as they were given: they may hold line ends, or be whole files by mistake.
std::string onOneLine(std::string message) {
    constexpr std::size_t kLongest = 6000;  // longer than any path
    constexpr std::size_t kTail = 200;
    const auto isInsideCharacter = [&](std::size_t at) {
        return (static_cast<unsigned char>(message[at]) & 0xC0) == 0x80;
    };
    if (message.size() > kLongest) {
        std::size_t cut = kLongest - kTail;
        std::size_t tail = message.size() - kTail;
        while (cut > 0 && isInsideCharacter(cut))
            --cut;
        while (tail + 1 < message.size() && isInsideCharacter(tail))
            ++tail;
        message.replace(cut, tail - cut, " ... ");
    }
    for (char& character : message)
        if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) character = '?';
    return message;
}

ExitCode end(const Failure& failure) {
    complain(failure.message);
    return failure.code;
}

}  // namespace

std::string readStandardInput() {
    std::string bytes;
    char buffer[65536];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, stdin)) > 0;)
        bytes.append(buffer, count);
    return bytes;
}

void complain(const std::string& message) {
    platform::writeStandardError("qrsconsole: " + onOneLine(message) + "\n");
}

namespace {

// What a person starts with.
void greet(const Options& options, ConsoleTerminal& terminal) {
    const std::string drawing = options.drawing.empty() ? translated("new") : options.drawing.u8string();
    terminal.print(platform::fromUtf8(
        translated("qrsconsole %1. HELP or ? lists the commands, QUIT ends.", QRS_VERSION) + "\n" +
        translated("Drawing: %1. Standard: %2.", drawing, shownStandard(QrsExport::GetStandardInUse())) + "\n"));
}

// The commands, and what is written after them.
ExitCode runCommands(const Options& options, host::Application& application, ConsoleTerminal& terminal,
                     RunRecord& record) {
    OpenedDrawing opened;
    if (Failure failure = prepare(options, application, opened)) return end(failure);
    const StartedDrawing started(application.currentDocument());
    // A person has seen what failed and gone on.
    const bool isPerson = terminal.isInteractive();
    if (isPerson) greet(options, terminal);
    const bool isDone = application.run(options.keepGoing || isPerson);
    const bool allDone = (isDone && !terminal.hasMissedAnswers()) || isPerson;
    record.changed = started.isCurrent(application) && application.hasUnsavedChanges();
    Failure failure;
    if (allDone || options.keepGoing) failure = writeDrawing(options, application, started, opened, record.written);
    if (!failure) failure = keepSaved(options, opened, record.written);
    if (failure) return end(failure);
    if (options.plot.isWanted() && (allDone || options.keepGoing))
        if (const ExitCode code = plotDrawing(options); code != ExitCode::Done) return code;
    if (!terminal.outputWorks()) return end({ExitCode::CannotWrite, translated("standard output cannot be written")});
    if (allDone) return ExitCode::Done;
    if (application.hasFailedToReadOnly()) return ExitCode::CannotRead;
    return application.hasFailedToWriteOnly() ? ExitCode::CannotWrite : ExitCode::CommandFailed;
}

ExitCode keepRecord(const Options& options, const ConsoleTerminal& terminal, RunRecord record, ExitCode code) {
    if (options.runFolder.empty()) return code;
    record.commands = terminal.commands();
    platform::Error error;
    if (!writeRecord(options.runFolder, record, error)) complain(error.message);
    return code;
}

// What was told or done with bytes that were gone when they were read is worth nothing.
ExitCode withLoss(ExitCode code) {
    const std::filesystem::path lost = platform::lostFile();
    if (lost.empty()) return code;
    platform::forgetLostFiles();
    complain(translated("%1: was cut short by another program while it was read", lost.u8string()));
    return std::max(code, ExitCode::CannotRead);
}

// A folder to write to, as it is named on the command line, gets the drawing under its own name.
Failure chooseOutput(Options& options) {
    if (options.output.empty() || !isFolderName(options.output)) return {};
    platform::Error error;
    if (!platform::makeFolders(options.output, error)) return {ExitCode::CannotWrite, error.message};
    options.output /= options.drawing.filename();
    return {};
}

}  // namespace

ExitCode run(Options options) {
    const bool isWhole = !options.runFolder.empty() || !isBatch(options) || options.audit.takesAllDrawings();
    if (options.audit.isWanted() && isWhole) return runAudit(options);
    if (options.runFolder.empty() && isBatch(options)) return runBatch(options);
    if (!options.plot.compared.empty()) {
        if (options.codePage) platform::setAnsiCodePage(*options.codePage);
        return plotTwo(options);
    }
    if (Failure failure = chooseOutput(options)) return end(failure);
    // A person's ^C is an answer, as long as it can be told from others.
    platform::removeTemporariesWhenEnded(!isEditedByPerson(options));
    std::unique_ptr<platform::Deadline> deadline;
    if (options.timeoutSeconds > 0) {
        char number[32];
        std::snprintf(number, sizeof number, "%g", options.timeoutSeconds);
        deadline = std::make_unique<platform::Deadline>(
            options.timeoutSeconds, "qrsconsole: " + translated("not done within %1 seconds", number),
            static_cast<int>(ExitCode::CommandFailed));
    }
    if (!options.described.empty() || !options.compared.empty()) {
        if (Failure failure = prepareReport(options)) return end(failure);
        return withLoss(report(options));
    }
    if (Failure failure = setUp(options)) return end(failure);
    Script script;
    if (!isPersonAtTerminal(options))
        if (Failure failure = readScript(options, script)) return end(failure);
    const std::unique_ptr<ConsoleTerminal> terminal = makeTerminal(options, std::move(script));
    host::Application application(*terminal);
    host::registerHostCommands();
    registerStandardCommand();
    registerHelpCommand();
    RunRecord record;
    const ExitCode code = withLoss(runCommands(options, application, *terminal, record));
    return keepRecord(options, *terminal, std::move(record), code);
}

}  // namespace qrs::console
