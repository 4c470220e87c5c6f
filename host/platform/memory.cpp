// Memory that has run out: what an exception then says, and the end of a program that cannot go on.
#include <atomic>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <utility>

#include "host/platform/error.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/laststream.h"
#include "host/platform/language.h"
#include "host/platform/process.h"

namespace qrs::platform {

namespace {

struct LastWords {
    std::string line;
    int exitCode;
    std::unique_ptr<char[]> reserve;  // for what is to be done at the end
};
LastWords* whenOut = nullptr;  // kept to the end of the process
std::atomic<bool> hasRunOut{false};
std::terminate_handler otherwise = nullptr;

[[noreturn]] void noteThatItRanOut() {
    hasRunOut = true;
    throw std::bad_alloc();
}

[[noreturn]] void endWithoutMemory() {
    if (!hasRunOut) {
        otherwise();
        std::abort();
    }
    whenOut->reserve.reset();
    removeTemporariesForGood();
    writeLastLine(whenOut->line);
    std::_Exit(whenOut->exitCode);
}

}  // namespace

std::string reasonOf(const std::exception& exception) {
    if (dynamic_cast<const std::bad_alloc*>(&exception) != nullptr) return translated("memory has run out");
    return exception.what();
}

void endWhenMemoryRunsOut(std::string line, int exitCode) {
    constexpr std::size_t kReserve = std::size_t{64} << 10;
    static LastWords words;
    words = {std::move(line) + '\n', exitCode, std::make_unique<char[]>(kReserve)};
    whenOut = &words;
    std::set_new_handler(&noteThatItRanOut);
    otherwise = std::set_terminate(&endWithoutMemory);
}

}  // namespace qrs::platform
