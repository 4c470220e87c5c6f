// Handles: the numbers by which a drawing file names its objects.
#pragma once

#include <cstddef>

#include "adesk.h"

class QRS_HOST_PORT AcDbHandle {
  public:
    AcDbHandle() = default;
    explicit AcDbHandle(Adesk::UInt64 value) : value_(value) {}
    // From hexadecimal digits; null when the text is none.
    explicit AcDbHandle(const ACHAR* text);

    bool isNull() const { return value_ == 0; }

    // The handle in upper-case hexadecimal digits. False, nothing written, when the buffer is too small (17 is enough).
    bool getIntoAsciiBuffer(ACHAR* buffer, std::size_t length) const;
    template <std::size_t Length>
    bool getIntoAsciiBuffer(ACHAR (&buffer)[Length]) const {
        return getIntoAsciiBuffer(buffer, Length);
    }

    operator Adesk::UInt64() const { return value_; }
    bool operator==(const AcDbHandle& other) const { return value_ == other.value_; }
    bool operator!=(const AcDbHandle& other) const { return value_ != other.value_; }
    bool operator<(const AcDbHandle& other) const { return value_ < other.value_; }

  private:
    Adesk::UInt64 value_ = 0;
};
