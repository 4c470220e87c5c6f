// Changing the lines of records.
#include "host/dxf/textform.h"

#include "host/dxf/lines.h"
#include "host/dxf/require.h"

namespace qrs::dxf {

namespace {

void appendTag(std::string& out, const NewTag& tag, std::size_t codeWidth, std::string_view lineEnd) {
    const std::string code = std::to_string(tag.code);
    if (code.size() < codeWidth) out.append(codeWidth - code.size(), ' ');
    out += code;
    out += lineEnd;
    appendSpelled(tag.value, out);
    out += lineEnd;
}

// What the last line lacks of its end; only that of a file can lack it.
std::string_view missingLineEnd(std::string_view bytes, char lineEnd, std::string_view whole) {
    if (bytes.empty() || bytes.back() == lineEnd) return {};
    return lineEnd == '\n' && bytes.back() == '\r' ? std::string_view("\n") : whole;
}

// The tag as it stands in the record.
RawTag tagAt(std::string_view record, const Tag& tag, char lineEnd) {
    require(tag.begin < tag.end && tag.end <= record.size(), "a tag that lies outside of its record");
    RawTag raw{};
    require(cutTag(record.data() + tag.begin, record.data() + tag.end, lineEnd, raw) == Cut::Tag,
            "a place in a record that is no tag");
    return raw;
}

}  // namespace

void TextForm::readFields(std::string_view record, RecordFields& fields) const {
    Tag tag;
    for (TagCursor cursor(record, lineEnd_); cursor.next(tag);)
        fields.take(tag.code, tag.value);
}

// The style a record shows in its first line: "  0" means codes three wide, "0" codes as long as they are.
TextForm::Style TextForm::styleOf(std::string_view record) const {
    const char* const begin = record.data();
    const Line line = cutLine(begin, begin + record.size(), lineEnd_);
    Style style{"\n", 0};
    if (lineEnd_ == '\r') {
        style.lineEnd = "\r";
    } else if (line.hasEnd && line.end + 1 != line.next) {
        style.lineEnd = "\r\n";
    }
    const std::size_t digits =
        std::string_view(line.begin, static_cast<std::size_t>(line.end - line.begin)).find_first_not_of(' ');
    if (digits != std::string_view::npos && digits != 0) {
        const char* end = line.end;
        while (end[-1] == ' ' || end[-1] == '\t')
            --end;
        style.codeWidth = static_cast<std::size_t>(end - line.begin);
    }
    return style;
}

int TextForm::setValue(const StoredRecord& record, const Tag& tag, std::string_view value, Draft& draft) {
    const std::string_view old = record.bytes;
    const RawTag raw = tagAt(old, tag, lineEnd_);
    draft.begin();
    draft.bytes.assign(old.data(), raw.value);
    appendSpelled(value, draft.bytes);
    draft.bytes.append(raw.valueEnd, old.data() + old.size());
    return raw.code;
}

void TextForm::editTags(const StoredRecord& record, const std::vector<TagEdit>& edits, Draft& draft) {
    const std::string_view old = record.bytes;
    const Style style = styleOf(old);
    draft.begin();
    std::string& out = draft.bytes;
    std::uint32_t copied = 0;
    for (const TagEdit& edit : edits) {
        require(copied <= edit.tag.begin, "tags that are not in the order of their record");
        const RawTag raw = tagAt(old, edit.tag, lineEnd_);
        if (edit.isGone) {
            out += old.substr(copied, edit.tag.begin - copied);
        } else if (edit.hasValue) {
            out.append(old.data() + copied, raw.value);
            appendSpelled(edit.value, out);
            out.append(raw.valueEnd, old.data() + edit.tag.end);
        } else {
            out += old.substr(copied, edit.tag.end - copied);
        }
        copied = edit.tag.end;
        if (!edit.after.empty()) out += missingLineEnd(out, lineEnd_, style.lineEnd);
        for (const NewTag& tag : edit.after)
            appendTag(out, tag, style.codeWidth, style.lineEnd);
    }
    out += old.substr(copied);
}

void TextForm::replaceTags(const StoredRecord& record, std::uint32_t begin, std::uint32_t end,
                           const std::vector<NewTag>& tags, Draft& draft) {
    const std::string_view old = record.bytes;
    require(begin <= end && end <= old.size(), "a stretch that lies outside of its record");
    const Style style = styleOf(old);
    draft.begin();
    draft.bytes.assign(old.substr(0, begin));
    if (!tags.empty() && begin == old.size()) draft.bytes += missingLineEnd(old, lineEnd_, style.lineEnd);
    for (const NewTag& tag : tags)
        appendTag(draft.bytes, tag, style.codeWidth, style.lineEnd);
    draft.bytes += old.substr(end);
}

void TextForm::writeRecord(const std::vector<NewTag>& tags, std::string_view neighbour, Draft& draft) {
    const Style style = styleOf(neighbour);
    draft.begin();
    for (const NewTag& tag : tags)
        appendTag(draft.bytes, tag, style.codeWidth, style.lineEnd);
}

bool TextForm::endLastLine(std::string_view record, Draft& draft) {
    const Style style = styleOf(record);
    const std::string_view missing = missingLineEnd(record, lineEnd_, style.lineEnd);
    if (missing.empty()) return false;
    draft.begin();
    draft.bytes.assign(record);
    draft.bytes += missing;
    return true;
}

}  // namespace qrs::dxf
