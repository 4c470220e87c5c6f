// Several drawings, one after the other, each in a run of its own.
#pragma once

#include <filesystem>

#include "console/options.h"

namespace qrs::console {

// Several drawings, a list, or a report: each drawing is opened by another process of this program, which neither a
// failure nor a crash of the others reaches.
bool isBatch(const Options& options);

// Whether a name on the command line is that of a folder: it ends in a slash, or a folder is there.
bool isFolderName(const std::filesystem::path& name);

// The highest exit code of all the runs.
ExitCode runBatch(const Options& options);

}  // namespace qrs::console
