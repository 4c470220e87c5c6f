// Cuts the tags of many records, fast: for those who look at a whole drawing. Comments are tags like others here.
//
//     TagSweep sweep = drawing.beginSweep();
//     for (sweep.begin(drawing.bytes(id)); sweep.next(tag);) ...
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/dxf/binary.h"
#include "host/dxf/codecache.h"
#include "host/dxf/codeform.h"
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

// The same where records are stored: those of a binary drawing are not put into text form, so that several threads may
// read them.
//
//     StoredSweep sweep = drawing.beginStoredSweep();
//     for (sweep.begin(drawing.storedBytes(id)); sweep.next(tag);) ... sweep.value(tag) ...
class StoredSweep {
  public:
    StoredSweep(std::string_view file, char lineEnd, CodeForm codeForm)
        : text_(file, lineEnd), isBinary_(lineEnd == kBinaryLineEnd), codeForm_(codeForm) {}

    void begin(std::string_view stored) {
        if (!isBinary_) return text_.begin(stored);
        at_ = stored.data();
        end_ = at_ + stored.size();
    }
    // The value is the bytes as they lie.
    bool next(RawTag& tag) {
        if (!isBinary_) return text_.next(tag);
        if (at_ == end_ || cutBinary(codeForm_, at_, end_, tag) != Cut::Tag) {
            at_ = end_;
            return false;
        }
        at_ = tag.next;
        return true;
    }
    // In text form. It holds until another value is asked for.
    std::string_view value(const RawTag& tag) {
        if (!isBinary_ || isTextual(valueKindOf(tag.code))) return textOf(tag);
        number_.clear();
        appendValueText(tag, number_);
        return number_;
    }

  private:
    TagSweep text_;
    bool isBinary_;
    CodeForm codeForm_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    std::string number_;
};

}  // namespace qrs::dxf
