// Ends the program where going on would write a damaged drawing.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace qrs::dxf {

// For errors of the calling code: a tag kept over a change names a place that is none any more. Stays on in release.
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "drawing: %s\n", what);
    std::abort();
}

}  // namespace qrs::dxf
