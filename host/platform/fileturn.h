// Turns at a file that several programs write over.
#pragma once

#include <filesystem>
#include <memory>

#include "host/platform/port.h"

namespace qrs::platform {

// Held by one program at a time of those that take it for one existing file: what is looked at and what is written over
// it then belong together. Where the system keeps no such turns, nobody waits.
class QRS_HOST_PORT FileTurn {
  public:
    explicit FileTurn(const std::filesystem::path& native);
    ~FileTurn();
    FileTurn(const FileTurn&) = delete;
    FileTurn& operator=(const FileTurn&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace qrs::platform
