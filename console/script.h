// The lines a run answers its prompts from: those of --execute, then those of a script.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"

namespace qrs::console {

struct ScriptLine {
    std::wstring text;
    std::string origin;  // "show.scr:7", UTF-8, for messages
};

class Script {
  public:
    // A line of --execute; number counts them from 1.
    void addLine(const std::string& utf8, int number);
    // The bytes of a script: UTF-8 or UTF-16 with or without byte-order mark, or else text of the ANSI code page; LF or
    // CRLF. A last line without line end counts as a line. Comment lines (";" first) are left out. False, with the
    // reason in error, when they are no text.
    bool addBytes(std::string_view bytes, const std::string& name, platform::Error& error);

    // The next line, or null at the end. Valid until lines are added.
    const ScriptLine* next();

  private:
    std::vector<ScriptLine> lines_;
    std::size_t position_ = 0;
};

}  // namespace qrs::console
