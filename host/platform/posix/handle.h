// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace qrs::platform {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    // The number, which somebody else closes from now on.
    int release() { return std::exchange(number_, -1); }
    // False, with errno set, when the system tells a late failure of a write.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

inline std::error_code lastError() {
    return {errno, std::generic_category()};
}

}  // namespace qrs::platform
