// Pages of memory on POSIX.
#include "host/platform/pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace qrs::platform {

void preferLargePages([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t size) {
#if defined(MADV_HUGEPAGE)
    // Whole pages alone; what is left over at both ends stays in small ones.
    static const auto kPage = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    auto* const bytes = static_cast<char*>(begin);
    const auto lead = static_cast<std::size_t>((kPage - reinterpret_cast<std::uintptr_t>(bytes) % kPage) % kPage);
    if (size > lead) madvise(bytes + lead, (size - lead) / kPage * kPage, MADV_HUGEPAGE);
#endif
}

}  // namespace qrs::platform
