// A limit on the time the program may take.
#pragma once

#include <memory>
#include <string>

#include "host/platform/port.h"

namespace qrs::platform {

// When the seconds have passed before it is destroyed: prints one line to standard error, removes the
// temporary files AtomicFile has in progress, and ends the process at once with the exit code (nothing else runs; no
// file is half written, since only a rename puts one in place).
//
//     Deadline deadline(30.0, "qrsconsole: no answer within 30 seconds", 1);
class QRS_HOST_PORT Deadline {
  public:
    Deadline(double seconds, std::string line, int exitCode);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace qrs::platform
