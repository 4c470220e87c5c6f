// Reads most tags of a file without looking at single bytes: sixteen or thirty-two at once.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "host/dxf/groupcodes.h"
#include "host/dxf/index.h"
#include "host/dxf/lines.h"

#if defined(__SSE2__) || defined(_M_X64)
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

// Remembers code lines met before with what they mean, since a drawing has few different ones.
class CodeCache {
  public:
    struct Entry {
        std::uint64_t key = 0;  // no code line has this key
        std::int32_t code = 0;
        bool matters = false;  // the indexer must look at tags with this code
    };
    // Bytes that must be readable at a place for fastTag.
    static constexpr std::size_t kReach = 32;

    // Cuts the tag at a place when its code line is known and both lines lie within reach; value and next are then set.
    // Null otherwise: cutTag and learn must do it.
    const Entry* fastTag(const char* at, char lineEnd, RawTag& tag) const {
        const std::uint32_t ends = matches32(at, lineEnd);
        const std::uint32_t valueEnds = ends & (ends - 1);
        if (valueEnds == 0) return nullptr;
        const unsigned first = lowestBit(ends);
        if (first - 1 >= 8) return nullptr;
        const unsigned length = first - (lineEnd == '\n' && at[first - 1] == '\r' ? 1 : 0);
        if (length - 1 >= 7) return nullptr;
        const std::uint64_t key = keyOf(at, length);
        const Entry& entry = entries_[slotOf(key)];
        if (entry.key != key) return nullptr;
        tag.code = entry.code;
        tag.value = at + first + 1;
        tag.valueEnd = at + lowestBit(valueEnds);
        tag.next = tag.valueEnd + 1;
        if (lineEnd == '\n' && tag.valueEnd != tag.value && tag.valueEnd[-1] == '\r') --tag.valueEnd;
        return &entry;
    }

    // Remembers a code line that cutTag has read.
    void learn(const char* at, const RawTag& tag, char lineEnd) {
        auto length = static_cast<std::size_t>(tag.value - at) - 1;
        if (length != 0 && lineEnd == '\n' && at[length - 1] == '\r') --length;
        if (length - 1 >= 7) return;
        const std::uint64_t key = keyOf(at, static_cast<unsigned>(length));
        entries_[slotOf(key)] = {key, tag.code, mattersToIndex(tag.code)};
    }

    static constexpr bool mattersToIndex(int code) {
        return code == codes::kType || code == codes::kVariable || mattersToRecord(code);
    }

  private:
    // The code line's bytes with blanks in front; length is 1 to 7, and 8 bytes at the place are readable.
    static std::uint64_t keyOf(const char* at, unsigned length) {
        return (load64(at) << (64 - 8 * length)) | (repeated(' ') >> (8 * length));
    }
    static std::size_t slotOf(std::uint64_t key) {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> (64 - kBits));
    }

    static constexpr unsigned kBits = 9;
    std::array<Entry, std::size_t{1} << kBits> entries_;
};

}  // namespace qrs::dxf
