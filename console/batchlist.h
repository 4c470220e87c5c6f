// The drawings of a batch, and where each is written.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "console/options.h"
#include "host/platform/error.h"

namespace qrs::console {

struct BatchItem {
    std::filesystem::path drawing;
    bool isListed = false;
    std::filesystem::path output;  // empty: none, or in place
};

// The names in a list: one a line, LF or CR LF, or ended by NUL when there is one; empty lines are none.
std::vector<std::string> namesOf(std::string_view list);

// The drawings of the command line, then those of the list; bytes of the list are given when it is standard input.
// False, with the reason in error, when the list cannot be read.
bool collectDrawings(const Options& options, std::vector<BatchItem>& items, platform::Error& error);

// Gives each its place in the folder: one named on the command line its file name there, one of a list the path that
// the list has, as far as it leads downwards; so a part of a list has the same places as the whole.
// False, with the reason in error, when two would have one place.
bool chooseOutputs(const std::filesystem::path& folder, std::vector<BatchItem>& items, platform::Error& error);

}  // namespace qrs::console
