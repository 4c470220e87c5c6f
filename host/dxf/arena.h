// Memory for edited records: handed out from chunks that never move.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "host/dxf/sizes.h"
#include "host/platform/pages.h"

namespace qrs::dxf {

// A place is the chunk's number in the upper half and the offset within it in the lower half.
class Arena {
  public:
    // Keeps a copy of the bytes and gives its place.
    std::uint64_t keep(std::string_view bytes) {
        if (chunks_.empty() || size_ - used_ < rounded(bytes.size())) open(rounded(bytes.size()));
        const std::uint64_t place = (std::uint64_t{chunks_.size() - 1} << 32) | used_;
        if (!bytes.empty()) std::memcpy(chunks_.back().get() + used_, bytes.data(), bytes.size());
        used_ += rounded(bytes.size());
        return place;
    }
    // Puts other bytes where a piece of the given length lies. False, nothing changed, when they do not fit there. The
    // bytes must not overlap the piece.
    bool replace(std::uint64_t place, std::size_t length, std::string_view bytes) {
        const std::size_t offset = static_cast<std::uint32_t>(place);
        const bool isLast = (place >> 32) + 1 == chunks_.size() && offset + rounded(length) == used_;
        if (rounded(bytes.size()) > rounded(length)) {
            if (!isLast || size_ - offset < rounded(bytes.size())) return false;
            used_ = offset + rounded(bytes.size());
        }
        if (!bytes.empty()) {
            std::memcpy(chunks_[static_cast<std::size_t>(place >> 32)].get() + offset, bytes.data(), bytes.size());
        }
        return true;
    }
    std::string_view at(std::uint64_t place, std::size_t length) const {
        return {chunks_[static_cast<std::size_t>(place >> 32)].get() + static_cast<std::uint32_t>(place), length};
    }

  private:
    // Pieces are a little longer than asked for, so that a name or number that grows mostly stays in place.
    static std::size_t rounded(std::size_t length) { return (length + 15) & ~std::size_t{15}; }
    void open(std::size_t atLeast) {
        // After some pieces it is plain that much changes.
        const bool isMuch = chunks_.size() >= kFewArenaPieces;
        size_ = std::max(atLeast, isMuch ? kLargeArenaPiece : kArenaPiece);
        chunks_.emplace_back(new char[size_]);
        if (isMuch) platform::preferLargePages(chunks_.back().get(), size_);
        used_ = 0;
    }

    std::vector<std::unique_ptr<char[]>> chunks_;
    std::size_t size_ = 0;
    std::size_t used_ = 0;
};

}  // namespace qrs::dxf
