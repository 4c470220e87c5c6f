// One failure, told in one line.
#pragma once

#include <string>

namespace qrs::platform {

// Empty when nothing failed. The message is UTF-8, one line, and names the file (and line or offset where there is
// one).
struct Error {
    std::string message;

    explicit operator bool() const { return !message.empty(); }
};

}  // namespace qrs::platform
