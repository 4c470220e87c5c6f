// Where the program's own files lie: the system folder, the module, other plug-ins.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "console/options.h"

namespace qrs::console {

// A folder as the application is told it: whole, since the working folder may be another one later; inner form.
std::wstring innerFolder(const std::filesystem::path& folder);

// The system folder of --system, else the one installed with the program; inner form.
std::wstring systemFolder(const Options& options);

// Where plug-ins lie: beside the program, and where the module is installed.
std::vector<std::filesystem::path> pluginFolders();

// The plug-ins to load, in this order: the module, unless --no-module or a --plugin names one, then those of --plugin.
std::vector<std::filesystem::path> pluginsToLoad(const Options& options);

}  // namespace qrs::console
