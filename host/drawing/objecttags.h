// The tags of one object, in the drawing file or in an object that no drawing holds yet, read and written alike.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/dxf/version.h"

namespace qrs::host {

// One kind of tag a record may carry: its group code and the first version that knows it. A row of them is the order in
// which records are written.
struct CodeFormat {
    int code;
    dxf::Version since = dxf::Version::Oldest;
    const char* mark = nullptr;  // of a row with code 100: the subclass mark after which the following rows stand
};

// The row for a kind of object.
struct RecordFormat {
    const CodeFormat* codes = nullptr;
    std::size_t count = 0;
    int groupCode = -1;  // opens each of the groups that the rest of the row may repeat

    // Place in the order; -1 when the row does not have the code.
    int rankOf(int code) const;
    // Version::Oldest when every version knows it.
    dxf::Version sinceOf(int code) const;
    // Place of a subclass mark after another place; -1 when it has no place there.
    int rankOfMark(std::string_view mark, int rank) const;
};

// The format of what all entities share.
const RecordFormat& entityFormat();

// The tags of an object outside any drawing. Texts are UTF-8 until a drawing with its own encoding takes them.
struct DetachedTags {
    const RecordFormat* format;
    std::vector<dxf::NewTag> tags;
};

// Texts of tags: encoding and line breaks as drawings spell them.
std::wstring readText(const dxf::Drawing& drawing, std::string_view value);
std::string writeText(const dxf::Drawing& drawing, std::wstring_view text);

// A number padded as wide as a sample that opens with blanks.
std::string paddedLike(std::string_view sample, std::string value);

class ObjectTags {
  public:
    // Which tags count: all of the object, or for an entity those that all entities share (up to its second subclass).
    // Neither looks into 102 {...} groups or extended data.
    enum class Part { Whole, Common };

    ObjectTags(dxf::Drawing* drawing, dxf::RecordId record, const RecordFormat& format, Part part)
        : drawing_(drawing), record_(record), format_(&format), part_(part) {}
    explicit ObjectTags(DetachedTags* own) : own_(own), format_(own->format) {}
    // Of an object without tags: nothing is found, nothing can be set.
    ObjectTags() = default;

    // The same object, but only the tags that all entities share.
    ObjectTags common() const {
        ObjectTags copy = *this;
        copy.part_ = Part::Common;
        return copy;
    }

    // The same object, but only the tags of one of its repeating groups: from the nth tag with the code that opens each
    // of them up to the next such tag.
    ObjectTags group(int openingCode, int nth) const {
        ObjectTags copy = *this;
        copy.groupCode_ = openingCode;
        copy.groupNumber_ = nth;
        return copy;
    }

    bool has(int code) const;
    int count(int code) const;
    std::int64_t integer(int code, std::int64_t fallback, int nth = 0) const;
    double real(int code, double fallback, int nth = 0) const;
    std::wstring text(int code, std::wstring_view fallback = {}, int nth = 0) const;
    std::uint64_t handle(int code) const;

    // False when the version of the drawing does not know the code.
    bool canCarry(int code) const;

    // Write only what differs; a code the object lacks is put in its place in the order.
    void setInteger(int code, std::int64_t value, int nth = 0);
    void setReal(int code, double value, int nth = 0);
    void setText(int code, std::wstring_view value);
    // Another tag after the last one; in its place in the order when there is none.
    void append(int code, std::string value);
    void removeAll(int code);

  private:
    struct Found {
        std::string_view value;
        dxf::Tag tag;           // in a drawing
        std::size_t index = 0;  // outside
    };
    template <typename Visit>
    void visit(Visit&& visitor) const;
    bool find(int code, int nth, Found& found) const;
    void write(int code, int nth, std::string value);
    void insert(int code, std::string value);

    dxf::Drawing* drawing_ = nullptr;
    dxf::RecordId record_ = dxf::kNoRecord;
    DetachedTags* own_ = nullptr;
    const RecordFormat* format_ = nullptr;
    Part part_ = Part::Whole;
    int groupCode_ = -1;  // none: all tags of the part
    int groupNumber_ = 0;
};

}  // namespace qrs::host
