// Upper and lower case of single code points, the same on every system and in every locale.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qrs::platform {

// From code points of the basic plane to others of it, in two levels: most pages of 256 hold no letter with two cases
// and are one and the same.
class CaseTable {
  public:
    constexpr char32_t map(char32_t codePoint) const {
        if (codePoint > 0xFFFF) return codePoint;
        return static_cast<char16_t>(codePoint + distance_[page_[codePoint >> 8]][codePoint & 0xFF]);
    }
    constexpr void enter(char32_t from, char32_t to) {
        std::uint8_t& page = page_[from >> 8];
        if (page == 0) page = used_++;
        distance_[page][from & 0xFF] = static_cast<std::uint16_t>(to - from);
    }

  private:
    static constexpr std::size_t kPages = 16;  // one more would not compile

    std::uint8_t used_ = 1;  // page 0 maps everything to itself
    std::uint8_t page_[256] = {};
    std::uint16_t distance_[kPages][256] = {};  // to be added, modulo 65536
};

extern const CaseTable kUpperCase;
extern const CaseTable kLowerCase;

// Code points without a counterpart are given back. Nothing outside ASCII is mapped into it, so names that differ in
// such a character stay different.
inline char32_t upperCase(char32_t codePoint) {
    return kUpperCase.map(codePoint);
}
inline char32_t lowerCase(char32_t codePoint) {
    return kLowerCase.map(codePoint);
}

}  // namespace qrs::platform
