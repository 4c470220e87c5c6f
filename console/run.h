// One run of the program, from its options to its exit code.
#pragma once

#include <string>

#include "console/options.h"

namespace qrs::console {

// Prints what goes wrong itself.
ExitCode run(Options options);
// The bytes of standard input to its end.
std::string readStandardInput();

// One line on standard error, after "qrsconsole: ". Control characters are shown as '?'.
void complain(const std::string& message);

}  // namespace qrs::console
