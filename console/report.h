// Reports about drawing files: what one holds, where two differ.
#pragma once

#include "console/options.h"

namespace qrs::console {

// Prints what --info or --compare asks for. CannotRead for a file that cannot be read; CommandFailed when the two
// drawings differ.
ExitCode report(const Options& options);

}  // namespace qrs::console
