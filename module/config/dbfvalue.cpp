// Turns the bytes of a field into a variant, its text and its number.
#include "config/dbfvalue.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <limits>
#include <system_error>

#include "config/bytes.h"

namespace {

CDBFVariant IntegerValue(const char* bytes) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(LittleEndian(bytes, 4)));
}

CDBFVariant DoubleValue(const char* bytes) {
    const std::uint64_t bits = LittleEndian(bytes, 8);
    double value;
    static_assert(sizeof value == sizeof bits);
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

CDBFVariant CurrencyValue(const char* bytes) {
    return CDBFCurrency{static_cast<std::int64_t>(LittleEndian(bytes, 8))};
}

CDBFVariant DateTimeValue(const char* bytes) {
    const auto part = [&](int at) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(LittleEndian(bytes + at, 4)));
    };
    return CDBFDateTime{part(0), part(4)};
}

// The binary field types; every other type is text as stored.
constexpr struct {
    char type;
    std::size_t size;
    CDBFVariant (*read)(const char* bytes);
} kBinaryTypes[] = {
    {'I', 4, IntegerValue},
    {'B', 8, DoubleValue},
    {'Y', 8, CurrencyValue},
    {'T', 8, DateTimeValue},
};

struct NarrowWriter {
    NarrowBuffer& buffer;

    std::string_view operator()(std::monostate) const { return {}; }

    std::string_view operator()(std::string_view text) const { return text; }

    std::string_view operator()(std::int32_t value) const { return Written(std::to_chars(begin(), end(), value)); }

    // Without exponent: the integer getter stops at an "e".
    std::string_view operator()(double value) const {
        return Written(std::to_chars(begin(), end(), value, std::chars_format::fixed));
    }

    std::string_view operator()(CDBFCurrency value) const {
        const bool negative = value.tenThousandths < 0;
        const auto bits = static_cast<std::uint64_t>(value.tenThousandths);
        const std::uint64_t size = negative ? 0 - bits : bits;
        return Printed(std::snprintf(begin(), buffer.size(), "%s%llu.%04u", negative ? "-" : "",
                                     static_cast<unsigned long long>(size / 10000),
                                     static_cast<unsigned>(size % 10000)));
    }

    std::string_view operator()(CDBFDateTime value) const {
        constexpr std::int32_t kFirstDay = 1721426;  // 0001-01-01
        constexpr std::int32_t kLastDay = 5373484;   // 9999-12-31
        constexpr std::int32_t kDay = 24 * 60 * 60;
        if (value.julianDay < kFirstDay || value.julianDay > kLastDay) return {};
        if (value.milliseconds < 0 || value.milliseconds > kDay * 1000) return {};
        // Writers keep times that are a fraction of a millisecond short of the second.
        const std::int32_t seconds = std::min((value.milliseconds + 500) / 1000, kDay - 1);
        // Day number to date of the Gregorian calendar, in years that begin in March.
        const int days = value.julianDay - kFirstDay + 306;  // since 0000-03-01
        const int era = days / 146097;
        const int dayOfEra = days % 146097;
        const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
        const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
        const int march = (5 * dayOfYear + 2) / 153;  // months since March
        const int month = march < 10 ? march + 3 : march - 9;
        const int year = era * 400 + yearOfEra + (month <= 2 ? 1 : 0);
        return Printed(std::snprintf(begin(), buffer.size(), "%04d%02d%02d %02d:%02d:%02d", year, month,
                                     dayOfYear - (153 * march + 2) / 5 + 1, seconds / 3600, seconds / 60 % 60,
                                     seconds % 60));
    }

  private:
    char* begin() const { return buffer.data(); }
    char* end() const { return buffer.data() + buffer.size(); }
    std::string_view Written(std::to_chars_result result) const {
        return {begin(), static_cast<std::size_t>(result.ptr - begin())};
    }
    std::string_view Printed(int length) const { return {begin(), static_cast<std::size_t>(length)}; }
};

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Takes leading white space and a sign off the text; true when the sign is a minus.
bool TakeSign(std::string_view& text) {
    std::size_t i = 0;
    while (i < text.size() && IsSpace(text[i]))
        ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (negative || (i < text.size() && text[i] == '+')) ++i;
    text.remove_prefix(i);
    return negative;
}

// What a number becomes that no double holds: too large or too small.
double OutOfRange(std::string_view number, bool hex) {
    const std::size_t mark = number.find_first_of(hex ? "pP" : "eE");
    const std::string_view digits = number.substr(0, mark);
    const std::size_t first = digits.find_first_not_of("0.");
    if (first == digits.npos) return 0;
    // Where the first digit stands, counted from the point
    const auto place =
        static_cast<std::int64_t>(std::min(digits.find('.'), digits.size())) - static_cast<std::int64_t>(first);
    const std::int64_t exponent = mark == number.npos ? 0 : IntegerOfText(number.substr(mark + 1));
    return (hex ? place * 4 : place) + exponent > 0 ? std::numeric_limits<double>::infinity() : 0;
}

}  // namespace

bool IsMemoType(char type) {
    return type == 'M' || type == 'G' || type == 'P' || type == 'W';
}

CDBFVariant ReadVariant(char type, std::string_view bytes) {
    for (const auto& binary : kBinaryTypes) {
        if (binary.type != type) continue;
        if (bytes.size() != binary.size) return std::monostate();
        return binary.read(bytes.data());
    }
    return bytes;
}

std::string_view NarrowText(const CDBFVariant& value, NarrowBuffer& buffer) {
    return std::visit(NarrowWriter{buffer}, value);
}

std::int32_t IntegerOfText(std::string_view text) {
    const bool negative = TakeSign(text);
    // One more than the largest integer is the smallest one without its sign.
    constexpr std::int64_t kMost = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    std::int64_t value = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') break;
        value = std::min(value * 10 + (digit - '0'), kMost);
    }
    return static_cast<std::int32_t>(negative ? -value : std::min(value, kMost - 1));
}

double DoubleOfText(std::string_view text) {
    const bool negative = TakeSign(text);
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
    if (hex) text.remove_prefix(2);
    if (text.empty() || text.front() == '-') return 0;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                        hex ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        value = OutOfRange(text.substr(0, static_cast<std::size_t>(result.ptr - text.data())), hex);
    }
    return negative ? -value : value;
}
