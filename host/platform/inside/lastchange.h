// When a file was changed last, as finely as the system tells it: programs write a file twice within a second.
#pragma once

#include <cstdint>
#include <filesystem>

namespace qrs::platform {

// In a unit of the system's own; 0 when it cannot be told.
std::int64_t lastChange(const std::filesystem::path& native);

}  // namespace qrs::platform
