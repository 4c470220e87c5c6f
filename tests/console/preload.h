// What libraries have in common that are preloaded into the program: they stand before functions of the system.
#pragma once

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdarg>

namespace {

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int realOpen(const char* path, int flags, mode_t mode) {
    static auto* const real = original<int(const char*, int, ...)>("open");
    return real(path, flags, mode);
}

// Each library's own: what it does before a file is opened. False when that is to fail, with the reason in errno.
bool beforeOpen(const char* path, int flags);

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if (flags & O_CREAT) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return beforeOpen(path, flags) ? realOpen(path, flags, mode) : -1;
}

// Its other name.
extern "C" int open64(const char* path, int flags, ...) __attribute__((alias("open")));
