// Pages of memory on Windows, where large ones need a right that users do not have.
#include "host/platform/pages.h"

namespace qrs::platform {

void preferLargePages(void*, std::size_t) {}

}  // namespace qrs::platform
