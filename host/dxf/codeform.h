// How binary drawings write group codes.
#pragma once

#include <cstdint>
#include <string_view>

namespace qrs::dxf {

// The bytes a binary drawing begins with.
constexpr std::string_view kBinarySignature("AutoCAD Binary DXF\r\n\x1A\0", 22);

// Ends the lines of a binary drawing's records in text form. A drawing whose lines end so is binary.
constexpr char kBinaryLineEnd = '\0';

// Short: one byte a group code, 255 before a longer one (up to AC1009). Long: two bytes (from AC1012 on).
enum class CodeForm : std::uint8_t { Short, Long };

}  // namespace qrs::dxf
