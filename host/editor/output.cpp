// The text of the command line.
#include "host/editor/output.h"

namespace qrs::host::ed {

void Output::print(std::wstring_view text) {
    if (atLineStart_ && !text.empty() && text.front() == L'\n') text.remove_prefix(1);
    if (text.empty()) return;
    atLineStart_ = text.back() == L'\n';
    terminal_.print(text);
}

void Output::error(std::wstring_view message) {
    freshLine();
    terminal_.error(message);
}

void Output::freshLine() {
    if (!atLineStart_) print(L"\n");
}

std::wstring Output::beginPrompt(std::wstring_view prompt) {
    const std::size_t lastEnd = prompt.rfind(L'\n');
    if (lastEnd == std::wstring_view::npos) return std::wstring(prompt);
    print(prompt.substr(0, lastEnd + 1));
    return std::wstring(prompt.substr(lastEnd + 1));
}

std::wstring Output::skipPrompt(std::wstring_view prompt) {
    const std::size_t lastEnd = prompt.rfind(L'\n');
    if (lastEnd == std::wstring_view::npos) return std::wstring(prompt);
    freshLine();
    return std::wstring(prompt.substr(lastEnd + 1));
}

}  // namespace qrs::host::ed
