// Tags of a record, and their values as numbers.
#include "host/dxf/tags.h"

#include <array>
#include <charconv>
#include <cmath>

#include "host/dxf/binary.h"
#include "host/dxf/groupcodes.h"
#include "host/dxf/lines.h"
#include "host/platform/plainreal.h"

namespace qrs::dxf {

namespace {

// No group code holds a NUL, so one in the first line ends it.
char lineEndOfRecord(std::string_view record) {
    const std::size_t at = record.find_first_of(std::string_view("\r\n\0", 3));
    return at != std::string_view::npos && record[at] == kBinaryLineEnd ? kBinaryLineEnd : lineEndOf(record);
}

// A code line as most are written: blanks, at most nine digits, the line end. Null, without a judgement, for any other;
// otherwise where the next line begins.
const char* usualCode(const char* at, const char* end, char lineEnd, int& code) {
    while (at != end && *at == ' ')
        ++at;
    int number = 0;
    const char* const digits = at;
    for (; at != end && *at >= '0' && *at <= '9' && at - digits < 9; ++at)
        number = number * 10 + (*at - '0');
    if (at == digits) return nullptr;
    if (lineEnd == '\n' && at != end && *at == '\r') ++at;
    if (at == end || *at != lineEnd) return nullptr;
    code = number;
    return at + 1;
}

}  // namespace

const char* cutCode(const char* at, const char* end, char lineEnd, int& code, Cut& reason) {
    if (const char* value = usualCode(at, end, lineEnd, code)) return value;
    const Line line = cutLine(at, end, lineEnd);
    reason = parseCode(line.begin, line.end, code) ? Cut::NoValue : Cut::NoCode;
    return reason == Cut::NoValue && line.hasEnd ? line.next : nullptr;
}

TagCursor::TagCursor(std::string_view record) : TagCursor(record, lineEndOfRecord(record)) {}

bool TagCursor::next(Tag& tag) {
    const char* const begin = record_.data();
    const char* const end = begin + record_.size();
    RawTag raw{};
    while (position_ < record_.size()) {
        const std::size_t at = position_;
        if (cutTag(begin + at, end, lineEnd_, raw) != Cut::Tag) break;
        position_ = static_cast<std::size_t>(raw.next - begin);
        if (raw.code == codes::kComment) continue;
        tag.code = raw.code;
        tag.value = textOf(raw);
        tag.begin = static_cast<std::uint32_t>(at);
        tag.end = static_cast<std::uint32_t>(position_);
        return true;
    }
    position_ = record_.size();
    return false;
}

bool StoredTags::next() {
    RawTag raw{};
    while (at_ != end_) {
        const Cut cut =
            lineEnd_ == kBinaryLineEnd ? cutBinary(codeForm_, at_, end_, raw) : cutTag(at_, end_, lineEnd_, raw);
        if (cut != Cut::Tag) break;
        at_ = raw.next;
        if (raw.code == codes::kComment) continue;
        code_ = raw.code;
        value_ = raw.value;
        valueEnd_ = raw.valueEnd;
        return true;
    }
    at_ = end_;
    return false;
}

std::string_view StoredTags::value() {
    const RawTag raw{code_, value_, valueEnd_, at_};
    if (lineEnd_ != kBinaryLineEnd || isTextual(valueKindOf(code_))) return textOf(raw);
    number_.clear();
    appendValueText(raw, number_);
    return number_;
}

namespace {

// By byte; handles are read by the million.
constexpr std::array<std::int8_t, 256> hexValues() {
    std::array<std::int8_t, 256> values{};
    for (std::size_t byte = 0; byte < values.size(); ++byte)
        values[byte] = static_cast<std::int8_t>(platform::hexValue(static_cast<char32_t>(byte)));
    return values;
}
constexpr std::array<std::int8_t, 256> kHexValues = hexValues();

// Drawings may write a plus sign, which from_chars does not take.
std::string_view numeral(std::string_view value) {
    value = trimmed(value);
    if (value.size() > 1 && value[0] == '+' && value[1] != '-') value.remove_prefix(1);
    return value;
}

}  // namespace

std::int64_t toInteger(std::string_view value, std::int64_t fallback) {
    value = numeral(value);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && end == value.data() + value.size() ? number : fallback;
}

double toReal(std::string_view value, double fallback) {
    value = numeral(value);
    double number = 0.0;
    if (platform::readPlainReal(value, number)) return number;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && end == value.data() + value.size() ? number : fallback;
}

std::uint64_t toHandle(std::string_view value) {
    value = trimmed(value);
    if (value.empty() || value.size() > 16) return 0;
    std::uint64_t handle = 0;
    for (const char c : value) {
        const int digit = kHexValues[static_cast<unsigned char>(c)];
        if (digit < 0) return 0;
        handle = handle << 4 | static_cast<unsigned>(digit);
    }
    return handle;
}

std::string handleText(std::uint64_t handle) {
    std::array<char, 16> room{};
    std::size_t at = room.size();
    do {
        room[--at] = platform::kHexDigits[handle & 15];
        handle >>= 4;
    } while (handle != 0);
    return std::string(room.data() + at, room.size() - at);
}

std::string realText(double value) {
    if (!std::isfinite(value)) return "0.0";  // drawings have no spelling for these
    char buffer[400];
    // Plain digits where a drawing's reader of old expects them, an exponent only for extreme sizes.
    const double size = std::fabs(value);
    const auto format =
        size == 0.0 || (size >= 1e-6 && size < 1e16) ? std::chars_format::fixed : std::chars_format::scientific;
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format);
    std::string text(buffer, result.ptr);
    if (text.find('.') == std::string::npos) {
        const std::size_t exponent = text.find('e');
        text.insert(exponent == std::string::npos ? text.size() : exponent, ".0");
    }
    for (char& c : text) {
        if (c == 'e') c = 'E';
    }
    return text;
}

}  // namespace qrs::dxf
