// A thread that waits for the end of the time, says its line and ends the process.
#include "host/platform/watch.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/laststream.h"

namespace qrs::platform {

struct Deadline::State {
    std::mutex mutex;
    std::condition_variable changed;
    bool cancelled = false;
    std::thread watcher;

    void watch(std::chrono::duration<double> limit, const std::string& line, int exitCode);
};

void Deadline::State::watch(std::chrono::duration<double> limit, const std::string& line, int exitCode) {
    std::unique_lock<std::mutex> lock(mutex);
    if (changed.wait_for(lock, limit, [this] { return cancelled; })) return;
    removeTemporariesForGood();
    writeLastLine(line + '\n');
    // Nothing of the program may run any more, destructors of static objects included: its other threads still do.
    std::_Exit(exitCode);
}

Deadline::Deadline(double seconds, std::string line, int exitCode) : state_(std::make_unique<State>()) {
    // A hundred years: more than the clock of the wait can hold would come round to the past.
    constexpr double kLongest = 3.2e9;
    const std::chrono::duration<double> limit(seconds < kLongest ? seconds : kLongest);
    state_->watcher = std::thread(
        [state = state_.get(), limit, text = std::move(line), exitCode] { state->watch(limit, text, exitCode); });
}

Deadline::~Deadline() {
    {
        const std::lock_guard<std::mutex> lock(state_->mutex);
        state_->cancelled = true;
    }
    state_->changed.notify_all();
    state_->watcher.join();
}

}  // namespace qrs::platform
