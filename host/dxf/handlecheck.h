// Finds handles that are given twice and pointers to handles nobody has, while a file is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace qrs::dxf {

// A set of handles: one bit each, as programs count them up; those far out of a file's size are kept apart.
class HandleSet {
  public:
    explicit HandleSet(std::size_t fileSize) : limit_(fileSize < kLeastLimit ? kLeastLimit : fileSize) {}
    // False when the handle was in the set already.
    bool add(std::uint64_t handle) {
        if (handle >= limit_) return far_.insert(handle).second;
        const auto word = static_cast<std::size_t>(handle / 64);
        if (word >= bits_.size()) bits_.resize(word + word / 2 + 64);
        const std::uint64_t bit = std::uint64_t{1} << handle % 64;
        const bool isNew = (bits_[word] & bit) == 0;
        bits_[word] |= bit;
        return isNew;
    }
    bool has(std::uint64_t handle) const {
        if (handle >= limit_) return far_.count(handle) != 0;
        const auto word = static_cast<std::size_t>(handle / 64);
        return word < bits_.size() && (bits_[word] >> handle % 64 & 1) != 0;
    }
    bool isApartFrom(const HandleSet& other) const {
        for (std::size_t word = 0; word < bits_.size() && word < other.bits_.size(); ++word) {
            if ((bits_[word] & other.bits_[word]) != 0) return false;
        }
        for (const std::uint64_t handle : far_) {
            if (other.has(handle)) return false;
        }
        return true;
    }
    // Takes in those of another set for a file of the same size.
    void add(const HandleSet& other) {
        if (bits_.size() < other.bits_.size()) bits_.resize(other.bits_.size());
        for (std::size_t word = 0; word < other.bits_.size(); ++word)
            bits_[word] |= other.bits_[word];
        far_.insert(other.far_.begin(), other.far_.end());
    }
    bool isPartOf(const HandleSet& other) const {
        for (std::size_t word = 0; word < bits_.size(); ++word) {
            const std::uint64_t theirs = word < other.bits_.size() ? other.bits_[word] : 0;
            if ((bits_[word] & ~theirs) != 0) return false;
        }
        for (const std::uint64_t handle : far_) {
            if (!other.has(handle)) return false;
        }
        return true;
    }

  private:
    static constexpr std::uint64_t kLeastLimit = std::uint64_t{1} << 16;
    std::uint64_t limit_;
    std::vector<std::uint64_t> bits_;
    std::unordered_set<std::uint64_t> far_;
};

}  // namespace qrs::dxf
