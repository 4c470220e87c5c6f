// Pieces of work that two threads do beside each other, and whose results one of them takes in order.
//
//     InOrder<Piece> work(cut, find, tell);
//     work.run();
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <utility>

#include "host/platform/beside.h"

namespace qrs::host {

template <typename Piece>
class InOrder {
  public:
    // Makes the next piece of one that was taken; false when there is none. Never in both threads at once.
    using Cut = std::function<bool(Piece&)>;
    // Thread is 0 or 1.
    using Work = std::function<void(Piece&, std::size_t thread)>;
    // In the thread that called run.
    using Take = std::function<void(const Piece&)>;

    InOrder(Cut cut, Work work, Take take) : cut_(std::move(cut)), work_(std::move(work)), take_(std::move(take)) {}

    // Returns when all is taken. What one of them throws is thrown here, and no further piece is begun.
    void run() {
        platform::doBoth([this] { orFail(&InOrder::takeAll); }, [this] { orFail(&InOrder::help); });
    }

  private:
    using Lock = std::unique_lock<std::mutex>;
    static constexpr std::size_t kSlots = 16;
    // On cache lines of its own, so that work on one does not hold up work on the next.
    struct alignas(64) Slot {
        Piece piece;
        bool isDone = false;
    };

    void orFail(void (InOrder::*part)()) {
        try {
            (this->*part)();
        } catch (...) {
            const Lock lock(mutex_);
            hasFailed_ = true;
            changed_.notify_one();
            throw;
        }
    }
    // Takes what is done, and otherwise does the next piece itself.
    void takeAll() {
        for (Lock lock(mutex_); !hasFailed_;) {
            Slot& slot = slots_[taken_ % kSlots];
            if (taken_ != begun_ && slot.isDone) {
                lock.unlock();
                take_(slot.piece);
                lock.lock();
                ++taken_;
                changed_.notify_one();
            } else if (!doNext(lock, 0)) {
                if (taken_ == begun_) return;
                changed_.wait(lock);
            }
        }
    }
    void help() {
        for (Lock lock(mutex_); !hasFailed_;)
            if (!doNext(lock, 1)) {
                if (isAllBegun_) return;
                changed_.wait(lock);
            }
    }
    // False when there is none, or too many wait to be taken.
    bool doNext(Lock& lock, std::size_t thread) {
        if (isAllBegun_ || begun_ - taken_ == kSlots) return false;
        Slot& slot = slots_[begun_ % kSlots];
        slot.isDone = false;
        if (!cut_(slot.piece)) {
            isAllBegun_ = true;
            changed_.notify_one();
            return false;
        }
        ++begun_;
        lock.unlock();
        work_(slot.piece, thread);
        lock.lock();
        slot.isDone = true;
        changed_.notify_one();
        return true;
    }

    Cut cut_;
    Work work_;
    Take take_;
    std::mutex mutex_;  // for what follows, but for the pieces that are worked on
    std::condition_variable changed_;
    std::array<Slot, kSlots> slots_;
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    bool isAllBegun_ = false;
    bool hasFailed_ = false;
};

}  // namespace qrs::host
