// One run of the program: settings, drawing, plug-ins, commands, and the drawing written at the end.
#include "console/run.h"

#include <cstdio>
#include <memory>
#include <utility>

#include "console/places.h"
#include "console/report.h"
#include "console/script.h"
#include "console/standard.h"
#include "console/terminals.h"
#include "host/commands/hostcommands.h"
#include "host/editor/hostapp.h"
#include "host/objectarx/acdocman.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/process.h"
#include "host/platform/settings.h"
#include "host/platform/watch.h"

namespace qrs::console {

namespace {

// A failure that ends the run before or after the commands.
struct Failure {
    ExitCode code = ExitCode::Done;
    std::string message;

    explicit operator bool() const { return code != ExitCode::Done; }
};

std::string readStandardInput() {
    std::string bytes;
    char buffer[65536];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, stdin)) > 0;)
        bytes.append(buffer, count);
    return bytes;
}

Failure readScript(const Options& options, Script& script) {
    int number = 0;
    for (const std::string& line : options.lines)
        script.addLine(line, ++number);
    if (!options.script && options.hasScript()) return {};
    if (!options.script || *options.script == "-") {
        script.addBytes(readStandardInput(), "standard input");
        return {};
    }
    std::string bytes;
    platform::Error error;
    if (!platform::readFile(*options.script, bytes, error)) return {ExitCode::CannotRead, error.message};
    script.addBytes(bytes, options.script->u8string());
    return {};
}

Failure useFolder(const std::filesystem::path& folder, const char* option) {
    if (platform::folderExists(platform::innerPath(folder))) return {};
    return {ExitCode::CannotRead, std::string(option) + ": " + folder.u8string() + " is no folder that can be read"};
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

Failure openDrawing(const Options& options, host::Application& application) {
    platform::Error error;
    if (options.drawing.empty())
        application.newDocument();
    else if (!application.openDocument(options.drawing, error))
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

// Writes the drawing the program was started with, as --output and --in-place ask.
Failure writeDrawing(const Options& options, host::Application& application, const StartedDrawing& started) {
    if (options.output.empty() && !options.inPlace) return {};
    if (!started.isCurrent(application))
        return {ExitCode::CannotWrite,
                options.drawing.u8string() + " is not the current drawing any more; not written"};
    if (options.inPlace && !application.hasUnsavedChanges()) return {};
    platform::Error error;
    const std::filesystem::path& target = options.inPlace ? options.drawing : options.output;
    if (!application.saveDocument(target, error)) return {ExitCode::CannotWrite, error.message};
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
    return !options.hasScript() && platform::isTerminal(0);
}

bool isEditedByPerson(const Options& options) {
    return isPersonAtTerminal(options) && platform::isTerminal(1);
}

std::unique_ptr<ConsoleTerminal> makeTerminal(const Options& options, Script script) {
    if (!isPersonAtTerminal(options)) return std::make_unique<ScriptTerminal>(std::move(script));
    if (!isEditedByPerson(options)) return std::make_unique<PlainTerminal>();
    const auto commandNames = [] {
        const host::Application* application = host::Application::current();
        return application == nullptr ? std::vector<std::wstring>() : application->commandNames();
    };
    return makeInteractiveTerminal(commandNames, historyFile());
}

Failure prepare(const Options& options, host::Application& application) {
    if (Failure failure = setFolders(options, application)) return failure;
    if (Failure failure = openDrawing(options, application)) return failure;
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

void complain(const std::string& message) {
    platform::writeStandardError("qrsconsole: " + onOneLine(message) + "\n");
}

ExitCode run(const Options& options) {
    // A person's ^C is an answer, as long as it can be told from others.
    platform::removeTemporariesWhenEnded(!isEditedByPerson(options));
    std::unique_ptr<platform::Deadline> deadline;
    if (options.timeoutSeconds > 0) {
        char line[80];
        std::snprintf(line, sizeof line, "qrsconsole: not done within %g seconds", options.timeoutSeconds);
        deadline = std::make_unique<platform::Deadline>(options.timeoutSeconds, line,
                                                        static_cast<int>(ExitCode::CommandFailed));
    }
    if (!options.described.empty() || !options.compared.empty()) {
        if (Failure failure = prepareReport(options)) return end(failure);
        return report(options);
    }
    if (Failure failure = setUp(options)) return end(failure);
    Script script;
    if (!isPersonAtTerminal(options))
        if (Failure failure = readScript(options, script)) return end(failure);
    const std::unique_ptr<ConsoleTerminal> terminal = makeTerminal(options, std::move(script));
    host::Application application(*terminal);
    host::registerHostCommands();
    registerStandardCommand();
    if (Failure failure = prepare(options, application)) return end(failure);
    const StartedDrawing started(application.currentDocument());
    // A person has seen what failed and gone on.
    const bool isPerson = terminal->isInteractive();
    const bool allDone = application.run(options.keepGoing || isPerson) || isPerson;
    if (allDone || options.keepGoing)
        if (Failure failure = writeDrawing(options, application, started)) return end(failure);
    if (!terminal->outputWorks()) return end({ExitCode::CannotWrite, "standard output cannot be written"});
    return allDone ? ExitCode::Done : ExitCode::CommandFailed;
}

}  // namespace qrs::console
