// Which file the pipe-system standard comes from.
#pragma once

#include <string>

#include "console/options.h"
#include "host/suite/kernel/qrs_standard.h"

namespace qrs::console {

// Adds the command STANDARD, which names the file in use.
void registerStandardCommand();

// What a run with these options would load: the default file where the chosen one cannot be read, none where that one
// cannot be read either, with a complaint for each. The settings must be in use.
QrsExport::TStandardInUse standardToUse(const Options& options);

// For people: the file's path, or that there is none, and whether it is only the place of one, where the built-in
// standard serves.
std::string shownStandard(const QrsExport::TStandardInUse& standard);

}  // namespace qrs::console
