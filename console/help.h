// HELP: what the commands do, as their pages tell it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrs::console {

// Adds the commands HELP and ?: with a command's name after them on the line they print its page, else all commands.
void registerHelpCommand();

// A page of docs/commands in the program (made by the build).
struct CommandPage {
    std::string_view name;  // of its file
    std::string_view text;  // Markdown, UTF-8
};
extern const std::vector<CommandPage> kCommandPages;

}  // namespace qrs::console
