// Writing without being ended by a signal.
#pragma once

#include <csignal>

namespace qrs::platform {

// While it lives, SIGPIPE and SIGXFSZ raised by this thread's writes stay away from the process: the write fails with
// an error number instead. Signals of that kind that were pending before stay so.
class SignalHold {
  public:
    SignalHold();
    ~SignalHold();
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;

  private:
    sigset_t before_;
    sigset_t pendingBefore_;
};

}  // namespace qrs::platform
