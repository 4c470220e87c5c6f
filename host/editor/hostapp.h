// The application underneath the editor's interface, as a program that carries it sees it.
//
//     qrs::host::Application application(terminal);
//     application.setSystemFolder(L"\\usr\\share\\qrs_pipeSystem");
//     application.openDocument("house.dxf", error);
//     application.loadPlugin("qrs_pipeSystem.so", error);
//     bool allDone = application.run(/*keepGoing=*/false);
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"
#include "host/platform/port.h"

class AcApDocument;

namespace qrs::host {

// What came back at a prompt: a line, Esc, or nothing more will come.
enum class Reply { Line, Cancel, End };

// What became of a command. Refused: it ran to its end and left something undone that it was asked for.
enum class CommandResult { Done, Refused, Cancelled, Failed };

// What a prompt asks for, as far as answers can be completed from it. The plurals take several with commas between.
enum class Wanted {
    Text,  // nothing that is known
    Command,
    TransparentCommand,
    Variable,
    Layer,
    Layers,
    Linetypes,
    TextStyles,
    Layout,
    LoadedPlugin,
    Plugin,   // a file of one
    Drawing,  // a file of one
    Picture,  // likewise
    Folder,
};

// The names that the part of a line from begin on can become, in order, none of them twice.
struct Completion {
    std::size_t begin = 0;
    std::vector<std::wstring> names;
};

// Where answers come from and printed text goes. One per application.
class QRS_HOST_PORT Terminal {
  public:
    virtual ~Terminal();
    // Asks for one line. The prompt is the text of the line being asked on ("Command: "); a terminal shows it, a script
    // prints it with the answer after it, so that a transcript reads like the editor's text window. After a
    // line the output stands at the start of a line; after Esc the prompt's line is still open, so that "*Cancel*" can
    // stand on it, and the line is what had been typed; at the end a script prints nothing, a person's terminal has
    // shown the prompt.
    virtual Reply readLine(const std::wstring& prompt, std::wstring& line) = 0;
    // A further line of the same answer, which ends on a later one.
    virtual Reply readMore(std::wstring& line);
    // Text of the command line, "\n" line ends.
    virtual void print(std::wstring_view text) = 0;
    // One clear message about something that went wrong, without line end.
    virtual void error(std::wstring_view message) = 0;
    // A line of the command line, printed there already, that tells what a command did not do, or a prompt that was
    // cancelled or left unanswered. Not called while a person answers, who has seen it.
    virtual void refused(std::wstring_view message);
    // A command that was typed has ended; its global name, or what was typed when there is none.
    virtual void commandEnded(std::wstring_view name, CommandResult result);
    // The status bar: a label and how much is done, 0 to 100; -1 when the work is over.
    virtual void progress(std::wstring_view label, int percent);
    // True when a person answers, who can be asked before something is lost, and for whom an empty line at the command
    // prompt repeats the last command.
    virtual bool isInteractive() const { return false; }
};

class QRS_HOST_PORT Application {
  public:
    // One lives at a time.
    explicit Application(Terminal& terminal);
    // Unloads the plug-ins (newest first), closes the drawings without saving.
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    static Application* current();
    Terminal& terminal() const;

    // The suite's system folder and the folders of the support search path, inner form. Before plug-ins are loaded.
    void setSystemFolder(std::wstring_view folder);
    void addSupportFolder(std::wstring_view folder);
    const std::wstring& systemFolder() const;
    const std::vector<std::wstring>& supportFolders() const;

    // Where a plug-in is looked for that is named without a folder, after the working folder.
    void addPluginFolder(const std::filesystem::path& native);
    // Loads a plug-in: its library entry runs, kInitAppMsg is sent, then kLoadDwgMsg for every open drawing.
    // False, with the reason in error, when it cannot be loaded or has no acrxEntryPoint or refuses.
    bool loadPlugin(const std::filesystem::path& native, platform::Error& error);
    // kUnloadDwgMsg for every open drawing, kUnloadAppMsg, then the library leaves the process. By file name, extension
    // optional. False when no such plug-in is loaded or it is locked.
    bool unloadPlugin(std::wstring_view name, platform::Error& error);
    std::vector<std::wstring> pluginNames() const;

    // Drawings. A drawing opened or made becomes the current one.
    void newDocument();
    bool openDocument(const std::filesystem::path& native, platform::Error& error);
    // What is wrong in the current drawing's file: one line, "house.dxf: line 12, handle 2A: ...", or one that sums it
    // up by kind; a line each when all are wanted.
    std::vector<std::string> documentFaults() const;
    void setAllWarnings(bool all);
    // Closes the current drawing without saving; another open one, if any, becomes current.
    bool closeDocument(platform::Error& error);
    // Writes the current drawing; see dxf::Drawing::save. An existing file stays as .bak; of how many earlier states
    // that holds is set here, 1 to begin with.
    bool saveDocument(const std::filesystem::path& native, platform::Error& error);
    void setBackups(int backups);
    AcApDocument* currentDocument() const;
    bool hasUnsavedChanges() const;

    // Reads commands from the terminal and runs them until QUIT or the end of the input. True when no command failed.
    // Unless keepGoing, the first failing command ends the run.
    bool run(bool keepGoing);
    // True when what failed so far are commands that could not read a file, and nothing else.
    bool hasFailedToReadOnly() const;
    // True when a command could not write a file, and what else failed could not read one.
    bool hasFailedToWriteOnly() const;
    // Refusals and prompts that were cancelled or left unanswered count as failures.
    void setStrict(bool strict);
    // Set by the QUIT command.
    void requestQuit();

    // Names of all registered commands, and the file name of the plug-in that has registered one, empty for the host's.
    std::vector<std::wstring> commandNames() const;
    std::wstring pluginOf(std::wstring_view command) const;
    static bool isVariable(std::wstring_view name);

    // What the answer to the prompt of now can become; typed is what stands before the cursor.
    Completion complete(std::wstring_view typed) const;
    // What the first prompt of a command takes, for an answer on the line of its name.
    void setFirstAnswer(std::wstring_view command, Wanted wanted);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// From inside a command: the words typed after its name on the same line, which answer no prompt then; or nothing.
QRS_HOST_PORT std::wstring takeRestOfLine();
// From inside a command: it failed, since there is no command of a name; what was meant is guessed.
QRS_HOST_PORT void failUnknownCommand(const std::wstring& name);
// From inside a command: it failed, and why. The message goes to Terminal::error; the run stops unless it keeps going.
QRS_HOST_PORT void failCommand(std::wstring_view message);
// The same for a command that could not read a file.
QRS_HOST_PORT void failReading(std::wstring_view message);
// The same for a command that could not write a file.
QRS_HOST_PORT void failWriting(std::wstring_view message);
// From inside a command: prints a text of the command line that tells what the command did not do. It also goes to
// Terminal::refused.
QRS_HOST_PORT void refuseCommand(std::wstring_view text);
// The same where the command line shows nothing; a person is told through Terminal::error.
QRS_HOST_PORT void tellRefusal(std::wstring_view message);

}  // namespace qrs::host
