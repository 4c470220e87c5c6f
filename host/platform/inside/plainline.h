// A line of standard input that is read as bytes.
#pragma once

#include <string>

#include "host/platform/process.h"

namespace qrs::platform {

// As readTypedLine: Line or End.
Typed readPlainLine(std::wstring& line);

}  // namespace qrs::platform
