// Lets one chosen call to the system go wrong in the program it is preloaded into.
//
// QRS_FAULT is "<function> <number> <what>": the numberth call of the function fails with the error number given, or
// the program is killed there (what = kill), or only half of a write is done (what = 0), or the file QRS_FAULT_FILE is
// cut to nothing (what = cut) or written over (what = rewrite) and the call done. With QRS_FAULT_FILE only that file's
// mappings count. When the fault has happened, a file QRS_FAULT_MARK is there.
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "preload.h"

namespace {

struct Fault {
    char function[16] = "";
    int number = 0;
    char what[16] = "";

    Fault() {
        const char* text = std::getenv("QRS_FAULT");
        if (text) std::sscanf(text, "%15s %d %15s", function, &number, what);
    }
};

// The administrator may write anywhere; this user may not.
const bool isOrdinary = std::getenv("QRS_FAULT_USER") == nullptr || geteuid() != 0 || setuid(65534) == 0;

// Another program writes something else of the same length. False as long as all went well.
bool rewrite(const char* path) {
    struct stat status {};
    const int file = realOpen(path, O_WRONLY | O_CLOEXEC, 0);
    if (fstat(file, &status) != 0) return true;
    const std::string bytes(static_cast<std::size_t>(status.st_size), '8');
    return pwrite(file, bytes.data(), bytes.size(), 0) != status.st_size;
}

// True when this call is to go wrong; kills the program when it is to end here.
bool strikes(const char* function) {
    static Fault fault;
    if (std::strcmp(fault.function, function) != 0 || --fault.number != 0) return false;
    if (const char* mark = std::getenv("QRS_FAULT_MARK")) realOpen(mark, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (std::strcmp(fault.what, "kill") == 0) raise(SIGKILL);
    if (std::strcmp(fault.what, "cut") == 0) return truncate(std::getenv("QRS_FAULT_FILE"), 0) != 0;
    if (std::strcmp(fault.what, "rewrite") == 0) return rewrite(std::getenv("QRS_FAULT_FILE"));
    errno = std::atoi(fault.what);
    return true;
}

bool beforeOpen(const char*, int flags) {
    return !(flags & O_CREAT) || !strikes("open");
}

bool isFaultFile(int file) {
    const char* path = std::getenv("QRS_FAULT_FILE");
    struct stat one;
    struct stat other;
    return path == nullptr || (fstat(file, &one) == 0 && stat(path, &other) == 0 && one.st_ino == other.st_ino);
}

}  // namespace

extern "C" {

void* mmap(void* address, size_t size, int protection, int flags, int file, off_t offset) {
    static auto* const real = original<void*(void*, size_t, int, int, int, off_t)>("mmap");
    if (file >= 0 && protection == PROT_READ && isFaultFile(file) && strikes("mmap")) return MAP_FAILED;
    return real(address, size, protection, flags, file, offset);
}

ssize_t write(int file, const void* bytes, size_t count) {
    static auto* const real = original<ssize_t(int, const void*, size_t)>("write");
    if (file > 2 && strikes("write")) {
        if (errno != 0) return -1;
        count = count / 2 + 1;
    }
    return real(file, bytes, count);
}

int fsync(int file) {
    static auto* const real = original<int(int)>("fsync");
    return strikes("fsync") ? -1 : real(file);
}

int close(int file) {
    static auto* const real = original<int(int)>("close");
    if (file > 2 && strikes("close")) {
        const int error = errno;
        real(file);
        errno = error;
        return -1;
    }
    return real(file);
}

int fchmod(int file, mode_t mode) {
    static auto* const real = original<int(int, mode_t)>("fchmod");
    return strikes("fchmod") ? -1 : real(file, mode);
}

int link(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("link");
    return strikes("link") ? -1 : real(from, to);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("rename");
    return strikes("rename") ? -1 : real(from, to);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*), void* data) noexcept {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const real = original<Create>("pthread_create");
    return strikes("thread") ? errno : real(thread, attributes, run, data);
}

}  // extern "C"
