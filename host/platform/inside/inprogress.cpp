// A list of paths, and one lock for making, forgetting and removing them.
#include "host/platform/inside/inprogress.h"
#include "host/platform/text.h"

#include <atomic>
#include <mutex>
#include <random>
#include <set>
#include <system_error>

namespace qrs::platform {

namespace {

struct InProgress {
    std::mutex mutex;
    std::set<std::filesystem::path> paths;
};

InProgress& inProgress() {
    static InProgress list;
    return list;
}

std::atomic<void (*)()> doneFirst{nullptr};

}  // namespace

bool makeTemporary(const std::filesystem::path& path, const std::function<bool()>& make) {
    InProgress& list = inProgress();
    const std::lock_guard<std::mutex> lock(list.mutex);
    // Entered first: when memory has run out there is no file that nobody removes.
    const auto place = list.paths.insert(path).first;
    if (make()) return true;
    list.paths.erase(place);
    return false;
}

void forgetTemporary(const std::filesystem::path& path) {
    InProgress& list = inProgress();
    const std::lock_guard<std::mutex> lock(list.mutex);
    list.paths.erase(path);
}

bool settleTemporary(const std::filesystem::path& path, const std::function<bool()>& work) {
    InProgress& list = inProgress();
    const std::lock_guard<std::mutex> lock(list.mutex);
    if (!work()) return false;
    list.paths.erase(path);
    return true;
}

void whenEndedAtOnce(void (*act)()) {
    doneFirst = act;
}

void removeTemporariesForGood() {
    InProgress& list = inProgress();
    // Whoever waits for what is ended here gets no further than to the next temporary file.
    list.mutex.lock();
    if (void (*act)() = doneFirst) act();
    for (const std::filesystem::path& path : list.paths) {
        std::error_code ignored;  // it may be renamed just now
        std::filesystem::remove_all(path, ignored);
    }
}

std::string unpredictableName() {
    std::random_device source;
    std::string name;
    for (int i = 0; i < 2; ++i) {
        for (unsigned bits = source(), digit = 0; digit < 8; ++digit, bits >>= 4) {
            name += kSmallHexDigits[bits & 15];
        }
    }
    return name;
}

}  // namespace qrs::platform
