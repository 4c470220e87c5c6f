// Interned names.
#include "host/dxf/interner.h"

#include <cstring>

namespace qrs::dxf {

namespace {

template <typename Word>
Word load(const char* at) {
    Word word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

constexpr std::size_t kWordBytes = sizeof(std::uint64_t);
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;

}  // namespace

// Every entity looks up its layer and its type, so names are hashed and compared in words; the last word overlaps the
// one before it.
Interner::Key Interner::keyOf(std::string_view name) {
    const char* const data = name.data();
    const std::size_t size = name.size();
    Key key;
    key.size = static_cast<std::uint32_t>(size);
    if (size >= kWordBytes) {
        key.head = load<std::uint64_t>(data);
        key.tail = load<std::uint64_t>(data + size - kWordBytes);
    } else if (size >= 4) {
        key.head = load<std::uint32_t>(data);
        key.tail = load<std::uint32_t>(data + size - 4);
    } else {
        for (const char c : name)
            key.head = key.head << 8 | static_cast<unsigned char>(c);
    }
    return key;
}

std::uint64_t Interner::hashOf(std::string_view name, const Key& key) {
    std::uint64_t hash = (key.head ^ key.size) * kFactor;
    for (std::size_t at = kWordBytes; at + kWordBytes < name.size(); at += kWordBytes) {
        hash ^= hash >> 32;
        hash = (hash ^ load<std::uint64_t>(name.data() + at)) * kFactor;
    }
    hash = (hash ^ hash >> 32 ^ key.tail) * kFactor;
    // What differs may be in the last bytes alone, and a product carries upwards only.
    hash = (hash ^ hash >> 32) * kFactor;
    return hash >> 32;
}

Interner::Interner() : names_(1), slots_(256) {}

std::size_t Interner::slotOf(std::string_view name, const Key& key) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = static_cast<std::size_t>(hashOf(name, key)) & mask;; at = (at + 1) & mask) {
        const Slot& slot = slots_[at];
        if (slot.number == 0) return at;
        const bool isAlike = slot.key.head == key.head && slot.key.tail == key.tail && slot.key.size == key.size;
        if (isAlike && (name.size() <= 2 * kWordBytes || names_[slot.number] == name)) return at;
    }
}

std::uint32_t Interner::find(std::string_view name) const {
    return slots_[slotOf(name, keyOf(name))].number;
}

std::uint32_t Interner::intern(std::string_view name) {
    const Key key = keyOf(name);
    std::size_t at = slotOf(name, key);
    if (slots_[at].number != 0) return slots_[at].number;
    if (names_.size() * 2 > slots_.size()) {
        grow();
        at = slotOf(name, key);
    }
    const auto number = static_cast<std::uint32_t>(names_.size());
    names_.push_back(name);
    slots_[at] = {key, number};
    return number;
}

std::uint32_t Interner::internCopy(std::string_view name) {
    if (const std::uint32_t known = find(name)) return known;
    copies_.emplace_back(name);
    return intern(copies_.back());
}

void Interner::grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.number != 0) slots_[slotOf(names_[slot.number], slot.key)] = slot;
    }
}

}  // namespace qrs::dxf
