// The error of the table library.
#pragma once

#include <array>
#include <cstdint>
#include <exception>

// Thrown inside the plug-in only; CDBFRecordset turns it into its results.
class CDBFException : public std::exception {
  public:
    // A file ended before what was to be read of it.
    static constexpr std::uint32_t kShortRead = 3009;

    explicit CDBFException(std::uint32_t errorNumber) noexcept;

    std::uint32_t ErrorNumber() const noexcept { return errorNumber_; }

    // "Error number 0x" and the number as eight upper-case hexadecimal digits.
    const char* what() const noexcept override { return message_.data(); }

  private:
    std::uint32_t errorNumber_;
    std::array<char, 24> message_;
};
