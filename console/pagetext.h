// The command pages as a terminal shows them: Markdown without its marks, in lines that fit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrs::console {

// A row of a page's table of commands: | [NAME](#name) | what it does |
struct CommandRow {
    std::wstring name;
    std::wstring sentence;
};
struct CommandTask {
    std::wstring heading;
    std::vector<CommandRow> commands;
};
// The tables of commands of a page, each with its heading.
std::vector<CommandTask> tasksOf(std::string_view page);

// A page up to the end of its first example's script, without what that prints; empty when there is nothing.
std::wstring shownPage(std::string_view page);

// The section of a page whose heading, "### NAME, OTHER", has the name, in the same form; empty when there is none.
std::wstring shownSection(std::string_view page, std::wstring_view name);

// A text in lines of so many columns, those after the first indented.
std::wstring wrapped(std::wstring_view text, std::size_t columns, std::size_t indent);

}  // namespace qrs::console
