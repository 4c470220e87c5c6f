// What the commands of this plug-in ask. Prompts are given in English and shown in the language of the user.
#pragma once

#include <string>
#include <vector>

#include "host/platform/error.h"

namespace qrs::audit {

// False when the user cancelled. An empty answer is allowed.
bool askText(const wchar_t* prompt, std::wstring& answer);
// The same for a path, in the inner form.
bool askPath(const wchar_t* prompt, std::wstring& answer);
// One of the words, the first one for Enter; choice is its place. keywords as acedInitGet takes them.
bool askChoice(const wchar_t* prompt, const std::vector<const wchar_t*>& words, std::size_t& choice);
// Drawings by name until an empty answer; none: the current one is meant.
bool askDrawings(std::vector<std::wstring>& paths);

// Prints a report, or writes it to the file named. False, with the reason in error, when it cannot be written.
bool deliver(const std::string& report, const std::wstring& path, platform::Error& error);

// The command has failed; tells why.
void fail(const std::string& message);
void fail(const std::wstring& message);
// The same because a file cannot be read.
void failReading(const std::string& message);
void failReading(const std::wstring& message);

}  // namespace qrs::audit
