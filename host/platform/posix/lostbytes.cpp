// A table that the handler of a signal can read: it takes no lock and no memory.
#include "host/platform/posix/lostbytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <mutex>

#include "host/platform/lostfile.h"

namespace qrs::platform {

namespace {

struct Slot {
    std::atomic<bool> isTaken{false};
    std::atomic<const char*> begin{nullptr};
    std::atomic<std::size_t> size{0};
    std::atomic<bool> hasLost{false};
    std::atomic<bool> isUntold{false};
    const std::filesystem::path* native = nullptr;
};

constexpr std::size_t kSlots = 256;  // mapped files at one time
Slot slots[kSlots];
std::uintptr_t pageSize = 0;

// The file of a loss that nobody was told before its mapping went.
struct Gone {
    std::mutex mutex;
    std::filesystem::path native;
};
Gone& gone() {
    static Gone one;
    return one;
}

}  // namespace

WatchedMapping::WatchedMapping(const char* begin, std::size_t size, const std::filesystem::path& native) : slot_(0) {
    if (pageSize == 0) pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    while (slot_ < kSlots && slots[slot_].isTaken.exchange(true))
        ++slot_;
    if (slot_ == kSlots) return;
    Slot& slot = slots[slot_];
    slot.native = &native;
    slot.hasLost = false;
    slot.isUntold = false;
    slot.size = size;
    slot.begin = begin;
}

WatchedMapping::~WatchedMapping() {
    if (slot_ == kSlots) return;
    Slot& slot = slots[slot_];
    slot.begin = nullptr;
    if (slot.isUntold.exchange(false)) {
        const std::lock_guard<std::mutex> lock(gone().mutex);
        gone().native = *slot.native;
    }
    slot.isTaken = false;
}

bool WatchedMapping::hasLost() const {
    return slot_ < kSlots && slots[slot_].hasLost;
}

bool takeLoss(std::string_view mapped) {
    for (Slot& slot : slots) {
        if (mapped.empty() || slot.begin != mapped.data()) continue;
        slot.isUntold = false;
        return slot.hasLost;
    }
    return false;
}

bool putZeros(const void* address) {
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    for (Slot& slot : slots) {
        const auto begin = reinterpret_cast<std::uintptr_t>(slot.begin.load());
        const std::uintptr_t end = begin + slot.size;
        if (begin == 0 || at < begin || at >= end) continue;
        const std::uintptr_t page = at / pageSize * pageSize;
        void* const zeros =
            mmap(reinterpret_cast<void*>(page), end - page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
        if (zeros == MAP_FAILED) return false;
        slot.hasLost = true;
        slot.isUntold = true;
        return true;
    }
    return false;
}

std::filesystem::path lostFile() {
    for (const Slot& slot : slots)
        if (slot.begin != nullptr && slot.isUntold) return *slot.native;
    const std::lock_guard<std::mutex> lock(gone().mutex);
    return gone().native;
}

void forgetLostFiles() {
    for (Slot& slot : slots)
        slot.isUntold = false;
    const std::lock_guard<std::mutex> lock(gone().mutex);
    gone().native.clear();
}

}  // namespace qrs::platform
