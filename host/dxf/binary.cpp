// Values of binary drawings to text and back.
#include "host/dxf/binary.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "host/dxf/tags.h"
#include "host/platform/text.h"

namespace qrs::dxf {

namespace {

std::uint64_t littleEndian(const char* at, std::size_t size) {
    std::uint64_t bits = 0;
    for (std::size_t i = size; i-- > 0;)
        bits = bits << 8 | static_cast<unsigned char>(at[i]);
    return bits;
}

void appendLittleEndian(std::uint64_t bits, std::size_t size, std::string& out) {
    for (std::size_t i = 0; i < size; ++i)
        out += static_cast<char>(bits >> 8 * i & 0xFF);
}

void appendInteger(std::int64_t number, std::string& out) {
    char buffer[24];
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
}

// Most coordinates have three decimals at most; dividing two whole numbers rounds as reading their spelling does, so
// the spelling is known without searching for it.
bool appendFewDecimals(double value, std::string& out) {
    const double thousands = std::nearbyint(value * 1000.0);
    if (!(std::fabs(thousands) < 1e15) || thousands / 1000.0 != value || thousands == 0.0) return false;
    auto whole = static_cast<std::int64_t>(std::fabs(thousands));
    char buffer[24];
    char* at = buffer + sizeof buffer;
    int decimals = 3;
    while (decimals > 1 && whole % 10 == 0) {
        whole /= 10;
        --decimals;
    }
    for (; decimals > 0; --decimals, whole /= 10)
        *--at = static_cast<char>('0' + whole % 10);
    *--at = '.';
    do {
        *--at = static_cast<char>('0' + whole % 10);
        whole /= 10;
    } while (whole != 0);
    if (value < 0) *--at = '-';
    out.append(at, buffer + sizeof buffer);
    return true;
}

void appendReal(std::uint64_t bits, std::string& out) {
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value)) {
        out += "nan";
    } else if (std::isinf(value)) {
        out += value < 0 ? "-inf" : "inf";
    } else if (!appendFewDecimals(value, out)) {
        out += realText(value);
    }
}

// The fallback is a number no double of a drawing is.
bool parseReal(std::string_view text, double& value) {
    value = toReal(text, std::numeric_limits<double>::infinity());
    return std::isfinite(value);
}

// Numbers up to the greatest unsigned one of the size are taken: colours and flags are written both ways.
bool appendSized(std::string_view value, std::size_t size, std::string& out) {
    const std::int64_t missing = std::numeric_limits<std::int64_t>::min();
    const std::int64_t number = toInteger(value, missing);
    if (number == missing && toInteger(value, 0) == 0) return false;
    if (size < 8) {
        const std::int64_t least = -(std::int64_t{1} << (8 * size - 1));
        const std::int64_t limit = std::int64_t{1} << (8 * size);
        if (number < least || number >= limit) return false;
    }
    appendLittleEndian(static_cast<std::uint64_t>(number), size, out);
    return true;
}

bool appendChunk(std::string_view value, std::string& out) {
    value = trimmed(value);
    std::string bytes;
    if (value.size() > 510 || !platform::appendHexBytes(value, bytes)) return false;
    out += static_cast<char>(bytes.size());
    out += bytes;
    return true;
}

// A NUL would end the text, so it is spelled as drawings spell control characters.
void appendText(std::string_view value, std::string& out) {
    for (const char c : value) {
        if (c == '\0') {
            out += "^@";
        } else {
            out += c;
        }
    }
    out += '\0';
}

}  // namespace

CodeForm codeFormOf(std::string_view body) {
    // The first tag is 0 SECTION or a comment, 999: a zero's second byte is zero, 999 begins with 255 in the short
    // form.
    if (body.size() < 2) return CodeForm::Long;
    const bool isLong = body[0] == '\0' ? body[1] == '\0' : static_cast<unsigned char>(body[0]) != 255;
    return isLong ? CodeForm::Long : CodeForm::Short;
}

void appendValueText(const RawTag& tag, std::string& out) {
    const auto size = static_cast<std::size_t>(tag.valueEnd - tag.value);
    switch (valueKindOf(tag.code)) {
        case ValueKind::None:
        case ValueKind::Text:
        case ValueKind::Handle:
            out.append(tag.value, size);
            break;
        case ValueKind::Chunk:
            out += platform::hexText(textOf(tag));
            break;
        case ValueKind::Integer8:
            appendInteger(static_cast<std::int64_t>(littleEndian(tag.value, 1)), out);
            break;
        case ValueKind::Integer16:
            appendInteger(static_cast<std::int16_t>(littleEndian(tag.value, 2)), out);
            break;
        case ValueKind::Integer32:
            appendInteger(static_cast<std::int32_t>(littleEndian(tag.value, 4)), out);
            break;
        case ValueKind::Integer64:
            appendInteger(static_cast<std::int64_t>(littleEndian(tag.value, 8)), out);
            break;
        case ValueKind::Real:
        case ValueKind::Point:
        case ValueKind::Coordinate:
            appendReal(littleEndian(tag.value, 8), out);
            break;
    }
}

void appendRecordText(CodeForm form, std::string_view record, std::string& out) {
    const char* at = record.data();
    const char* const end = at + record.size();
    RawTag tag{};
    while (at != end && cutBinary(form, at, end, tag) == Cut::Tag) {
        appendInteger(tag.code, out);
        out += kBinaryLineEnd;
        appendValueText(tag, out);
        out += kBinaryLineEnd;
        at = tag.next;
    }
}

bool appendValueBytes(int code, std::string_view value, std::string& out) {
    const ValueKind kind = valueKindOf(code);
    double real = 0.0;
    switch (kind) {
        case ValueKind::None:
        case ValueKind::Text:
        case ValueKind::Handle:
            appendText(value, out);
            return true;
        case ValueKind::Chunk:
            return appendChunk(value, out);
        case ValueKind::Real:
        case ValueKind::Point:
        case ValueKind::Coordinate: {
            if (!parseReal(value, real)) return false;
            std::uint64_t bits = 0;
            std::memcpy(&bits, &real, sizeof bits);
            appendLittleEndian(bits, sizeof bits, out);
            return true;
        }
        default:
            return appendSized(value, detail::kSizes[static_cast<std::size_t>(kind)], out);
    }
}

bool appendBinaryTag(CodeForm form, int code, std::string_view value, std::string& out) {
    if (code < std::numeric_limits<std::int16_t>::min() || code > std::numeric_limits<std::int16_t>::max())
        return false;
    const std::size_t before = out.size();
    if (form == CodeForm::Short && code >= 0 && code < 255) {
        out += static_cast<char>(code);
    } else {
        if (form == CodeForm::Short) out += '\xFF';
        appendLittleEndian(static_cast<std::uint64_t>(code), 2, out);
    }
    if (appendValueBytes(code, value, out)) return true;
    out.resize(before);
    return false;
}

bool binaryStretch(CodeForm form, std::string_view record, std::string_view text, std::size_t& begin,
                   std::size_t& end) {
    const std::size_t textBegin = begin;
    const std::size_t textEnd = end;
    const char* const recordEnd = record.data() + record.size();
    const char* const lastLine = text.data() + text.size();
    const char* at = record.data();
    const char* line = text.data();
    bool hasBegin = false;
    for (;;) {
        const auto reached = static_cast<std::size_t>(line - text.data());
        if (reached == textBegin) {
            begin = static_cast<std::size_t>(at - record.data());
            hasBegin = true;
        }
        if (reached == textEnd) {
            end = static_cast<std::size_t>(at - record.data());
            return hasBegin;
        }
        RawTag tag{};
        RawTag asText{};
        if (at == recordEnd || cutBinary(form, at, recordEnd, tag) != Cut::Tag) return false;
        if (line == lastLine || cutTag(line, lastLine, kBinaryLineEnd, asText) != Cut::Tag) return false;
        at = tag.next;
        line = asText.next;
    }
}

}  // namespace qrs::dxf
