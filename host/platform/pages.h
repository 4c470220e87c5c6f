// Pages of memory.
#pragma once

#include <cstddef>

namespace qrs::platform {

// Memory that is filled from front to back may lie in large pages: the first touch of a small one takes longer than
// filling it. A system without large pages does nothing. The memory keeps what it holds.
void preferLargePages(void* begin, std::size_t size);

}  // namespace qrs::platform
