// Arguments, environment and standard streams on POSIX systems.
#include "host/platform/process.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include "host/platform/codepage.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/laststream.h"
#include "host/platform/inside/plainline.h"
#include "host/platform/posix/lostbytes.h"
#include "host/platform/posix/signalhold.h"

namespace qrs::platform {

namespace {

struct LastWords {
    std::string line;
    int exitCode;
};
const LastWords* whenCut = nullptr;  // kept to the end of the process

// The signal comes at the very instruction that reads the lost bytes. Neither the allocator nor the list of temporary
// files reads such bytes, so both may be used here.
void endAtLostBytes(int, siginfo_t* signal, void*) {
    if (putZeros(signal->si_addr)) return;
    removeTemporariesForGood();
    writeLastLine(whenCut->line);
    std::_Exit(whenCut->exitCode);
}

bool outputDropped = false;

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
        } else if (errno == EPIPE) {
            if (descriptor == STDOUT_FILENO) outputDropped = true;
            return true;
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

void keepStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) != -1 || errno != EBADF) continue;
        // The lowest free number: this one. Nothing can be written to it, so that lost output is noticed.
        if (open("/dev/null", O_RDONLY) == -1) return;
    }
}

void removeTemporariesWhenEnded(bool withInterrupt) {
    sigset_t watched;
    sigemptyset(&watched);
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction now {};
        const bool isIgnored = sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
        if (!isIgnored && (signal != SIGINT || withInterrupt)) sigaddset(&watched, signal);
    }
    // Taken by a thread that waits for them: a handler could use neither the allocator nor a lock.
    pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    try {
        std::thread([watched] {
            int signal = 0;
            if (sigwait(&watched, &signal) != 0) return;
            removeTemporariesForGood();
            pthread_sigmask(SIG_UNBLOCK, &watched, nullptr);
            raise(signal);
        }).detach();
    } catch (const std::system_error&) {
        // No thread is to be had: who ends the program leaves its temporaries, as one who kills it does.
        pthread_sigmask(SIG_UNBLOCK, &watched, nullptr);
    }
}

bool isTerminal(int descriptor) {
    return isatty(descriptor) == 1;
}

std::optional<char> readInputByte(int milliseconds) {
    char byte = 0;
    for (;;) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        const int ready = poll(&input, 1, milliseconds);
        if (ready == 0) return std::nullopt;
        const ssize_t count = ready > 0 ? read(STDIN_FILENO, &byte, 1) : -1;
        if (count == 1) return byte;
        if (count == 0 || (errno != EINTR && errno != EAGAIN)) return std::nullopt;
    }
}

Typed readTypedLine(std::wstring& line) {
    return readPlainLine(line);
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

bool isOutputDropped() {
    return outputDropped;
}

void endWhenMappedFileIsCut(std::string line, int exitCode) {
    static LastWords words;
    words = {std::move(line) + '\n', exitCode};
    whenCut = &words;
    struct sigaction action {};
    action.sa_sigaction = &endAtLostBytes;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGBUS, &action, nullptr);
}

void writeLastLine(std::string_view bytes) {
    pollfd ready{STDERR_FILENO, POLLOUT, 0};
    if (poll(&ready, 1, 1000) == 1) writeAll(STDERR_FILENO, bytes);
}

}  // namespace qrs::platform
