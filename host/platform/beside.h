// Work that is done beside the caller's, on another processor.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace qrs::platform {

// How many processors the machine has; 1 where the system does not tell.
unsigned processorCount();

class Beside {
  public:
    // Begins at once. The work must not throw, and what it uses must live until wait() or the end of this.
    explicit Beside(std::function<void()> work);
    ~Beside();
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    // False when the system had no thread to give: nothing is done then.
    bool hasBegun() const { return thread_ != nullptr; }
    // Returns when the work is done; what it wrote can be read from then on.
    void wait();

  private:
    struct Thread;
    std::unique_ptr<Thread> thread_;
};

// Does both, beside each other where there is another processor. What they throw is thrown here when both have ended.
void doBoth(const std::function<void()>& one, const std::function<void()>& other);
// Does the work for [begin, end) of so many in two halves, likewise, where they are many.
void inHalves(std::size_t count, const std::function<void(std::size_t begin, std::size_t end)>& work);

}  // namespace qrs::platform
