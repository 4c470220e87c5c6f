// Printing, answers from scripts, and answers typed without line editing.
#include "console/terminals.h"

#include <algorithm>

#include "console/run.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/process.h"

namespace qrs::console {

using platform::translated;

void ConsoleTerminal::write(std::string_view utf8) {
    if (outputWorks_ && !utf8.empty()) outputWorks_ = platform::writeStandardOutput(utf8);
}

void ConsoleTerminal::print(std::wstring_view text) {
    write(platform::toUtf8(text));
}

void ConsoleTerminal::error(std::wstring_view message) {
    complain(answerOrigin() + platform::toUtf8(message));
}

// In the log, too, where a failure would stand.
void ConsoleTerminal::refused(std::wstring_view message) {
    std::string text = platform::toUtf8(message);
    std::replace(text.begin(), text.end(), '\n', ' ');
    complain(answerOrigin() + text);
}

void ConsoleTerminal::commandEnded(std::wstring_view name, host::CommandResult result) {
    commands_.push_back({platform::toUtf8(name), result});
}

host::Reply ScriptTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    const ScriptLine* next = script_.next();
    if (next == nullptr) return host::Reply::End;
    answered_ = next;
    line = next->text;
    print(prompt + line + L"\n");
    return host::Reply::Line;
}

host::Reply ScriptTerminal::readMore(std::wstring& line) {
    const ScriptLine* const first = answered_;
    const host::Reply reply = ConsoleTerminal::readMore(line);
    answered_ = first;
    return reply;
}

std::string ScriptTerminal::answerOrigin() const {
    return answered_ == nullptr ? std::string() : answered_->origin + ": ";
}

host::Reply QuietTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    const host::Reply reply = ScriptTerminal::readLine(prompt, line);
    if (reply == host::Reply::End && prompt != translated(L"Command: ")) hasMissedAnswers_ = true;
    return reply;
}

host::Reply PlainTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    print(prompt);
    // Nobody sees the prompts any more.
    if (platform::isOutputDropped()) return host::Reply::End;
    switch (platform::readTypedLine(line)) {
        case platform::Typed::Line:
            return host::Reply::Line;
        case platform::Typed::Leaving:
            if (prompt != translated(L"Command: ")) return host::Reply::Cancel;
            // Typed out, so that the command asks before changes are lost.
            line = L"QUIT";
            write("QUIT\n");
            return host::Reply::Line;
        case platform::Typed::Cancelled:
            return host::Reply::Cancel;
        default:
            write("\n");
            return host::Reply::End;
    }
}

}  // namespace qrs::console
