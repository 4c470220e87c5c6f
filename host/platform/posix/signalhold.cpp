// Blocks the signals that a failed write raises, and takes back those that came meanwhile.
#include "host/platform/posix/signalhold.h"

#include <ctime>

namespace qrs::platform {

namespace {
constexpr int kHeld[] = {SIGPIPE, SIGXFSZ};
}

SignalHold::SignalHold() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : kHeld)
        sigaddset(&held, signal);
    sigpending(&pendingBefore_);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
}

SignalHold::~SignalHold() {
    sigset_t pending;
    sigset_t raised;
    sigemptyset(&raised);
    bool any = false;
    sigpending(&pending);
    for (const int signal : kHeld) {
        if (!sigismember(&pending, signal) || sigismember(&pendingBefore_, signal)) continue;
        sigaddset(&raised, signal);
        any = true;
    }
    const timespec now{};
    while (any && sigtimedwait(&raised, nullptr, &now) > 0) {
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace qrs::platform
