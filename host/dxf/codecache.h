// Reads most tags of a file without looking at single bytes: the ends of lines are found sixty-four bytes at once.
#pragma once

#include <array>
#include <cstdint>

#include "host/dxf/bytes.h"
#include "host/dxf/groupcodes.h"
#include "host/dxf/index.h"
#include "host/dxf/lines.h"

namespace qrs::dxf {

// The ends of lines in some bytes, of which the next tag takes the first two.
struct LineEnds {
    // Bytes that must be readable at a place.
    static constexpr std::size_t kReach = 64;

    const char* base = nullptr;
    std::uint64_t bits = 0;  // bit i for the byte i; those before the next tag are gone
};

// Remembers code lines met before with what they mean, since a drawing has few different ones.
class CodeCache {
  public:
    struct Entry {
        std::uint64_t key = 0;  // no code line has this key
        std::int32_t code = 0;
        bool matters = false;  // the indexer must look at tags with this code
    };
    // Cuts the tag at a place, where LineEnds::kReach bytes are readable, when its code line is known and both lines
    // lie within reach; value and next are then set. Null otherwise: cutTag and learn must do it, and ends is empty.
    // Tags must be asked for in their order.
    const Entry* fastTag(const char* at, char lineEnd, LineEnds& ends, RawTag& tag) const {
        std::uint64_t valueEnds = ends.bits & (ends.bits - 1);
        if (valueEnds == 0) {
            const std::uint64_t high = matches32(at + 32, lineEnd);
            ends = {at, matches32(at, lineEnd) | high << 32};
            valueEnds = ends.bits & (ends.bits - 1);
            if (valueEnds == 0) return forget(ends);
        }
        const char* const codeEnd = ends.base + lowestBit(ends.bits);
        auto length = static_cast<std::size_t>(codeEnd - at);
        if (length - 1 >= 8) return forget(ends);
        if (lineEnd == '\n' && codeEnd[-1] == '\r') --length;
        if (length - 1 >= 7) return forget(ends);
        const std::uint64_t key = keyOf(at, static_cast<unsigned>(length));
        const Entry& entry = entries_[slotOf(key)];
        if (entry.key != key) return forget(ends);
        tag.code = entry.code;
        tag.value = codeEnd + 1;
        tag.valueEnd = ends.base + lowestBit(valueEnds);
        tag.next = tag.valueEnd + 1;
        if (lineEnd == '\n' && tag.valueEnd != tag.value && tag.valueEnd[-1] == '\r') --tag.valueEnd;
        ends.bits = valueEnds & (valueEnds - 1);
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
    static const Entry* forget(LineEnds& ends) {
        ends.bits = 0;
        return nullptr;
    }
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
