// Reads numbers that are written in plain decimals, as nearly all in drawings are, many times faster than any number.
#pragma once

#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qrs::platform {

// The same number that std::from_chars gives. False, without a judgement, for a text that is longer or anything else.
inline bool readPlainReal(std::string_view text, double& number) {
    // Static, or each call would copy them.
    static constexpr std::array<double, 16> kTens = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr bool kRoundsOnce = FLT_EVAL_METHOD == 0;
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative) text.remove_prefix(1);
    if (!kRoundsOnce || text.size() > kTens.size()) return false;
    std::uint64_t digits = 0;
    std::size_t count = 0;
    std::size_t beforeDot = 0;
    bool hasDot = false;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            digits = digits * 10 + static_cast<unsigned>(c - '0');
            ++count;
        } else if (c == '.' && !hasDot) {
            hasDot = true;
            beforeDot = count;
        } else {
            return false;
        }
    }
    if (count == 0 || count >= kTens.size()) return false;
    // Both are whole numbers that a double holds, so their quotient is rounded once.
    number = static_cast<double>(digits) / kTens[hasDot ? count - beforeDot : 0];
    if (isNegative) number = -number;
    return true;
}

}  // namespace qrs::platform
