// Basic types of the editor's programming interface.
#pragma once

#include <cstdint>

#include "host/platform/port.h"

using ACHAR = wchar_t;
#define ACRX_T(text) L##text

struct Adesk {
    using Boolean = bool;
    using Int16 = std::int16_t;
    using Int32 = std::int32_t;
    using UInt8 = std::uint8_t;
    using UInt16 = std::uint16_t;
    using UInt32 = std::uint32_t;
    using UInt64 = std::uint64_t;
    static constexpr bool kFalse = false;
    static constexpr bool kTrue = true;
};
