// A system handle that closes itself, and the reason of the last failure.
#pragma once

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <system_error>
#include <utility>

namespace qrs::platform {

class Handle {
  public:
    explicit Handle(HANDLE value = INVALID_HANDLE_VALUE) : value_(value) {}
    ~Handle() { close(); }
    Handle(Handle&& other) noexcept : value_(std::exchange(other.value_, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    explicit operator bool() const { return value_ != INVALID_HANDLE_VALUE && value_ != nullptr; }
    HANDLE value() const { return value_; }
    bool close() {
        const HANDLE value = std::exchange(value_, INVALID_HANDLE_VALUE);
        return value == INVALID_HANDLE_VALUE || value == nullptr || CloseHandle(value);
    }

  private:
    HANDLE value_;
};

inline std::error_code systemError(DWORD number) {
    return {static_cast<int>(number), std::system_category()};
}

inline std::error_code lastError() {
    return systemError(GetLastError());
}

}  // namespace qrs::platform
