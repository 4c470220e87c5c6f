// Importing settings that were exported before.
#pragma once

#include <string>

namespace qrs::dialogs {

// Takes the options over and copies the files of a folder (ending in a backslash) over the installed ones, then loads
// the standard again. A folder that is not there is told on the command line; what cannot be copied is left as it was,
// and the rest is copied.
void importSettings(const std::wstring& folder);

// The command drsz.
void drsz();

}  // namespace qrs::dialogs
