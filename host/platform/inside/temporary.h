// The folder for temporary files where the user's variables name none.
#pragma once

#include <filesystem>

namespace qrs::platform {

std::filesystem::path lastTemporaryFolder();

}  // namespace qrs::platform
