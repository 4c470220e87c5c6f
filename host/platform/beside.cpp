// Threads.
#include "host/platform/beside.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace qrs::platform {

struct Beside::Thread {
    std::thread thread;
};

unsigned processorCount() {
    return std::max(1U, std::thread::hardware_concurrency());
}

Beside::Beside(std::function<void()> work) {
    auto made = std::make_unique<Thread>();
    try {
        made->thread = std::thread(std::move(work));
    } catch (const std::system_error&) {
        return;
    }
    thread_ = std::move(made);
}

Beside::~Beside() {
    wait();
}

void Beside::wait() {
    if (thread_ != nullptr && thread_->thread.joinable()) thread_->thread.join();
}

}  // namespace qrs::platform
