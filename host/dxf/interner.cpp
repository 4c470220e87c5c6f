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

// Every entity looks up its layer and its type, so names are hashed and compared in words; the last word overlaps the
// one before it.
std::uint32_t hashOf(std::string_view name) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;
    const char* const data = name.data();
    const std::size_t size = name.size();
    std::uint64_t hash = size * kFactor;
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            hash = (hash ^ load<std::uint64_t>(data + at)) * kFactor;
            hash ^= hash >> 32;
        }
        hash ^= load<std::uint64_t>(data + size - 8);
    } else if (size >= 4) {
        hash ^= load<std::uint32_t>(data) | std::uint64_t{load<std::uint32_t>(data + size - 4)} << 32;
    } else {
        for (const char c : name)
            hash = hash << 8 ^ static_cast<unsigned char>(c);
    }
    hash *= kFactor;
    hash ^= hash >> 32;  // what differs may be in the last bytes alone, and a product carries upwards only
    return static_cast<std::uint32_t>((hash * kFactor) >> 32);
}

bool same(std::string_view a, std::string_view b) {
    const std::size_t size = a.size();
    if (size != b.size()) return false;
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            if (load<std::uint64_t>(a.data() + at) != load<std::uint64_t>(b.data() + at)) return false;
        }
        return load<std::uint64_t>(a.data() + size - 8) == load<std::uint64_t>(b.data() + size - 8);
    }
    if (size >= 4) {
        return load<std::uint32_t>(a.data()) == load<std::uint32_t>(b.data()) &&
               load<std::uint32_t>(a.data() + size - 4) == load<std::uint32_t>(b.data() + size - 4);
    }
    for (std::size_t at = 0; at < size; ++at) {
        if (a[at] != b[at]) return false;
    }
    return true;
}

}  // namespace

Interner::Interner() : names_(1), slots_(256) {}

std::size_t Interner::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].number != 0 && (slots_[at].hash != hash || !same(names_[slots_[at].number], name))) {
        at = (at + 1) & mask;
    }
    return at;
}

std::uint32_t Interner::find(std::string_view name) const {
    return slots_[slotOf(name, hashOf(name))].number;
}

std::uint32_t Interner::intern(std::string_view name) {
    const std::uint32_t hash = hashOf(name);
    std::size_t at = slotOf(name, hash);
    if (slots_[at].number != 0) return slots_[at].number;
    if (names_.size() * 2 > slots_.size()) {
        grow();
        at = slotOf(name, hash);
    }
    const auto number = static_cast<std::uint32_t>(names_.size());
    names_.push_back(name);
    slots_[at] = {hash, number};
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
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.number == 0) continue;
        std::size_t at = slot.hash & mask;
        while (slots_[at].number != 0)
            at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

}  // namespace qrs::dxf
