// The last words of a program that must end.
#pragma once

#include <string_view>

namespace qrs::platform {

// To standard error, unless nobody takes it within a second.
void writeLastLine(std::string_view bytes);

}  // namespace qrs::platform
