// Where answers come from: a script, lines typed without editing, or an editable prompt with history and completion.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "console/record.h"
#include "console/script.h"
#include "host/editor/hostapp.h"

namespace qrs::console {

// Prints to standard output and error in UTF-8.
class ConsoleTerminal : public host::Terminal {
  public:
    void print(std::wstring_view text) override;
    void error(std::wstring_view message) override;
    void refused(std::wstring_view message) override;
    void commandEnded(std::wstring_view name, host::CommandResult result) override;
    // The commands that have ended so far.
    const std::vector<CommandEntry>& commands() const { return commands_; }
    // False once standard output could not be written (a full disk).
    bool outputWorks() const { return outputWorks_; }
    // Whether a command has asked for more than there was to answer, where that is a failure.
    virtual bool hasMissedAnswers() const { return false; }

  protected:
    // Where the answer that was read last stands, "show.scr:7: ", or nothing.
    virtual std::string answerOrigin() const { return {}; }
    void write(std::string_view utf8);

  private:
    bool outputWorks_ = true;
    std::vector<CommandEntry> commands_;
};

// Answers from a script, printed after their prompts. Never waits; after the last line every prompt finds the end.
class ScriptTerminal : public ConsoleTerminal {
  public:
    explicit ScriptTerminal(Script script) : script_(std::move(script)) {}
    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override;
    // Messages name the line on which the answer began.
    host::Reply readMore(std::wstring& line) override;

  protected:
    std::string answerOrigin() const override;

  private:
    Script script_;
    const ScriptLine* answered_ = nullptr;
};

// The same, but prompts and what commands print are not shown: a report speaks for them. The answers are the program's
// own, so that a prompt without one is no choice of the user.
class QuietTerminal : public ScriptTerminal {
  public:
    using ScriptTerminal::ScriptTerminal;
    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override;
    void print(std::wstring_view) override {}
    bool hasMissedAnswers() const override { return hasMissedAnswers_; }

  protected:
    std::string answerOrigin() const override { return {}; }

  private:
    bool hasMissedAnswers_ = false;
};

// A person at a keyboard, without line editing.
class PlainTerminal : public ConsoleTerminal {
  public:
    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override;
    bool isInteractive() const override { return true; }
};

// A person at a terminal, as well as this build can: with line editing, history and completion, or plain.
// complete tells what the text before the cursor can become; an empty history path keeps no history.
using Completer = std::function<host::Completion(std::wstring_view typed)>;
std::unique_ptr<ConsoleTerminal> makeInteractiveTerminal(Completer complete, const std::filesystem::path& history);

}  // namespace qrs::console
