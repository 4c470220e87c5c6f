// The tags of a DXF record: group code and value, with their places in the record's bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/codeform.h"
#include "host/platform/text.h"

namespace qrs::dxf {

// One tag as it stands in a record. The value is the bytes between the line ends, as they stand (leading blanks kept).
struct Tag {
    int code = 0;
    std::string_view value;
    std::uint32_t begin = 0;  // offset in the record of the first byte of the code line
    std::uint32_t end = 0;    // offset after the value's line end
};

// A tag to be written; the value is in the bytes of the file.
struct NewTag {
    int code;
    std::string value;
};

// A change of one tag of many: another value, or none any more, and tags put after it.
struct TagEdit {
    Tag tag;
    bool hasValue = false;
    std::string value;
    std::vector<NewTag> after;
    bool isGone = false;
};

// Walks the tags of one record. Only well-formed records reach it: the reader checks each line when it opens a file.
class TagCursor {
  public:
    // lineEnd is the byte that ends the drawing's lines: LF (a CR before it belongs to the end), CR, or, for records of
    // binary drawings, NUL.
    TagCursor(std::string_view record, char lineEnd) : record_(record), lineEnd_(lineEnd) {}
    // For a record by itself: its first line tells.
    explicit TagCursor(std::string_view record);
    // False at the end of the record, and where what follows is no tag (after EOF). Comments (999) are passed over.
    bool next(Tag& tag);

  private:
    std::string_view record_;
    std::size_t position_ = 0;
    char lineEnd_;
};

// Walks the tags of one record where it is stored. Those who look at few tags of very many records use it, since it
// puts none of a binary drawing's into text form that is not asked for.
class StoredTags {
  public:
    // The bytes of the record as the drawing keeps them, and what ends the drawing's lines.
    StoredTags(std::string_view stored, char lineEnd, CodeForm codeForm)
        : at_(stored.data()), end_(stored.data() + stored.size()), lineEnd_(lineEnd), codeForm_(codeForm) {}
    // False at the end, as TagCursor::next.
    bool next();
    int code() const { return code_; }
    // In text form. It holds until the next tag.
    std::string_view value();

  private:
    const char* at_;
    const char* end_;
    char lineEnd_;
    CodeForm codeForm_;
    int code_ = 0;
    const char* value_ = nullptr;
    const char* valueEnd_ = nullptr;
    std::string number_;
};

// Conversions of values; blanks around a number are allowed. The fallback for text that is no number.
std::int64_t toInteger(std::string_view value, std::int64_t fallback = 0);
double toReal(std::string_view value, double fallback = 0.0);
// Hexadecimal handle; 0 when the value is none.
std::uint64_t toHandle(std::string_view value);
std::string handleText(std::uint64_t handle);
// Shortest decimal text that reads back as the same double and always holds a '.', as drawings write reals. What is no
// finite number has no spelling in a drawing and becomes "0.0".
std::string realText(double value);
// Values may have blanks around them.
using platform::trimmed;

}  // namespace qrs::dxf
