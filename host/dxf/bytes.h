// Looks for a byte in many bytes at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if !defined(QRS_WITHOUT_SSE2) && (defined(__SSE2__) || defined(_M_X64))
#include <emmintrin.h>
#define QRS_DXF_SSE2 1
#endif
#if defined(_MSC_VER)
#include <intrin.h>
#endif

namespace qrs::dxf {

#if defined(_WIN32) || (defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
constexpr bool kFastTags = true;
#else
constexpr bool kFastTags = false;  // the byte tricks below count on the first byte being the lowest
#endif

inline unsigned lowestBit(std::uint32_t bits) {
#if defined(_MSC_VER)
    unsigned long index = 0;
    _BitScanForward(&index, bits);
    return index;
#else
    return static_cast<unsigned>(__builtin_ctz(bits));
#endif
}

inline unsigned lowestBit(std::uint64_t bits) {
#if defined(_MSC_VER)
    const auto low = static_cast<std::uint32_t>(bits);
    return low != 0 ? lowestBit(low) : 32 + lowestBit(static_cast<std::uint32_t>(bits >> 32));
#else
    return static_cast<unsigned>(__builtin_ctzll(bits));
#endif
}

inline std::uint64_t load64(const char* at) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

constexpr std::uint64_t repeated(unsigned char byte) {
    return byte * 0x0101010101010101u;
}

// Bit i is set when byte i of the 32 at the place is the one looked for.
inline std::uint32_t matches32(const char* at, char byte) {
#if defined(QRS_DXF_SSE2)
    const __m128i pattern = _mm_set1_epi8(byte);
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16));
    const auto lowBits = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(low, pattern)));
    const auto highBits = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(high, pattern)));
    return lowBits | (highBits << 16);
#else
    std::uint32_t bits = 0;
    for (unsigned word = 0; word < 4; ++word) {
        const std::uint64_t x = load64(at + 8 * word) ^ repeated(static_cast<unsigned char>(byte));
        constexpr std::uint64_t kSeven = repeated(0x7F);
        const std::uint64_t zero = ~(((x & kSeven) + kSeven) | x | kSeven);  // 0x80 where a byte is zero
        bits |= static_cast<std::uint32_t>(((zero >> 7) * 0x0102040810204080u) >> 56) << (8 * word);
    }
    return bits;
#endif
}

// The first such byte; null when there is none. The lines of drawings are short: nearly all end within the first look.
inline const char* findByte(const char* at, const char* end, char byte) {
    constexpr std::ptrdiff_t kLook = 32;
    if (kFastTags && end - at >= kLook) {
        const std::uint32_t found = matches32(at, byte);
        if (found != 0) return at + lowestBit(found);
        at += kLook;
    }
    return static_cast<const char*>(std::memchr(at, byte, static_cast<std::size_t>(end - at)));
}

}  // namespace qrs::dxf
