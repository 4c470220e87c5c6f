// How commands are read from the command line and run.
#include <algorithm>
#include <iterator>
#include <utility>

#include "host/editor/documents.h"
#include "host/editor/editorstate.h"
#include "host/editor/expressions.h"
#include "host/editor/session.h"
#include "host/editor/suggestions.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/lostfile.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

// The marks that may stand before a command's name: transparent, language-independent, the editor's own meaning.
constexpr wchar_t kNameMarks[] = L"'_.";

std::wstring_view withoutMarks(std::wstring_view typed) {
    typed.remove_prefix(std::min(typed.size(), typed.find_first_not_of(kNameMarks)));
    return typed;
}

// The running command has failed when a mapped file lost bytes meanwhile.
void tellLostFile(Session& session) {
    const std::filesystem::path lost = platform::lostFile();
    if (lost.empty()) return;
    platform::forgetLostFiles();
    session.fail(
        translated(L"%1 was cut short by another program while it was read; what the command did is not to be trusted",
                   platform::shownPath(platform::innerPath(lost))));
}

}  // namespace

bool Session::run(bool keepGoing) {
    quit_ = false;
    guesses_ = 0;
    const std::size_t failuresBefore = failures_ - std::exchange(earlyFailures_, 0);
    isRunning_ = true;
    while (!quit_ && (keepGoing || failures_ == failuresBefore)) {
        switchToSentDocument();
        const std::wstring prompt = translated(L"Command: ");
        output.freshLine();
        asked_ = {Wanted::Command, Extent::Word, {}};
        const Answer answer = input.read(prompt, Extent::Word, true);
        if (answer.reply == Reply::End) break;
        if (answer.reply == Reply::Cancel) {
            // Nothing runs here: what can be cancelled is a line that was typed in part.
            if (answer.discarded) output.print(translated(L"*Cancel*\n"));
            continue;
        }
        if (!answer.text.empty()) {
            const std::wstring lastOfUser = lastCommand_;
            const CommandResult result = runTyped(answer.text);
            // What a command sends to follow it is not what the user did last.
            if (!answer.typed) lastCommand_ = lastOfUser;
            if (answer.typed) output.terminal().commandEnded(lastTyped_, result);
        } else if (output.terminal().isInteractive() && !lastCommand_.empty()) {
            output.print(lastCommand_ + L"\n");
            runTyped(std::wstring(lastCommand_));
        }
    }
    isRunning_ = false;
    return failures_ == failuresBefore;
}

void Session::requestQuit() {
    editor.reactors().list.tell([](AcEditorReactor& reactor) { reactor.beginQuit(); });
    quit_ = true;
}

void Session::switchToSentDocument() {
    while (AcApDocument* document = input.nextDocument()) {
        if (documents.state().holds(document)) {
            documents.state().activate(document);
            return;
        }
        input.forget(document);
    }
}

AcEdCommand* Session::lookup(std::wstring_view typed) const {
    const bool globalOnly = typed.substr(0, typed.find_first_not_of(kNameMarks)).find(L'_') != std::wstring_view::npos;
    const std::wstring name(withoutMarks(typed));
    AcEdCommand* command = globalOnly ? nullptr : commands.lookupLocalCmd(name.c_str());
    return command ? command : commands.lookupGlobalCmd(name.c_str());
}

const AcEdCommand* Session::lookupMeant(std::wstring_view typed) {
    typedVariable_.clear();
    if (const AcEdCommand* command = lookup(typed)) return command;
    const std::wstring name = platform::foldCase(withoutMarks(typed));
    const AcEdCommand* setsVariable = Variables::isKnown(name) ? commands.lookupGlobalCmd(L"SETVAR") : nullptr;
    if (setsVariable) typedVariable_ = name;
    return setsVariable;
}

std::wstring Session::unknownCommand(const std::wstring& typed) {
    const std::wstring message = translated(L"Unknown command \"%1\".", typed);
    if (!output.terminal().isInteractive() && ++guesses_ > kMostGuesses) return message;
    std::vector<std::wstring> names = commandNames(*this);
    for (std::wstring& name : Variables::names())
        names.push_back(std::move(name));
    return message + didYouMean(withoutMarks(typed), names);
}

CommandResult Session::runTyped(const std::wstring& typed) {
    if (const AcEdCommand* command = lookupMeant(typed)) {
        lastTyped_ = lastCommand_ = typedVariable_.empty() ? command->globalName() : typedVariable_;
        const std::size_t refusalsBefore = refusals_;
        const Outcome outcome = runCommand(*command, false);
        if (outcome == Outcome::Failed) input.dropTypedWords();
        return outcome == Outcome::Failed      ? CommandResult::Failed
               : outcome == Outcome::Cancelled ? CommandResult::Cancelled
               : refusals_ != refusalsBefore   ? CommandResult::Refused
                                               : CommandResult::Done;
    }
    const std::wstring name = platform::foldCase(withoutMarks(typed));
    lastTyped_ = typed;
    editor.reactors().list.tell([&](AcEditorReactor& reactor) { reactor.unknownCommand(name.c_str()); });
    input.dropTypedWords();
    if (beginsExpression(typed))
        fail(translated(L"An expression is no command: it answers a prompt for objects."));
    else
        fail(unknownCommand(typed));
    return CommandResult::Failed;
}

bool Session::isTransparentCall(const Answer& answer, Extent extent) const {
    if (answer.text.size() < 2 || answer.text.front() != L'\'' || withoutMarks(answer.text).empty()) return false;
    // A text of several words may begin with an apostrophe for reasons of its own.
    return extent == Extent::Word || lookup(answer.text) != nullptr;
}

void Session::runTransparent(const std::wstring& typed) {
    const AcEdCommand* command = lookupMeant(typed);
    const bool nested = std::any_of(running.begin(), running.end(), [](const Running& one) { return one.transparent; });
    if (!command) {
        ++failures_;
        output.error(unknownCommand(typed));
    } else if (nested) {
        refuse(translated(L"\n** Transparent commands may not be nested **\n"));
    } else if (!(command->commandFlags() & ACRX_CMD_TRANSPARENT)) {
        refuse(translated(L"\n** That command may not be invoked transparently **\n"));
    } else {
        {
            const GivenAnswers fromOutside(input, std::nullopt);
            runCommand(*command, true);
        }
        if (!running.empty()) output.print(translated(L"\nResuming %1 command.\n", running.back().name));
    }
}

Answer Session::ask(const std::wstring& prompt, Extent extent, std::vector<std::wstring> words) {
    input.setEcho(variables.integer(L"CMDECHO") != 0);
    Asked asked = std::exchange(wanted_, Asked());
    asked.extent = extent;
    std::move(words.begin(), words.end(), std::back_inserter(asked.words));
    for (;;) {
        asked_ = asked;
        const std::wstring promptLine = input.isUnseenNext() ? output.skipPrompt(prompt) : output.beginPrompt(prompt);
        Answer answer = input.read(promptLine, extent, false);
        if (answer.reply != Reply::Line) {
            tellCancel(promptLine, answer);
            return answer;
        }
        if (!running.empty()) running.back().cancelled = false;
        if (!isTransparentCall(answer, extent)) return answer;
        runTransparent(answer.text);
    }
}

// After the end of the input every prompt is cancelled; saying so once for each command is enough.
void Session::tellCancel(const std::wstring& promptLine, const Answer& answer) {
    bool tell = true;
    if (!running.empty()) {
        running.back().cancelled = true;
        if (answer.reply == Reply::End) tell = !std::exchange(running.back().toldEnd, true);
    }
    if (answer.reply == Reply::Cancel) input.dropTypedWords();
    // The user would wonder what was cancelled.
    if (!tell || answer.unseen) return;
    const bool shown = answer.promptShown || (answer.reply == Reply::End && output.terminal().isInteractive());
    output.print((shown ? std::wstring() : promptLine) + translated(L"*Cancel*\n"));
    // Esc that a program sent only makes sure that nothing runs.
    const bool isUsers = answer.promptShown || answer.reply == Reply::End;
    if (isUsers && !running.empty())
        noteRefusal(answer.reply == Reply::End ? translated(L"%1: not answered: %2", running.back().name, promptLine)
                                               : translated(L"%1: cancelled: %2", running.back().name, promptLine));
}

bool Session::mayStart(const Running& starting) {
    if (starting.flags & ACRX_CMD_SESSION) return true;
    if (!starting.document) {
        fail(translated(L"%1 needs an open drawing.", starting.name));
        return false;
    }
    const bool modelSpace = starting.document->database()->tilemode();
    if (modelSpace && (starting.flags & ACRX_CMD_NOTILEMODE)) {
        refuse(translated(L"\n** Command not allowed in Model Tab **\n"));
        return false;
    }
    if (!modelSpace && (starting.flags & ACRX_CMD_NOPAPERSPACE)) {
        refuse(translated(L"\n** Command only allowed in Model Tab **\n"));
        return false;
    }
    documents.state().lock(starting.document, AcAp::kWrite, starting.name);
    return true;
}

Outcome Session::runCommand(const AcEdCommand& command, bool transparent) {
    // The command may take itself off the stack while it runs.
    const AcRxFunctionPtr function = command.functionAddr();
    Running starting;
    starting.name = platform::foldCase(command.globalName());
    starting.flags = command.commandFlags();
    starting.application = command.commandApp();
    starting.document = (starting.flags & ACRX_CMD_SESSION) ? nullptr : documents.curDocument();
    starting.transparent = transparent;
    const std::size_t place = running.size();
    const bool outermost = place == 0;
    // While it stands here neither its plug-in nor its drawing may go, whatever reactors ask for.
    running.push_back(starting);
    if (!mayStart(starting)) {
        running.resize(place);
        return starting.document ? Outcome::Cancelled : Outcome::Failed;
    }
    if (outermost && !(starting.flags & ACRX_CMD_NOUNDOMARKER)) {
        for (AcApDocument* document : documents.state().all())
            DatabaseAccess::beginStep(*document->database(), starting.name);
    }
    if (outermost) startPickFirst(running[place]);
    initGet(0, std::wstring_view());

    const std::wstring name = starting.name;
    auto& listeners = editor.reactors().list;
    listeners.tell([&](AcEditorReactor& reactor) { reactor.commandWillStart(name.c_str()); });
    callOutside(starting.application, name.c_str(), [&] { function(); });
    tellLostFile(*this);
    tellOutcome(running[place]);
    const Running ended = running[place];
    if (ended.document) {
        documents.state().unlock(ended.document);
        if (outermost) endPickFirst(ended.document);
    }
    running.resize(place);
    initGet(0, std::wstring_view());
    if (outermost) input.releaseWaiting();
    return outcomeOf(ended);
}

Outcome Session::outcomeOf(const Running& ended) const {
    if (ended.failed) return Outcome::Failed;
    return ended.cancelled ? Outcome::Cancelled : Outcome::Ended;
}

void Session::tellOutcome(const Running& ended) {
    const std::wstring name = ended.name;
    const Outcome outcome = outcomeOf(ended);
    editor.reactors().list.tell([&](AcEditorReactor& reactor) {
        if (outcome == Outcome::Failed)
            reactor.commandFailed(name.c_str());
        else if (outcome == Outcome::Cancelled)
            reactor.commandCancelled(name.c_str());
        else
            reactor.commandEnded(name.c_str());
    });
}

Outcome Session::callCommand(const std::wstring& name, std::deque<std::wstring> answers) {
    const AcEdCommand* command = lookupMeant(name);
    if (!command) {
        fail(unknownCommand(name));
        return Outcome::Failed;
    }
    const GivenAnswers given(input, std::move(answers));
    return runCommand(*command, false);
}

// A plug-in may fail in its start: what the commands then do is not what they should.
void Session::noteFailure() {
    ++failures_;
    if (!isRunning_) ++earlyFailures_;
}

void Session::fail(std::wstring_view message) {
    noteFailure();
    if (!running.empty()) running.back().failed = true;
    if (!message.empty()) output.error(message);
}

void Session::refuse(std::wstring_view text) {
    output.print(text);
    noteRefusal(text);
}

void Session::tellRefusal(std::wstring_view message) {
    noteRefusal(message);
    if (output.terminal().isInteractive()) output.error(message);
}

void Session::noteRefusal(std::wstring_view message) {
    ++refusals_;
    if (strict_) noteFailure();
    if (output.terminal().isInteractive()) return;
    const std::size_t begin = message.find_first_not_of(L" \n");
    if (begin == std::wstring_view::npos) return;
    message = message.substr(begin, message.find_last_not_of(L" \n") + 1 - begin);
    output.terminal().refused(message);
}

// Only commands that say so find the pick-first set; for the others it is gone.
void Session::startPickFirst(Running& starting) {
    AcApDocument* document = documents.curDocument();
    if (!document) return;
    AcApDocument::State& state = document->state();
    state.pickFirstSetAnew = false;
    const bool usable = (starting.flags & ACRX_CMD_USEPICKSET) && variables.integer(L"PICKFIRST") != 0;
    starting.takesPickFirst = usable && !state.pickFirst.isEmpty();
    if (!usable) setPickFirst(document, AcDbObjectIdArray());
    state.pickFirstSetAnew = false;
}

void Session::endPickFirst(AcApDocument* document) {
    AcApDocument::State& state = document->state();
    if (!std::exchange(state.pickFirstSetAnew, false)) setPickFirst(document, AcDbObjectIdArray());
    state.pickFirstSetAnew = false;
}

void Session::setPickFirst(AcApDocument* document, AcDbObjectIdArray ids) {
    AcApDocument::State& state = document->state();
    const bool changes = !(state.pickFirst == ids);
    state.pickFirst = std::move(ids);
    state.pickFirstSetAnew = true;
    if (changes) editor.reactors().list.tell([](AcEditorReactor& reactor) { reactor.pickfirstModified(); });
}

}  // namespace qrs::host::ed
