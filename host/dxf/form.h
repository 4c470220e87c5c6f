// The form a drawing is written in, text or binary: how its records read, and how changes of them are spelled.
//
// Whoever reads tags sees records in text form, whatever the drawing is. Places of tags count in that form too.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/index.h"
#include "host/dxf/record.h"
#include "host/dxf/tags.h"

namespace qrs::dxf {

// The bytes of a record as they are about to be written.
struct Draft {
    std::string bytes;
    std::string problem;  // why not all of it could be written; empty when it was

    void begin() {
        bytes.clear();
        problem.clear();
    }
};

// A record and the bytes it is stored in.
struct StoredRecord {
    RecordId id;
    std::string_view bytes;
};

class Form {
  public:
    virtual ~Form() = default;

    virtual bool isBinary() const = 0;
    // The record in text form. It holds until the record is changed, and at least as long as TextCache says.
    virtual std::string_view textOf(const StoredRecord& record) = 0;
    // Texts made before the record, or any record, was changed are not given any more.
    virtual void forget(RecordId id) = 0;
    virtual void forgetAll() = 0;
    // Tells the fields of a record: its first tag, and all tags that matter to the index.
    virtual void readFields(std::string_view record, RecordFields& fields) const = 0;

    // Each of these begins the draft and writes the changed record to it. Line breaks in a value are spelled ^J and ^M.
    // A value that cannot be written stays what it was, or is left out when it is new; the draft then tells why.
    //
    // Another value for a tag; gives the tag's code.
    virtual int setValue(const StoredRecord& record, const Tag& tag, std::string_view value, Draft& draft) = 0;
    // Many changes at once, in the order of the record's tags.
    virtual void editTags(const StoredRecord& record, const std::vector<TagEdit>& edits, Draft& draft) = 0;
    // Tags in the place of those that take [begin, end).
    virtual void replaceTags(const StoredRecord& record, std::uint32_t begin, std::uint32_t end,
                             const std::vector<NewTag>& tags, Draft& draft) = 0;
    // A record of its own, in the style of a neighbour.
    virtual void writeRecord(const std::vector<NewTag>& tags, std::string_view neighbour, Draft& draft) = 0;
    // Gives a record's last line the end it lacks. False, nothing written, when it lacks none.
    virtual bool endLastLine(std::string_view record, Draft& draft) = 0;
};

// Appends a value with its line breaks spelled.
void appendSpelled(std::string_view value, std::string& out);

}  // namespace qrs::dxf
