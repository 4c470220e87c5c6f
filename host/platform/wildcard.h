// File name patterns: '*' for any run of characters, '?' for one.
#pragma once

#include <string_view>

#include "host/platform/port.h"

namespace qrs::platform {

// True when the whole name matches, without regard to case. '?' is exactly one character; "*.*" matches every name.
QRS_HOST_PORT bool matchesWildcard(std::wstring_view name, std::wstring_view pattern);

}  // namespace qrs::platform
