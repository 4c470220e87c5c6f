// Numbers as text, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/platform/port.h"

namespace qrs::platform {

// The shortest text that reads back as the same number; a whole one ends in ".0".
std::string formatReal(double value);
// The whole text as a number, or nothing.
QRS_HOST_PORT std::optional<double> parseReal(std::string_view text);
std::optional<std::int32_t> parseInteger(std::string_view text);

}  // namespace qrs::platform
