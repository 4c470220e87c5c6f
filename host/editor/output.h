// The text of the command line, kept without blank lines that nobody asked for.
#pragma once

#include <string>
#include <string_view>

#include "host/editor/hostapp.h"

namespace qrs::host::ed {

// Texts of the editor open with "\n" to begin a line of their own; where the output stands at the start of a line
// already that "\n" is left out.
class Output {
  public:
    explicit Output(Terminal& terminal) : terminal_(terminal) {}

    void print(std::wstring_view text);
    void error(std::wstring_view message);
    // Begins a line unless the output stands at the start of one.
    void freshLine();
    // Prints a prompt but for its last line, which is the one being asked on, and returns that.
    std::wstring beginPrompt(std::wstring_view prompt);
    // The same for a prompt that nobody sees, of which nothing is printed.
    std::wstring skipPrompt(std::wstring_view prompt);
    // An answer was typed after the prompt, or the prompt was left open.
    void answered() { atLineStart_ = true; }
    void leftOpen() { atLineStart_ = false; }

    Terminal& terminal() { return terminal_; }

  private:
    Terminal& terminal_;
    bool atLineStart_ = true;
};

}  // namespace qrs::host::ed
