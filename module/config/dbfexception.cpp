// The generic message: the number as eight hexadecimal digits.
#include "config/dbfexception.h"

#include <cinttypes>
#include <cstdio>

CDBFException::CDBFException(std::uint32_t errorNumber) noexcept : errorNumber_(errorNumber), message_{} {
    std::snprintf(message_.data(), message_.size(), "Error number 0x%08" PRIX32, errorNumber);
}
