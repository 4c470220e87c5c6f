// The temporary files being written now, for a program that must end at once.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace qrs::platform {

// Enters the path when make, called under the list's lock, gives true; make creates the file. Gives make's answer.
bool makeTemporary(const std::filesystem::path& path, const std::function<bool()>& make);
// Takes the path from the list: it was renamed or removed.
void forgetTemporary(const std::filesystem::path& path);

// Does the work, under the list's lock, by which the file gets its final name, and takes it from the list when work
// gives true: the program does not end in between. Gives work's answer. Work makes and forgets no temporary file.
bool settleTemporary(const std::filesystem::path& path, const std::function<bool()>& work);

// What is to be done first when the process must end at once; one thing at most.
void whenEndedAtOnce(void (*act)());

// Removes all of them, folders with what is in them, and lets nobody make another one: to be followed by the end of the
// process.
void removeTemporariesForGood();

// 64 bits nobody can foretell, as 16 hexadecimal digits.
std::string unpredictableName();

}  // namespace qrs::platform
