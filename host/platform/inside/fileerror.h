// Messages about files: one line, "path: reason".
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "host/platform/error.h"
#include "host/platform/language.h"

namespace qrs::platform {

// Sets the error and gives false, to be returned at once. Control characters of the path are shown as '?'.
bool fail(Error& error, const std::filesystem::path& native, std::string_view reason);
bool fail(Error& error, const std::filesystem::path& native, const std::error_code& reason);

// The system's word for a reason, in UTF-8, without a line end.
std::string textOf(const std::error_code& reason);

// Why a file that is no file of bytes on a disk is not read: a pipe or device, a folder.
constexpr const char* kNoOrdinaryFile = untranslated("is no ordinary file");
constexpr const char* kIsFolder = untranslated("is a folder");

// Why a file of more bytes is not read.
std::string largerThan(std::uint64_t most);

// Why a mapped file cannot be gone on with.
constexpr const char* kChangedSinceOpened =
    untranslated("was changed by another program after it was opened; not saved");

// The path as UTF-8 on one line.
std::string shownPath(const std::filesystem::path& native);

}  // namespace qrs::platform
