// Cuts bytes into tags: pairs of a code line and a value line.
//
// Lines end in LF or CR LF, in any mixture, or in CR alone when the whole file does so. Records of binary drawings come
// as lines that end in NUL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "host/dxf/bytes.h"

namespace qrs::dxf {

// The byte that ends lines, told from the first line: CR only when no LF follows it.
inline char lineEndOf(std::string_view bytes) {
    const std::size_t at = bytes.find_first_of("\r\n");
    if (at == std::string_view::npos || bytes[at] == '\n') return '\n';
    return at + 1 < bytes.size() && bytes[at + 1] == '\n' ? '\n' : '\r';
}

// A line's bytes without its end, and where the next line begins. At the end of the bytes next == end and, when the
// last line lacks its end, hasEnd is false.
struct Line {
    const char* begin;
    const char* end;
    const char* next;
    bool hasEnd;
};

inline Line cutLine(const char* at, const char* end, char lineEnd) {
    const char* const found = findByte(at, end, lineEnd);
    if (found == nullptr) {
        // A file that is cut off between CR and LF.
        const bool endsHalf = lineEnd == '\n' && at != end && end[-1] == '\r';
        return {at, endsHalf ? end - 1 : end, end, false};
    }
    const bool twoBytes = lineEnd == '\n' && found != at && found[-1] == '\r';
    return {at, twoBytes ? found - 1 : found, found + 1, true};
}

// Stands for a group code that is a number, but none a code can be.
constexpr int kUnreadableCode = std::numeric_limits<int>::min();

// A group code: blanks and tabs, perhaps a sign, digits, blanks and tabs. False when the line is anything else. A
// number that does not fit an int becomes kUnreadableCode.
inline bool parseCode(const char* at, const char* end, int& code) {
    while (at != end && (*at == ' ' || *at == '\t'))
        ++at;
    while (at != end && (end[-1] == ' ' || end[-1] == '\t'))
        --end;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    if (at == end) return false;
    std::int64_t number = 0;
    for (; at != end; ++at) {
        if (*at < '0' || *at > '9') return false;
        if (number <= std::numeric_limits<int>::max()) number = number * 10 + (*at - '0');
    }
    const bool isReadable = number <= std::numeric_limits<int>::max();
    code = !isReadable ? kUnreadableCode : static_cast<int>(negative ? -number : number);
    return true;
}

// One tag as cut: its code, the value's bytes, and where the next tag begins.
struct RawTag {
    int code;
    const char* value;
    const char* valueEnd;
    const char* next;
};

enum class Cut { Tag, NoValue, NoCode };

// A code line of three characters, as most are: blanks, then digits. One decision for the three, since codes of all
// lengths follow each other. False for any other line.
inline bool shortCode(const char* at, int& code) {
    const auto digit = [](char c) { return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0'; };
    const unsigned hundreds = digit(at[0]), tens = digit(at[1]), ones = digit(at[2]);
    const bool hasHundreds = hundreds <= 9, hasTens = tens <= 9;
    const bool isCode = (ones <= 9) & (hasTens | (at[1] == ' ')) & ((hasHundreds & hasTens) | (at[0] == ' '));
    code = static_cast<int>((hasHundreds ? hundreds * 100 : 0) + (hasTens ? tens * 10 : 0) + ones);
    return isCode;
}

// Where the value begins after a code line of whatever form; null, with the reason, when there is none.
const char* cutCode(const char* at, const char* end, char lineEnd, int& code, Cut& reason);

inline Cut cutTag(const char* at, const char* end, char lineEnd, RawTag& tag) {
    const std::ptrdiff_t length = lineEnd == '\n' && end - at > 4 && at[3] == '\r' ? 5 : 4;
    const char* value = nullptr;
    if (end - at >= length && at[length - 1] == lineEnd && shortCode(at, tag.code)) {
        value = at + length;
    } else {
        Cut reason = Cut::Tag;
        value = cutCode(at, end, lineEnd, tag.code, reason);
        if (value == nullptr) return reason;
    }
    if (value == end) return Cut::NoValue;
    const Line valueLine = cutLine(value, end, lineEnd);
    tag.value = valueLine.begin;
    tag.valueEnd = valueLine.end;
    tag.next = valueLine.next;
    return Cut::Tag;
}

inline std::string_view textOf(const RawTag& tag) {
    return {tag.value, static_cast<std::size_t>(tag.valueEnd - tag.value)};
}

}  // namespace qrs::dxf
