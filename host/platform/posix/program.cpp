// Running another program on POSIX systems.
#include "host/platform/program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__linux__)
#include <sys/prctl.h>
#endif

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/language.h"
#include "host/platform/posix/handle.h"

namespace qrs::platform {

namespace {

using Clock = std::chrono::steady_clock;

// The group of the program that runs now, for whoever ends this one.
std::atomic<pid_t> runningGroup{0};

void endRunningGroup() {
    if (const pid_t group = runningGroup.exchange(0); group > 0) kill(-group, SIGTERM);
}

struct Pipe {
    Descriptor out, in;

    bool open() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) return false;
        out = Descriptor(ends[0]);
        in = Descriptor(ends[1]);
        return true;
    }
};

// What the new process does until it becomes the other program. Nothing here may allocate or take a lock: the threads
// that would free them are not in this process.
[[noreturn]] void becomeProgram(char* const* words, int input, int output, int errors, int told, pid_t parent) {
    setpgid(0, 0);
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(127);
#else
    static_cast<void>(parent);
#endif
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (dup2(input, STDIN_FILENO) >= 0 && (output < 0 || dup2(output, STDOUT_FILENO) >= 0) &&
        (errors < 0 || dup2(errors, STDERR_FILENO) >= 0))
        execvp(words[0], words);
    const int reason = errno;
    [[maybe_unused]] const ssize_t ignored = write(told, &reason, sizeof reason);
    _exit(127);
}

std::string secondsText(double seconds) {
    char number[32];
    std::snprintf(number, sizeof number, "%g", seconds);
    return translated("did not end within %1 seconds", number);
}

class Child {
  public:
    explicit Child(const Program& program) : program_(program) {}
    ~Child() { runningGroup = 0; }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    ProgramEnd run() {
        if (!start()) return {ProgramEnd::How::NotStarted, 0, reason_};
        if (program_.seconds > 0)
            deadline_ = Clock::now() +
                        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(program_.seconds));
        listen();
        return end();
    }

  private:
    bool fails() {
        reason_ = textOf(lastError());
        return false;
    }

    bool start() {
        std::vector<char*> words;
        for (const std::string& word : program_.words)
            words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        const Descriptor input(
            open(program_.input.empty() ? "/dev/null" : program_.input.c_str(), O_RDONLY | O_CLOEXEC));
        Pipe told;
        if (!input || !told.open() || (program_.output && !output_.open()) || (program_.errors && !errors_.open()))
            return fails();
        const pid_t self = getpid();
        child_ = fork();
        if (child_ < 0) return fails();
        if (child_ == 0)
            becomeProgram(words.data(), input.number(), output_.in.number(), errors_.in.number(), told.in.number(),
                          self);
        setpgid(child_, child_);  // whoever comes first
        whenEndedAtOnce(&endRunningGroup);
        runningGroup = child_;
        told.in.close();
        output_.in.close();
        errors_.in.close();
        int reason = 0;
        ssize_t count = 0;
        while ((count = read(told.out.number(), &reason, sizeof reason)) < 0 && errno == EINTR) {
        }
        if (count != static_cast<ssize_t>(sizeof reason)) return true;
        waitpid(child_, nullptr, 0);
        reason_ = textOf(std::error_code(reason, std::generic_category()));
        return false;
    }

    bool isLate() const { return program_.seconds > 0 && Clock::now() >= deadline_; }

    // Takes what it prints until it has ended. What it has started and left running may keep the pipes open.
    void listen() {
        while (!hasEnded_ && !isLate() && (output_.out || errors_.out)) {
            take(20);
            hasEnded_ = waitpid(child_, &status_, WNOHANG) == child_;
        }
        while (hasEnded_ && take(0)) {
        }
        for (auto pause = std::chrono::milliseconds(1); !hasEnded_ && !isLate();) {
            hasEnded_ = waitpid(child_, &status_, WNOHANG) == child_;
            if (hasEnded_) break;
            std::this_thread::sleep_for(pause);
            pause = std::min(pause * 2, std::chrono::milliseconds(20));
        }
    }

    // False when nothing came.
    bool take(int milliseconds) {
        pollfd ready[2] = {{output_.out.number(), POLLIN, 0}, {errors_.out.number(), POLLIN, 0}};
        if (poll(ready, 2, milliseconds) <= 0) return false;
        const bool fromOutput = ready[0].revents != 0 && takeFrom(output_.out, program_.output);
        const bool fromErrors = ready[1].revents != 0 && takeFrom(errors_.out, program_.errors);
        return fromOutput || fromErrors;
    }

    static bool takeFrom(Descriptor& pipe, const std::function<void(std::string_view)>& taker) {
        char buffer[65536];
        const ssize_t count = read(pipe.number(), buffer, sizeof buffer);
        if (count > 0) taker({buffer, static_cast<std::size_t>(count)});
        if (count == 0 || (count < 0 && errno != EINTR)) pipe.close();
        return count > 0;
    }

    ProgramEnd end() {
        if (!hasEnded_) {
            kill(-child_, SIGKILL);
            waitpid(child_, &status_, 0);
            return {ProgramEnd::How::TimedOut, 0, secondsText(program_.seconds)};
        }
        if (WIFSIGNALED(status_))
            return {ProgramEnd::How::Killed, WTERMSIG(status_),
                    translated("was ended by signal %1", WTERMSIG(status_))};
        const int code = WEXITSTATUS(status_);
        return {ProgramEnd::How::Exited, code, translated("ended with exit code %1", code)};
    }

    const Program& program_;
    Pipe output_, errors_;
    pid_t child_ = -1;
    int status_ = 0;
    bool hasEnded_ = false;
    Clock::time_point deadline_;
    std::string reason_;
};

}  // namespace

ProgramEnd runProgram(const Program& program) {
    return Child(program).run();
}

}  // namespace qrs::platform
