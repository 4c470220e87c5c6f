// Changing the bytes of binary records.
#include "host/dxf/binaryform.h"

#include "host/dxf/binary.h"
#include "host/dxf/lines.h"
#include "host/dxf/require.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

namespace {

void cannotWrite(int code, std::string_view value, Draft& draft) {
    if (!draft.problem.empty()) return;
    draft.problem = translated("\"%1\" has no place under group code %2 of a binary drawing", value, code);
}

}  // namespace

std::string_view BinaryForm::textOf(const StoredRecord& record) {
    const std::string_view known = texts_.find(record.id);
    if (known.data() != nullptr) return known;
    // What stands before the first record is the signature, which holds no tags.
    const bool isPreamble = record.bytes.substr(0, kBinarySignature.size()) == kBinarySignature;
    std::string text;
    appendRecordText(codes_, isPreamble ? std::string_view() : record.bytes, text);
    return texts_.keep(record.id, text);
}

void BinaryForm::readFields(std::string_view record, RecordFields& fields) const {
    forEachBinaryTag(
        codes_, record, [](int code) { return mattersToRecord(code); },
        [&](int code, std::string_view value) { fields.take(code, value); });
}

void BinaryForm::append(const std::vector<NewTag>& tags, Draft& draft) const {
    std::string value;
    for (const NewTag& tag : tags) {
        value.clear();
        appendSpelled(tag.value, value);
        if (!appendBinaryTag(codes_, tag.code, value, draft.bytes)) cannotWrite(tag.code, tag.value, draft);
    }
}

int BinaryForm::setValue(const StoredRecord& record, const Tag& tag, std::string_view value, Draft& draft) {
    const std::string_view old = record.bytes;
    std::size_t first = tag.begin;
    std::size_t last = tag.end;
    require(tag.begin < tag.end && binaryStretch(codes_, old, textOf(record), first, last),
            "a tag that lies outside of its record");
    RawTag raw{};
    require(cutBinary(codes_, old.data() + first, old.data() + last, raw) == Cut::Tag && raw.next == old.data() + last,
            "a place in a record that is no tag");
    std::string spelled;
    appendSpelled(value, spelled);
    draft.begin();
    draft.bytes.assign(old.substr(0, first + codeSize(codes_, old.data() + first)));
    if (appendValueBytes(raw.code, spelled, draft.bytes)) {
        draft.bytes += old.substr(last);
    } else {
        draft.bytes.assign(old);
        cannotWrite(raw.code, value, draft);
    }
    return raw.code;
}

// In one walk through both forms, since the places are those of the text form.
void BinaryForm::editTags(const StoredRecord& record, const std::vector<TagEdit>& edits, Draft& draft) {
    const std::string_view text = textOf(record);
    const char* const textEnd = text.data() + text.size();
    const char* const end = record.bytes.data() + record.bytes.size();
    const char* line = text.data();
    const char* at = record.bytes.data();
    auto edit = edits.begin();
    draft.begin();
    std::string& out = draft.bytes;
    for (RawTag tag{}, asText{}; edit != edits.end(); at = tag.next, line = asText.next) {
        require(line != textEnd && cutTag(line, textEnd, kBinaryLineEnd, asText) == Cut::Tag &&
                    cutBinary(codes_, at, end, tag) == Cut::Tag,
                "a tag that lies outside of its record");
        if (edit->tag.begin != static_cast<std::size_t>(line - text.data())) {
            out.append(at, tag.next);
            continue;
        }
        if (!edit->isGone) {
            std::string value;
            if (edit->hasValue) appendSpelled(edit->value, value);
            const char* const afterCode = at + codeSize(codes_, at);
            out.append(at, afterCode);
            const bool isWritten = edit->hasValue && appendValueBytes(tag.code, value, out);
            if (edit->hasValue && !isWritten) cannotWrite(tag.code, edit->value, draft);
            if (!isWritten) out.append(afterCode, tag.next);
        }
        append(edit->after, draft);
        ++edit;
    }
    out.append(at, end);
}

void BinaryForm::replaceTags(const StoredRecord& record, std::uint32_t begin, std::uint32_t end,
                             const std::vector<NewTag>& tags, Draft& draft) {
    const std::string_view old = record.bytes;
    std::size_t first = begin;
    std::size_t last = end;
    require(begin <= end && binaryStretch(codes_, old, textOf(record), first, last),
            "a stretch that lies outside of its record");
    draft.begin();
    draft.bytes.assign(old.substr(0, first));
    append(tags, draft);
    draft.bytes += old.substr(last);
}

void BinaryForm::writeRecord(const std::vector<NewTag>& tags, std::string_view /*neighbour*/, Draft& draft) {
    draft.begin();
    append(tags, draft);
}

}  // namespace qrs::dxf
