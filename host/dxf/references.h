// References from record to record: where they stand, and what becomes of one when the record it names is gone. Whoever
// finds, checks or clears references asks here, so that all of them mean the same ones.
//
//     ReferencePlace place(typeName);
//     for (TagCursor cursor = ...; cursor.next(tag);)
//         if (const ReferenceRule* rule = place.pass(tag.code, tag.value)) ...
#pragma once

#include <cstdint>
#include <string_view>

#include "host/dxf/groupcodes.h"
#include "host/dxf/recordwalk.h"

namespace qrs::dxf {

// What becomes of a reference whose target is gone.
enum class Loss : std::uint8_t {
    Stays,   // it may name what is not there
    Zero,    // it becomes 0 and keeps its place, by which applications know it
    Entry,   // its tag goes, with those that make up one entry with it
    Group,   // the 102 group around it goes
    Record,  // the record goes: it speaks of the other one alone
};

// What goes when the last entry of a list has gone.
enum class Emptied : std::uint8_t { Nothing, Group, Record };

constexpr int kNoCode = -1;

// An integer of the same section that says whether, or how, the reference is there.
struct Statement {
    int code = kNoCode;
    std::int64_t kept = 0;  // the bits of it that stay when the reference goes
    std::int64_t set = 0;   // and those that are set
};

struct ReferenceRule {
    // Where it holds: the record's type, its subclass mark, how the name of the 102 group begins, the section's first
    // text (code 1). What is empty holds everywhere.
    std::string_view record;
    std::string_view section;
    std::string_view group;
    std::string_view text;
    int first;  // group codes
    int last;
    Loss loss;

    int before = kNoCode;                        // the tag before the reference is of its entry
    int after[3] = {kNoCode, kNoCode, kNoCode};  // so are these after it
    int count = kNoCode;                         // the last such tag before the entry counts the list
    Emptied emptied = Emptied::Nothing;
    bool isWhole = false;        // with one entry all others go, and the reactors that answer them
    bool isDoneWithout = false;  // nothing is kept for its sake, whatever its code says
    bool isLayerName = false;    // a layer by name, not a record by its handle
    Statement statement = {};
};

// The place within a record, for those who go through its tags one by one.
class ReferencePlace {
  public:
    explicit ReferencePlace(std::string_view type) : type_(type) {}
    // Goes on to the next tag; values must live as long as the place is used. Null when the tag refers to nothing.
    const ReferenceRule* pass(int code, std::string_view value);
    // The tag passed last names the owner of the record.
    bool isOwner() const { return isOwner_; }
    // Of the tag passed last.
    const RecordPlace& place() const { return place_; }

  private:
    bool holds(const ReferenceRule& rule) const;

    std::string_view type_;
    RecordPlace place_;
    std::string_view text_;  // the first of the section
    bool hasText_ = false;
    bool hasOwner_ = false;
    bool isOwner_ = false;
};

}  // namespace qrs::dxf
