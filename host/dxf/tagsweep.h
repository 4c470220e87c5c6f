// Cuts the tags of many records, fast: for those who look at a whole drawing. Comments are tags like others here.
//
//     TagSweep sweep = drawing.beginSweep();
//     for (sweep.begin(drawing.bytes(id)); sweep.next(tag);) ...
#pragma once

#include <functional>
#include <string_view>

#include "host/dxf/codecache.h"
#include "host/dxf/lines.h"

namespace qrs::dxf {

class TagSweep {
  public:
    // file: the bytes that records may lie in; what follows a record there may be looked at.
    TagSweep(std::string_view file, char lineEnd) : file_(file), lineEnd_(lineEnd) {}

    void begin(std::string_view record) {
        at_ = record.data();
        end_ = at_ + record.size();
        const char* const fileEnd = file_.data() + file_.size();
        const std::less<const char*> isBefore;
        const bool liesInFile = !isBefore(at_, file_.data()) && !isBefore(fileEnd, end_);
        readable_ = liesInFile ? fileEnd : end_;
        ends_.bits = 0;
    }
    bool next(RawTag& tag) {
        if (at_ == end_) return false;
        const bool isFar = static_cast<std::size_t>(readable_ - at_) >= LineEnds::kReach;
        if (!kFastTags || !isFar || cache_.fastTag(at_, lineEnd_, ends_, tag) == nullptr) {
            if (cutTag(at_, end_, lineEnd_, tag) != Cut::Tag) {
                at_ = end_;
                return false;
            }
            if (isFar) cache_.learn(at_, tag, lineEnd_);
        }
        at_ = tag.next;
        return true;
    }

  private:
    std::string_view file_;
    char lineEnd_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    const char* readable_ = nullptr;  // up to here
    LineEnds ends_;
    CodeCache cache_;
};

}  // namespace qrs::dxf
