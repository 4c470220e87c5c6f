// One failure, told in one line.
#pragma once

#include <exception>
#include <string>

#include "host/platform/port.h"

namespace qrs::platform {

// Empty when nothing failed. The message is UTF-8, one line, and names the file (and line or offset where there is
// one).
struct Error {
    std::string message;

    explicit operator bool() const { return !message.empty(); }
};

// What an exception says, for people: of memory that has run out the library's own word tells nothing.
QRS_HOST_PORT std::string reasonOf(const std::exception& exception);

}  // namespace qrs::platform
