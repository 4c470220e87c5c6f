// What the commands of this plug-in ask. Prompts are given in English and shown in the language of the user.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/platform/error.h"

namespace qrs::audit {

// False when the user cancelled. An empty answer is allowed.
bool askText(const wchar_t* prompt, std::wstring& answer);
// The same for a path. One typed with slashes alone means the file of just that name.
bool askPath(const wchar_t* prompt, std::filesystem::path& answer);
std::filesystem::path pathTyped(const std::wstring& answer);
// One of the words, the first one for Enter; choice is its place. keywords as acedInitGet takes them.
bool askChoice(const wchar_t* prompt, const std::vector<const wchar_t*>& words, std::size_t& choice);
// Drawings by name until an empty answer, each file once; none: the current one is meant.
bool askDrawings(std::vector<std::filesystem::path>& paths);

// False, with the reason in error, when nothing has just that name: the inner form also finds names that differ in
// their capitals.
bool isThere(const std::filesystem::path& native, platform::Error& error);

// False, after a message, when a report would be written over what it tells of: one of these files, or what was
// accepted beside it. An empty path is the command line.
bool isFree(const std::filesystem::path& report, const std::vector<std::filesystem::path>& read);
// Prints a report, or writes it to the file named. False, after a message, when it cannot be written.
bool deliver(const std::string& report, const std::filesystem::path& file);

// The command has failed; tells why.
void fail(const std::string& message);
void fail(const std::wstring& message);
// The same because a file cannot be read.
void failReading(const std::string& message);
void failReading(const std::wstring& message);

}  // namespace qrs::audit
