// Preloaded into the program: writes down in the file QRS_WATCHED what is made, written, renamed, removed, started and
// reached over the network, one a line.
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "preload.h"

namespace {

// Where a build for coverage writes its counts, and the folders on the way.
bool isForCounts(const char* path) {
    const char* const counts = std::getenv("LLVM_PROFILE_FILE");
    return counts != nullptr && path != nullptr &&
           std::strncmp(counts, path, std::min(std::strlen(path), std::strcspn(counts, "%"))) == 0;
}

void note(const char* what, const char* path) {
    const char* const file = std::getenv("QRS_WATCHED");
    if (file == nullptr || isForCounts(path)) return;
    const int log = realOpen(file, O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    char line[5000];
    std::size_t length = 0;
    for (const char* part : {what, " ", path != nullptr ? path : "?", "\n"})
        for (; *part != '\0' && length < sizeof line; ++part)
            line[length++] = *part;
    if (write(log, line, length) < 0) std::abort();
    close(log);
}

bool beforeOpen(const char* path, int flags) {
    constexpr int kWrites = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC | O_APPEND;
    if (flags & kWrites) note("write", path);
    return true;
}

}  // namespace

extern "C" {

FILE* fopen(const char* path, const char* mode) {
    static auto* const real = original<FILE*(const char*, const char*)>("fopen");
    if (std::strpbrk(mode, "wa+") != nullptr) note("write", path);
    return real(path, mode);
}
FILE* fopen64(const char* path, const char* mode) __attribute__((alias("fopen")));

int link(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("link");
    note("make", to);
    return real(from, to);
}

int symlink(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("symlink");
    note("make", to);
    return real(from, to);
}

int system(const char* line) {
    static auto* const real = original<int(const char*)>("system");
    note("run", line);
    return real(line);
}

FILE* popen(const char* line, const char* mode) {
    static auto* const real = original<FILE*(const char*, const char*)>("popen");
    note("run", line);
    return real(line, mode);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const real = original<int(const char*, mode_t)>("mkdir");
    note("make", path);
    return real(path, mode);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("rename");
    note("rename", to);
    return real(from, to);
}

int unlink(const char* path) noexcept {
    static auto* const real = original<int(const char*)>("unlink");
    note("remove", path);
    return real(path);
}

int execvp(const char* file, char* const arguments[]) noexcept {
    static auto* const real = original<int(const char*, char* const[])>("execvp");
    note("run", file);
    return real(file, arguments);
}

void* dlopen(const char* file, int flags) noexcept {
    static auto* const real = original<void*(const char*, int)>("dlopen");
    if (file != nullptr) note("load", file);
    return real(file, flags);
}

int socket(int domain, int type, int protocol) noexcept {
    static auto* const real = original<int(int, int, int)>("socket");
    note("network", domain == AF_UNIX ? "here" : "far");
    return real(domain, type, protocol);
}

}  // extern "C"
