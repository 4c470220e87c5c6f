// Arguments, environment and standard streams on POSIX systems.
#include "host/platform/process.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "host/platform/codepage.h"
#include "host/platform/laststream.h"
#include "host/platform/posix/signalhold.h"

namespace qrs::platform {

namespace {

bool writeAll(int descriptor, std::string_view bytes) {
    const SignalHold hold;
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            // A terminal or pipe that somebody has set not to wait: wait here.
            pollfd ready{descriptor, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::vector<std::string> utf8Arguments(int count, char** arguments) {
    return std::vector<std::string>(arguments, arguments + count);
}

bool isTerminal(int descriptor) {
    return isatty(descriptor) == 1;
}

std::optional<std::wstring> environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::wstring>(fromUtf8(value)) : std::nullopt;
}

bool writeStandardOutput(std::string_view bytes) {
    return writeAll(STDOUT_FILENO, bytes);
}

bool writeStandardError(std::string_view bytes) {
    return writeAll(STDERR_FILENO, bytes);
}

void writeLastLine(std::string_view bytes) {
    pollfd ready{STDERR_FILENO, POLLOUT, 0};
    if (poll(&ready, 1, 1000) == 1) writeAll(STDERR_FILENO, bytes);
}

}  // namespace qrs::platform
