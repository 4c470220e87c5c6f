// Threads.
#include "host/platform/beside.h"

#include <algorithm>
#include <exception>
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

void doBoth(const std::function<void()>& one, const std::function<void()>& other) {
    if (processorCount() == 1) return one(), other();
    std::exception_ptr failure;
    bool isDone = false;
    {
        Beside beside([&] {
            try {
                other();
            } catch (...) {
                failure = std::current_exception();
            }
        });
        one();
        isDone = beside.hasBegun();
    }
    if (failure) std::rethrow_exception(failure);
    if (!isDone) other();
}

void inHalves(std::size_t count, const std::function<void(std::size_t begin, std::size_t end)>& work) {
    constexpr std::size_t kWorthSharing = 4096;
    const std::size_t middle = count < kWorthSharing ? count : count / 2;
    if (middle == count) return work(0, count);
    doBoth([&] { work(0, middle); }, [&] { work(middle, count); });
}

}  // namespace qrs::platform
