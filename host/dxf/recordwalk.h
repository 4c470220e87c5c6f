// Tells of each tag of a record which part of the record it stands in.
//
//     for (RecordWalk walk(drawing.tags(id)); walk.next(tag);)
//         if (walk.isOwn() && tag.code == codes::kLayer) ...
//
// A record is, in this order: its own tags, cut into sections by subclass marks (100), with groups (102) among them;
// embedded objects (101); extended data (from the first 1001 on). The rules hold for whoever reads records:
//
// - A 102 whose value begins with '{' opens the group of that name, one with '}' closes it; both belong to the group.
//   Groups do not nest: a '{' within one begins another. Any other 102, an empty one too, is a value like others: data
//   of applications uses the code so. A group that is never closed reaches to the extended data.
// - What stands after a 101 speaks of the embedded object, not of the record, whatever its codes are.
// - Extended data stands last, so nothing after its first tag is the record's own. Codes from 1000 on that stand
//   before a 1001 are values like others: the parameters and actions of dynamic blocks have their points there.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/dxf/groupcodes.h"
#include "host/dxf/tags.h"

namespace qrs::dxf {

enum class Part : std::uint8_t { Own, Group, Embedded, Xdata };

// The place within a record, for those who cut tags themselves.
class RecordPlace {
  public:
    // Goes on to the next tag, and gives its part. The value must live as long as its mark is asked for.
    Part pass(int code, std::string_view value) {
        if (code < codes::kSubclass) return part_;  // nearly all
        if (code == codes::kXdataApplication) part_ = Part::Xdata;
        if (part_ == Part::Xdata || part_ == Part::Embedded) return part_;
        if (code == codes::kGroup) return passGroup(trimmed(value));
        if (part_ == Part::Group) return part_;
        if (code == codes::kSubclass) {
            section_ = value;
            ++sections_;
        } else if (code == codes::kEmbedded) {
            part_ = Part::Embedded;
        }
        return part_;
    }
    Part part() const { return part_; }
    // Marks of subclasses met, those in groups and embedded objects not counted.
    int sections() const { return sections_; }
    // The last of these marks; empty before the first.
    std::string_view section() const { return trimmed(section_); }
    // The name of the group met last, without its brace.
    std::string_view group() const { return group_; }

  private:
    Part passGroup(std::string_view value) {
        const char first = value.empty() ? '\0' : value.front();
        if (first == '}' && part_ == Part::Group) {
            part_ = Part::Own;
            return Part::Group;
        }
        if (first == '{') {
            group_ = value.substr(1);
            part_ = Part::Group;
        }
        return part_;
    }

    std::string_view section_;
    std::string_view group_;
    int sections_ = 0;
    Part part_ = Part::Own;
};

// Walks the tags of a record with their places. Comments are passed over.
class RecordWalk {
  public:
    explicit RecordWalk(TagCursor cursor) : cursor_(cursor) {}

    bool next(Tag& tag) {
        if (!cursor_.next(tag)) return false;
        part_ = place_.pass(tag.code, tag.value);
        return true;
    }
    Part part() const { return part_; }
    // The tag is the record's own: neither in a group, nor an embedded object's, nor extended data.
    bool isOwn() const { return part_ == Part::Own; }
    // Of the tag's place; a mark belongs to the section it begins.
    int sections() const { return place_.sections(); }
    std::string_view section() const { return place_.section(); }
    // The name of the group the tag stands in, without its brace; empty outside of groups.
    std::string_view group() const { return part_ == Part::Group ? place_.group() : std::string_view(); }

  private:
    TagCursor cursor_;
    RecordPlace place_;
    Part part_ = Part::Own;
};

}  // namespace qrs::dxf
