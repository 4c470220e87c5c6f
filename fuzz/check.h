// What a target asserts: it stops the run, and the fuzzer keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace qrs::fuzz {

inline void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

}  // namespace qrs::fuzz
