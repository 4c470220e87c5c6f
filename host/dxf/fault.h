// What is wrong in a drawing, with its place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

// What faults have in common, for a line that sums them up.
enum class FaultKind {
    MissingEnd,
    StrayRecord,
    WrongCount,
    HandleTwice,
    DeadPointer,
    NoName,
    NoGroupCode,
    ForeignNumber,
    UnknownVersion,
    CutLineEnd,
    BlockInItself,
};
constexpr std::size_t kFaultKinds = 11;

struct Fault {
    FaultKind kind = FaultKind::MissingEnd;
    std::uint64_t offset = 0;     // in the file, of a byte of the line to be named
    RecordId record = kNoRecord;  // whose handle is to be named
    std::string text;             // "SEQEND of the POLYLINE is missing"
    std::uint64_t line = 0;       // from 1; 0 in a binary drawing
    std::uint64_t handle = 0;     // of the record; 0 when it has none
    // "line 12, handle 2A: SEQEND ..."; "byte 345: ..." in a binary drawing.
    std::string message() const;
};

// The faults of a drawing that can be worked on all the same: the first hundred, and then one that counts the others,
// because a drawing damaged all over shall not fill the memory with what is wrong in it.
class Faults {
  public:
    // The reader meets them in any order.
    void add(std::size_t offset, RecordId record, FaultKind kind, std::string text);
    // Further ones are only counted: they need no text.
    bool isFull() const { return all_.size() == kMost; }
    // Puts them into the order of the file, with their lines and handles. Nothing is added after that.
    void finish(std::string_view bytes, char lineEnd, const RecordStore& records);
    const std::vector<Fault>& all() const { return all_; }
    // "3 errors: 2 pointers to nothing (first: line 90), 1 missing end (line 12)"; empty when nothing is wrong.
    std::string summary() const;

  private:
    static constexpr std::size_t kMost = 100;

    // Faults of one kind.
    struct Sum {
        std::uint64_t count = 0;
        Fault first;  // by its place in the file
    };

    std::vector<Fault> all_;
    std::array<Sum, kFaultKinds> sums_;
    std::uint64_t further_ = 0;
};

// The number of the line that holds a byte, from 1; 0 in a binary drawing, which has none.
std::uint64_t lineNumber(std::string_view bytes, std::size_t offset, char lineEnd);

}  // namespace qrs::dxf
