// Work that is done beside the caller's, on another processor.
#pragma once

#include <functional>
#include <memory>

namespace qrs::platform {

// How many processors this program may use; 1 where the system does not tell.
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

}  // namespace qrs::platform
