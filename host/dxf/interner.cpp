// Interned names.
#include "host/dxf/interner.h"

namespace qrs::dxf {

namespace {

std::uint32_t hashOf(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash ^ (hash >> 15);
}

}  // namespace

Interner::Interner() : names_(1), slots_(256, 0) {}

std::size_t Interner::slotOf(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hashOf(name) & mask;
    while (slots_[slot] != 0 && names_[slots_[slot]] != name)
        slot = (slot + 1) & mask;
    return slot;
}

std::uint32_t Interner::find(std::string_view name) const {
    return slots_[slotOf(name)];
}

std::uint32_t Interner::findOrAdd(std::string_view name) {
    std::size_t slot = slotOf(name);
    if (slots_[slot] != 0) return slots_[slot];
    if (names_.size() * 2 > slots_.size()) {
        grow();
        slot = slotOf(name);
    }
    const auto number = static_cast<std::uint32_t>(names_.size());
    names_.push_back(name);
    slots_[slot] = number;
    return number;
}

std::uint32_t Interner::internCopy(std::string_view name) {
    if (const std::uint32_t known = find(name)) return known;
    copies_.emplace_back(name);
    return findOrAdd(copies_.back());
}

void Interner::grow() {
    slots_.assign(slots_.size() * 2, 0);
    for (std::uint32_t number = 1; number < names_.size(); ++number)
        slots_[slotOf(names_[number])] = number;
}

}  // namespace qrs::dxf
