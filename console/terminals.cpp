// Printing, answers from scripts, and answers typed without line editing.
#include "console/terminals.h"

#include <iostream>

#include "host/platform/codepage.h"
#include "host/platform/process.h"

namespace qrs::console {

void ConsoleTerminal::write(std::string_view utf8) {
    if (outputWorks_ && !utf8.empty()) outputWorks_ = platform::writeStandardOutput(utf8);
}

void ConsoleTerminal::print(std::wstring_view text) {
    if (afterAnswer_ && !text.empty() && text.front() == L'\n') {
        afterAnswer_ = false;
        text.remove_prefix(1);
    }
    if (text.empty()) return;
    write(platform::toUtf8(text));
    atLineStart_ = text.back() == L'\n';
    afterAnswer_ = false;
}

void ConsoleTerminal::error(std::wstring_view message) {
    if (!atLineStart_) write("\n");
    answerEnded();
    platform::writeStandardError("qrsconsole: " + answerOrigin() + platform::toUtf8(message) + "\n");
}

std::wstring ConsoleTerminal::placedPrompt(std::wstring_view prompt) const {
    if (afterAnswer_ && !prompt.empty() && prompt.front() == L'\n') prompt.remove_prefix(1);
    return std::wstring(prompt);
}

namespace {

// Takes "^C", typed as two characters or as the control character, and Esc off the front. True when there was one.
bool takeCancel(std::wstring& line) {
    if (!line.empty() && (line.front() == L'\x03' || line.front() == L'\x1B')) {
        line.erase(0, 1);
        return true;
    }
    if (line.size() >= 2 && line[0] == L'^' && (line[1] == L'C' || line[1] == L'c')) {
        line.erase(0, 2);
        return true;
    }
    return false;
}

}  // namespace

host::Reply ScriptTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    if (!hasRest_) {
        const ScriptLine* next = script_.next();
        if (next == nullptr) return host::Reply::End;
        rest_ = next->text;
    }
    hasRest_ = false;
    if (takeCancel(rest_)) {
        hasRest_ = !rest_.empty();
        print(prompt);
        return host::Reply::Cancel;
    }
    line = rest_;
    print(prompt + line + L"\n");
    answerEnded();
    return host::Reply::Line;
}

std::string ScriptTerminal::answerOrigin() const {
    const ScriptLine* current = script_.current();
    return current == nullptr ? std::string() : current->origin + ": ";
}

host::Reply PlainTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    print(prompt);
    std::string bytes;
    if (!std::getline(std::cin, bytes)) return host::Reply::End;
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    answerEnded();
    if (!platform::decodeStrict(platform::kUtf8, bytes, line)) line = platform::decode(platform::ansiCodePage(), bytes);
    return takeCancel(line) ? host::Reply::Cancel : host::Reply::Line;
}

}  // namespace qrs::console
