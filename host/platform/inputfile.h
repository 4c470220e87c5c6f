// A file read piece by piece at given places: for files of which only a window shall lie in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::platform {

// An interface, so that what reads files piece by piece can be fed from memory too.
class QRS_HOST_PORT InputFile {
  public:
    // Null, with the reason in error, when the file cannot be opened or is no ordinary file.
    static std::unique_ptr<InputFile> open(const std::filesystem::path& native, Error& error);

    virtual ~InputFile() = default;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // The size in bytes when the file was opened.
    virtual std::uint64_t size() const = 0;

    // Reads up to count bytes from offset on; gives how many were read: fewer at the end of the file, and when the
    // system fails.
    virtual std::size_t readAt(std::uint64_t offset, char* target, std::size_t count) = 0;

  protected:
    InputFile() = default;
};

}  // namespace qrs::platform
