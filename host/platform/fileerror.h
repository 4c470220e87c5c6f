// Messages about files: one line, "path: reason".
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

#include "host/platform/error.h"

namespace qrs::platform {

// Sets the error and gives false, to be returned at once. Control characters of the path are shown as '?'.
bool fail(Error& error, const std::filesystem::path& native, std::string_view reason);
bool fail(Error& error, const std::filesystem::path& native, const std::error_code& reason);

// Why a mapped file cannot be gone on with.
constexpr std::string_view kChangedSinceOpened = "was changed by another program after it was opened; not saved";

// The path as UTF-8 on one line.
std::string shownPath(const std::filesystem::path& native);

}  // namespace qrs::platform
