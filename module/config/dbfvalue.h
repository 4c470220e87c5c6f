// The value of one field: from the record's bytes to a variant, to narrow text, to the number that text reads as.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <variant>

struct CDBFCurrency {
    std::int64_t tenThousandths = 0;
};

struct CDBFDateTime {
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;  // since midnight
};

// Nothing, text as stored, or the value of a binary field.
using CDBFVariant = std::variant<std::monostate, std::string_view, std::int32_t, double, CDBFCurrency, CDBFDateTime>;

// Room for the text of any binary value; the longest is a tiny double written without exponent.
using NarrowBuffer = std::array<char, 1100>;

// True for the field types whose bytes point into the memo file.
bool IsMemoType(char type);

// The value of a field that is no memo. A binary field that has not the size of its type is nothing.
CDBFVariant ReadVariant(char type, std::string_view bytes);

// The variant as narrow text; what follows a NUL in it does not count. Dates with time read "YYYYMMDD hh:mm:ss", so
// they begin as date fields are stored; a date outside the years 1 to 9999 is an empty text. The text lives as long as
// the record's bytes and the buffer.
std::string_view NarrowText(const CDBFVariant& value, NarrowBuffer& buffer);

// As atoi and atof read the text, whatever the locale; the integer is clamped to 32 bits.
std::int32_t IntegerOfText(std::string_view text);
double DoubleOfText(std::string_view text);
