// Everything one running application keeps: the command line, the commands and how they run, the services.
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "dbapserv.h"
#include "host/editor/completion.h"
#include "host/editor/dialogs.h"
#include "host/editor/frame.h"
#include "host/editor/hostapp.h"
#include "host/editor/input.h"
#include "host/editor/keywords.h"
#include "host/editor/output.h"
#include "host/editor/plugins.h"
#include "host/editor/selectionsets.h"
#include "host/editor/variables.h"
#include "rxdlinkr.h"

namespace qrs::host::ed {

// A command that runs now.
struct Running {
    std::wstring name;  // global, upper case
    Adesk::Int32 flags = 0;
    const void* application = nullptr;
    AcApDocument* document = nullptr;  // null for one that runs without a drawing
    bool transparent = false;
    bool cancelled = false;  // its last prompt was
    bool failed = false;
    bool toldEnd = false;         // that the input has ended
    bool takesPickFirst = false;  // and has not been given it yet
};

enum class Outcome { Ended, Cancelled, Failed };

class Session : private AcDbHostApplicationServices {
  public:
    explicit Session(Terminal& terminal);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    // Null when no application lives.
    static Session* current();

    Output output;
    Input input;
    AcEdCommandStack commands;
    AcEditor editor;
    AcRxDynamicLinker linker;
    AcApDocManager documents;
    Plugins plugins;
    SelectionSets sets;
    Variables variables;
    Frame frame;
    Dialogs dialogs{*this};
    std::vector<Running> running;  // the innermost last
    // What the first prompt of a command asks for, by its name in upper case.
    std::map<std::wstring, Wanted> firstAnswers;

    std::wstring systemFolder;
    std::vector<std::wstring> supportFolders;

    // Reads commands and runs them until the input ends. True when none failed.
    bool run(bool keepGoing);
    void requestQuit();

    // One answer to a prompt. Transparent commands typed instead of it are run, and the prompt is asked again.
    // words: what it takes besides what is wanted.
    Answer ask(const std::wstring& prompt, Extent extent, std::vector<std::wstring> words = {});
    // What the next prompt asks for, as far as answers can be completed from it; asking takes it.
    void want(Wanted wanted, std::vector<std::wstring> words = {}) {
        wanted_ = {wanted, Extent::Line, std::move(words)};
    }
    // The prompt that is asked now.
    const Asked& asked() const { return asked_; }

    // The flags and keywords of the next prompt; taking them clears them.
    void initGet(int flags, std::wstring_view keywords);
    int takeFlags() { return std::exchange(flags_, 0); }
    Keywords takeKeywords() { return std::exchange(keywords_, Keywords()); }
    std::wstring lastKeyword;

    // The system variable that was typed as the command that runs now; empty when it was not, and once it is taken.
    std::wstring takeTypedVariable() { return std::exchange(typedVariable_, std::wstring()); }

    // The message about a name that means nothing, and what is near it. In a script that is full of such names only
    // those that come first are guessed at.
    std::wstring unknownCommand(const std::wstring& typed);

    Outcome runCommand(const AcEdCommand& command, bool transparent);
    // A command called from a running one, by name. Failed when there is none.
    Outcome callCommand(const std::wstring& name, std::deque<std::wstring> answers);
    // The running command, or the run, has failed. An empty message prints nothing.
    void fail(std::wstring_view message);
    // The same for one that could not read a file.
    void failReading(std::wstring_view message) {
        ++readingFailures_;
        fail(message);
    }
    bool hasFailedToReadOnly() const { return failures_ > 0 && failures_ == readingFailures_; }
    // The same for one that could not write a file.
    void failWriting(std::wstring_view message) {
        ++writingFailures_;
        fail(message);
    }
    bool hasFailedToWriteOnly() const {
        return writingFailures_ > 0 && failures_ == readingFailures_ + writingFailures_;
    }
    // Prints what the running command did not do.
    void refuse(std::wstring_view text);
    // The same without printing it, for what the editor does not tell: an answer that meets nothing.
    void noteRefusal(std::wstring_view message);
    void noteFailure();
    // The same for what everybody is to be told, a person as an error.
    void tellRefusal(std::wstring_view message);
    void setStrict(bool strict) { strict_ = strict; }
    void setPickFirst(AcApDocument* document, AcDbObjectIdArray ids);
    bool isRunningIn(const AcApDocument* document) const;
    // From before the reactors hear of its start until they have heard of its end.
    bool isRunningCommandOf(const void* application) const;
    // "LINE'ZOOM": the names of the running commands.
    std::wstring runningNames() const;

    // Everything a plug-in has registered goes; the number of things that went.
    std::size_t removeRegistrations(const void* application);

    // Full path, inner form, of a file searched for in the drawing's folder, the support folders and the system folder;
    // empty when there is none.
    std::wstring findInFolders(const std::wstring& name) const;

  private:
    Acad::ErrorStatus findFile(ACHAR* pathOut, int length, const ACHAR* name, AcDbDatabase* database,
                               FindFileHint hint) override;

    AcEdCommand* lookup(std::wstring_view typed) const;
    // The same, and for the name of a system variable the command that asks for its value, which is told the name.
    const AcEdCommand* lookupMeant(std::wstring_view typed);
    CommandResult runTyped(const std::wstring& typed);
    void runTransparent(const std::wstring& typed);
    bool isTransparentCall(const Answer& answer, Extent extent) const;
    bool mayStart(const Running& starting);
    void startPickFirst(Running& starting);
    void endPickFirst(AcApDocument* document);
    Outcome outcomeOf(const Running& ended) const;
    void tellOutcome(const Running& ended);
    void tellCancel(const std::wstring& promptLine, const Answer& answer);
    void switchToSentDocument();

    int flags_ = 0;
    Asked wanted_;
    Asked asked_;
    Keywords keywords_;
    std::wstring lastCommand_;  // that Enter repeats
    std::wstring lastTyped_;    // also when it is no command
    std::wstring typedVariable_;
    static constexpr std::size_t kMostGuesses = 20;
    std::size_t guesses_ = 0;  // of this run
    std::size_t failures_ = 0;
    std::size_t readingFailures_ = 0;  // of them
    std::size_t writingFailures_ = 0;
    std::size_t refusals_ = 0;
    std::size_t earlyFailures_ = 0;  // before the run, counted with it
    bool strict_ = false;
    bool isRunning_ = false;
    bool quit_ = false;
};

}  // namespace qrs::host::ed
