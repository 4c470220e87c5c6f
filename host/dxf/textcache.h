// The text forms of a binary drawing's records that were read last.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "host/dxf/arena.h"
#include "host/dxf/record.h"
#include "host/dxf/sizes.h"

namespace qrs::dxf {

// A text stays where it lies until kKept bytes of others have come after it; reading a whole drawing keeps twice that
// at most.
class TextCache {
  public:
    static constexpr std::size_t kKept = kTextsKept;

    // Null data when the record's text is not there any more.
    std::string_view find(RecordId id) const {
        const Slot& slot = slots_[id & (kSlots - 1)];
        return slot.id == id && slot.generation == generation_ ? slot.text : std::string_view();
    }
    std::string_view keep(RecordId id, std::string_view text) {
        used_ += text.size() + 1;
        if (used_ > kKept) {
            used_ = text.size() + 1;
            older_ = std::move(newer_);
            newer_ = Arena();
            ++generation_;
        }
        Slot& slot = slots_[id & (kSlots - 1)];
        slot = {newer_.at(newer_.keep(text), text.size()), id, generation_};
        return slot.text;
    }
    void forget(RecordId id) {
        Slot& slot = slots_[id & (kSlots - 1)];
        if (slot.id == id) slot.id = kNoRecord;
    }
    // Nothing is found again; what was handed out stays where it lies.
    void forgetAll() { ++generation_; }

  private:
    static constexpr RecordId kSlots = kTextSlots;
    struct Slot {
        std::string_view text;
        RecordId id = kNoRecord;
        std::uint32_t generation = 0;
    };
    std::array<Slot, kSlots> slots_;
    Arena newer_;
    Arena older_;
    std::size_t used_ = 0;
    std::uint32_t generation_ = 0;
};

}  // namespace qrs::dxf
