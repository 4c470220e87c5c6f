// Names that occur many times, kept once: a small number stands for each.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::dxf {

// Number 0 is "no name". Numbers are given in the order of first sight.
class Interner {
  public:
    Interner();
    // The number of a name, which must live as long as the interner (bytes of the mapped file).
    std::uint32_t intern(std::string_view name);
    // The same for a name that may go away: kept as a copy when it is new.
    std::uint32_t internCopy(std::string_view name);
    // 0 when the name was never seen.
    std::uint32_t find(std::string_view name) const;
    std::string_view operator[](std::uint32_t number) const { return names_[number]; }
    std::size_t size() const { return names_.size(); }

  private:
    // What is compared of a name: its first and its last bytes, which are all of most names.
    struct Key {
        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        std::uint32_t size = 0;
    };
    struct Slot {
        Key key;
        std::uint32_t number = 0;
    };
    static Key keyOf(std::string_view name);
    static std::uint64_t hashOf(std::string_view name, const Key& key);
    std::size_t slotOf(std::string_view name, const Key& key) const;
    void grow();

    std::vector<std::string_view> names_;
    std::vector<Slot> slots_;  // open addressing, a power of two, at most half full
    std::deque<std::string> copies_;
};

}  // namespace qrs::dxf
