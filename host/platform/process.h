// The program's arguments, environment and standard streams.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

// The arguments of main in UTF-8, the program's name first. On POSIX the bytes are given as they came.
QRS_HOST_PORT std::vector<std::string> utf8Arguments(int count, char** arguments);

// True when descriptor 0, 1 or 2 is a terminal.
QRS_HOST_PORT bool isTerminal(int descriptor);

// A variable of the environment; nothing when it is not set.
QRS_HOST_PORT std::optional<std::wstring> environment(const char* name);

// Writes all of the bytes, at once and unbuffered. False when the other side is gone or the disk is full; a closed pipe
// does not end the process.
QRS_HOST_PORT bool writeStandardOutput(std::string_view bytes);
QRS_HOST_PORT bool writeStandardError(std::string_view bytes);

}  // namespace qrs::platform
