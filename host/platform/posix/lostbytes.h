// Mapped files from which another program has cut bytes: zeros take the place of those that are read.
#pragma once

#include <cstddef>
#include <filesystem>

namespace qrs::platform {

// Watches a mapping as long as it lives. The path is kept by the caller.
class WatchedMapping {
  public:
    WatchedMapping(const char* begin, std::size_t size, const std::filesystem::path& native);
    ~WatchedMapping();
    WatchedMapping(const WatchedMapping&) = delete;
    WatchedMapping& operator=(const WatchedMapping&) = delete;

    // True when bytes were gone when somebody read them.
    bool hasLost() const;

  private:
    std::size_t slot_;  // past the last one when all were taken: not watched
};

// For the handler of the signal: puts zeros from the address on. False when it lies in no watched mapping.
bool putZeros(const void* address);

}  // namespace qrs::platform
