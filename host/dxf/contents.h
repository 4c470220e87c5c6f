// What a drawing's records hold: bytes of the file until a record changes, then bytes in memory. Changes can be taken
// back step by step.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/dxf/arena.h"
#include "host/dxf/changelog.h"
#include "host/dxf/journal.h"
#include "host/dxf/record.h"

namespace qrs::dxf {

class Contents {
  public:
    explicit Contents(RecordStore& records) : records_(records) {}
    // The bytes that the places of unchanged records count in.
    void begin(std::string_view fileBytes) { fileBytes_ = fileBytes; }

    std::string_view of(RecordId id) const {
        const Record& one = records_[id];
        if ((one.flags & kEdited) != 0) return arena_.at(one.offset, one.stored);
        return fileBytes_.substr(static_cast<std::size_t>(one.offset), one.stored);
    }
    // Gives a record other bytes, which must not lie in the record itself.
    void replace(RecordId id, std::string_view bytes);
    void setErased(RecordId id, bool isErased);
    // A record that was just appended.
    void noteNew(RecordId id) { journal_.noteNew(id); }

    // Something was replaced, erased or brought back since the last save.
    bool isModified() const { return isModified_; }
    void noteSaved();
    const ChangeLog& changes() const { return changes_; }

    void beginStep(std::wstring name, DrawingMarks marks);
    std::uint64_t keepStep() { return journal_.keep(); }
    // The step that would be taken back next; null when there is none.
    const Journal::Step* lastStep() const { return journal_.last(); }
    // Its new records are erased, the others are what they were. There must be a step.
    void takeBack();

  private:
    void restore(RecordId id, const Record& before);

    RecordStore& records_;
    std::string_view fileBytes_;
    Arena arena_;
    Journal journal_;
    ChangeLog changes_;
    bool isModified_ = false;
    std::uint64_t saves_ = 0;  // how often the drawing was saved
};

}  // namespace qrs::dxf
