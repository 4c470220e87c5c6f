// Which file the pipe-system standard comes from.
#pragma once

#include <string>

#include "console/options.h"
#include "host/suite/kernel/qrs_standard.h"

namespace qrs::console {

// Adds the command STANDARD, which names the file in use.
void registerStandardCommand();

// What a run with these options would load. The settings must be in use.
QrsExport::TStandardInUse standardToUse(const Options& options);

// For people: the file's path, and whether it is only the place of one, where the built-in standard serves.
std::string shownStandard(const QrsExport::TStandardInUse& standard);

}  // namespace qrs::console
