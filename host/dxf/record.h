// One entry of a drawing's index, and the store that keeps millions of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/dxf/sizes.h"

namespace qrs::dxf {

using RecordId = std::uint32_t;
constexpr RecordId kNoRecord = 0xFFFFFFFFu;
using NameId = std::uint32_t;
constexpr NameId kNoName = 0;

enum class RecordKind : std::uint8_t {
    Preamble,        // what stands before the first tag
    Section,         // 0 SECTION, with its 2 name
    HeaderVariable,  // 9 $NAME
    Class,           // 0 CLASS
    Table,           // 0 TABLE: head of a symbol table
    TableRecord,     // a record of a symbol table
    EndTable,
    Block,   // 0 BLOCK: head of a block definition
    Entity,  // entity of a block definition or of the ENTITIES section, sub-entities (VERTEX, ATTRIB, SEQEND) included
    EndBlock,
    Object,  // a record of the OBJECTS section
    EndSection,
    EndOfFile,
    Other,  // a record of an unknown section, or anything after EOF
};

enum RecordFlag : std::uint8_t {
    kErased = 1,
    kEdited = 2,      // bytes lie in memory, not in the file
    kNew = 4,         // not in the file as it was read
    kPaperSpace = 8,  // entity with 67 = 1
    kInvisible = 16,  // entity with 60 other than 0
    kSubEntity = 32,  // VERTEX, ATTRIB, SEQEND after their owner
    kHasXdata = 64,
    kHasNewBefore = 128,  // new records stand right before it; only for the drawing itself
};

struct Record {
    std::uint64_t offset = 0;    // in the file, or in the edit arena when kEdited
    std::uint32_t stored = 0;    // bytes there; Drawing::length() is what places of tags count in
    NameId layer = kNoName;      // code 8 as spelled in the file; entities and the heads and ends of blocks only
    std::uint64_t handle = 0;    // code 5 (105 for DIMSTYLE); 0 when it has none
    RecordId owner = kNoRecord;  // the Section, Table or Block record it lies under; kSubEntity: the main entity
    std::uint16_t type = 0;      // interned type name (LINE, LAYER, $ACADVER ...): typeName()
    RecordKind kind = RecordKind::Other;
    std::uint8_t flags = 0;
};
static_assert(sizeof(Record) == 32, "a million records shall stay 32 MB");

// Records in chunks: growing never moves one, and never needs twice the memory.
class RecordStore {
  public:
    std::size_t size() const { return size_; }
    Record& operator[](RecordId id) {
        const std::size_t slot = slotOf(id);
        return chunks_[slot >> kShift][slot & kMask];
    }
    const Record& operator[](RecordId id) const {
        const std::size_t slot = slotOf(id);
        return chunks_[slot >> kShift][slot & kMask];
    }
    // A fresh record at the end; its id is the size before.
    Record& append() {
        if ((slotOf(size_) & kMask) == 0) chunks_.push_back(std::make_unique<Record[]>(std::size_t{1} << kShift));
        const auto id = static_cast<RecordId>(size_++);
        return (*this)[id];
    }

    // Puts the records of another store, from one of them on, after these, without moving any. Possible once.
    void takeOver(RecordStore& other, RecordId from) {
        seam_ = size_;
        gap_ = (chunks_.size() << kShift) + from - size_;
        for (auto& chunk : other.chunks_)
            chunks_.push_back(std::move(chunk));
        size_ += other.size_ - from;
    }

    bool isJoined() const { return gap_ != 0; }

  private:
    static constexpr unsigned kShift = kRecordPieceBits;
    static constexpr std::size_t kMask = (std::size_t{1} << kShift) - 1;
    std::size_t slotOf(std::size_t id) const { return id < seam_ ? id : id + gap_; }
    std::vector<std::unique_ptr<Record[]>> chunks_;
    std::size_t size_ = 0;
    // From the record seam_ on, so many places in the chunks are left out.
    std::size_t seam_ = static_cast<std::size_t>(-1);
    std::size_t gap_ = 0;
};

}  // namespace qrs::dxf
