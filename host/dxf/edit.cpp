// Changing a drawing's records. The bytes of a changed record move to memory; its index entry follows what they say.
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "host/dxf/binary.h"
#include "host/dxf/drawing.h"
#include "host/dxf/lines.h"

namespace qrs::dxf {

namespace {

// A place within a record that is no place within it means that the caller kept a tag over a change; going on would
// write a damaged drawing. Stays on in release.
void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "drawing: %s\n", what);
    std::abort();
}

void appendValue(std::string& out, std::string_view value) {
    for (const char c : value) {
        if (c == '\n') {
            out += "^J";
        } else if (c == '\r') {
            out += "^M";
        } else {
            out += c;
        }
    }
}

void appendTag(std::string& out, const NewTag& tag, std::size_t codeWidth, std::string_view lineEnd) {
    const std::string code = std::to_string(tag.code);
    if (code.size() < codeWidth) out.append(codeWidth - code.size(), ' ');
    out += code;
    out += lineEnd;
    appendValue(out, tag.value);
    out += lineEnd;
}

bool isHead(RecordKind kind) {
    return kind == RecordKind::Section || kind == RecordKind::Table || kind == RecordKind::Block;
}

bool isEnd(RecordKind kind) {
    return kind == RecordKind::EndSection || kind == RecordKind::EndTable || kind == RecordKind::EndBlock;
}

}  // namespace

// The style a record shows in its first line: "  0" means codes three wide, "0" codes as long as they are.
Drawing::Style Drawing::styleOf(std::string_view record) const {
    const char* const begin = record.data();
    const Line line = cutLine(begin, begin + record.size(), index_.lineEnd);
    Style style{"\n", 0};
    if (index_.lineEnd == '\r') {
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

// The style of a record, or, when it stands for an end that is missing, of the one before it.
Drawing::Style Drawing::styleNear(RecordId id) const {
    while (bytes(id).empty()) {
        const RecordId before = previousAlive(id);
        if (before == kNoRecord) break;
        id = before;
    }
    return styleOf(bytes(id));
}

// A file without its EOF may lack the last line's end as well, which something put behind it needs.
void Drawing::endLastLine(RecordId behind) {
    const RecordId last = previousAlive(behind);
    if (last == kNoRecord || bytes(last).empty() || bytes(last).back() == '\n' || bytes(last).back() == '\r') return;
    scratch_.assign(bytes(last));
    scratch_ += styleOf(bytes(last)).lineEnd;
    rewrite(last, scratch_);
}

// Gives a record other bytes, which must not lie in the record itself.
void Drawing::rewrite(RecordId id, std::string_view bytes) {
    require(bytes.size() <= std::numeric_limits<std::uint32_t>::max(), "a record of more than 4 GB");
    Record& one = index_.records[id];
    // Bytes that a step may have to give back stay where they are.
    const bool isNeeded = journal_.note(id, one);
    if (isNeeded || (one.flags & kEdited) == 0 || !arena_.replace(one.offset, one.stored, bytes))
        one.offset = arena_.keep(bytes);
    one.stored = static_cast<std::uint32_t>(bytes.size());
    one.flags |= kEdited;
    modified_ = true;
    if (texts_ != nullptr) texts_->forget(id);
}

void Drawing::reindex(RecordId id) {
    Record& one = index_.records[id];
    const std::uint64_t handle = one.handle;
    FieldReader fields;
    bool isFirst = true;
    const auto take = [&](int code, std::string_view value) {
        if (isFirst) {
            one.type = typeNumber(index_.types.internCopy(trimmed(value)));
            fields.begin(one);
        } else if (isFieldCode(code)) {
            fields.take(code, value, index_.layers, true);
        }
        isFirst = false;
    };
    if (isBinary()) {
        forEachBinaryTag(
            index_.codeForm, storedBytes(id), [](int code) { return isFieldCode(code); }, take);
    } else {
        Tag tag;
        for (TagCursor cursor = tags(id); cursor.next(tag);)
            take(tag.code, tag.value);
    }
    if (one.handle == handle) return;
    index_.countHandle(one.handle);
    handles_.add(index_.records, id);
}

void Drawing::setValue(RecordId id, const Tag& tag, std::string_view value) {
    if (isBinary()) return setBinaryValue(id, tag, value);
    const std::string_view old = bytes(id);
    require(tag.begin < tag.end && tag.end <= old.size(), "a tag that lies outside of its record");
    RawTag raw{};
    require(cutTag(old.data() + tag.begin, old.data() + tag.end, index_.lineEnd, raw) == Cut::Tag,
            "a place in a record that is no tag");
    scratch_.assign(old.data(), raw.value);
    appendValue(scratch_, value);
    scratch_.append(raw.valueEnd, old.data() + old.size());
    if (scratch_ == old) return;
    rewrite(id, scratch_);
    if (tag.begin == 0 || isFieldCode(raw.code)) reindex(id);
}

void Drawing::editTags(RecordId id, const std::vector<TagEdit>& edits) {
    if (edits.empty()) return;
    if (isBinary()) return editBinary(id, edits);
    const std::string_view old = bytes(id);
    const Style style = styleOf(old);
    scratch_.clear();
    std::uint32_t copied = 0;
    for (const TagEdit& edit : edits) {
        require(copied <= edit.tag.begin && edit.tag.begin < edit.tag.end && edit.tag.end <= old.size(),
                "a tag that lies outside of its record");
        RawTag raw{};
        require(cutTag(old.data() + edit.tag.begin, old.data() + edit.tag.end, index_.lineEnd, raw) == Cut::Tag,
                "a place in a record that is no tag");
        if (edit.hasValue) {
            scratch_.append(old.data() + copied, raw.value);
            appendValue(scratch_, edit.value);
            scratch_.append(raw.valueEnd, old.data() + edit.tag.end);
        } else {
            scratch_ += old.substr(copied, edit.tag.end - copied);
        }
        copied = edit.tag.end;
        const bool lacksEnd = !scratch_.empty() && scratch_.back() != '\n' && scratch_.back() != '\r';
        if (!edit.behind.empty() && lacksEnd) scratch_ += style.lineEnd;
        for (const NewTag& tag : edit.behind)
            appendTag(scratch_, tag, style.codeWidth, style.lineEnd);
    }
    scratch_ += old.substr(copied);
    if (scratch_ == old) return;
    rewrite(id, scratch_);
    reindex(id);
}

void Drawing::insertTags(RecordId id, std::uint32_t before, const std::vector<NewTag>& tags) {
    if (isBinary()) return replaceBinary(id, before, before, tags);
    const std::string_view old = bytes(id);
    require(before <= old.size(), "a place that lies outside of its record");
    if (tags.empty()) return;
    const Style style = styleOf(old);
    scratch_.assign(old.substr(0, before));
    // Only the last record of a file can lack its line end.
    if (before == old.size() && !old.empty() && old.back() != '\n' && old.back() != '\r') scratch_ += style.lineEnd;
    for (const NewTag& tag : tags)
        appendTag(scratch_, tag, style.codeWidth, style.lineEnd);
    scratch_ += old.substr(before);
    rewrite(id, scratch_);
    reindex(id);
}

void Drawing::eraseTags(RecordId id, std::uint32_t begin, std::uint32_t end) {
    if (isBinary()) return replaceBinary(id, begin, end, {});
    const std::string_view old = bytes(id);
    require(begin <= end && end <= old.size(), "a stretch that lies outside of its record");
    if (begin == end) return;
    scratch_.assign(old.substr(0, begin));
    scratch_ += old.substr(end);
    rewrite(id, scratch_);
    reindex(id);
}

// --- binary drawings

void Drawing::cannotWrite(int code, std::string_view value) {
    if (unwritable_.empty()) {
        unwritable_ = "\"" + std::string(value) + "\" has no place under group code " + std::to_string(code) +
                      " of a binary drawing";
    }
}

void Drawing::appendBinary(const std::vector<NewTag>& tags, std::string& out) {
    std::string value;
    for (const NewTag& tag : tags) {
        value.clear();
        appendValue(value, tag.value);
        if (!appendBinaryTag(index_.codeForm, tag.code, value, out)) cannotWrite(tag.code, tag.value);
    }
}

// Puts tags in the place of others, given by their places in the record's text form.
void Drawing::replaceBinary(RecordId id, std::uint32_t begin, std::uint32_t end, const std::vector<NewTag>& tags) {
    const std::string_view old = storedBytes(id);
    std::size_t first = begin;
    std::size_t last = end;
    require(begin <= end && binaryStretch(index_.codeForm, old, bytes(id), first, last),
            "a stretch that lies outside of its record");
    if (begin == end && tags.empty()) return;
    scratch_.assign(old.substr(0, first));
    appendBinary(tags, scratch_);
    scratch_ += old.substr(last);
    rewrite(id, scratch_);
    reindex(id);
}

void Drawing::setBinaryValue(RecordId id, const Tag& tag, std::string_view value) {
    const std::string_view old = storedBytes(id);
    std::size_t first = tag.begin;
    std::size_t last = tag.end;
    require(tag.begin < tag.end && binaryStretch(index_.codeForm, old, bytes(id), first, last),
            "a tag that lies outside of its record");
    RawTag raw{};
    require(cutBinary(index_.codeForm, old.data() + first, old.data() + last, raw) == Cut::Tag &&
                raw.next == old.data() + last,
            "a place in a record that is no tag");
    std::string spelled;
    appendValue(spelled, value);
    scratch_.assign(old.substr(0, first + codeSize(index_.codeForm, old.data() + first)));
    if (!appendValueBytes(raw.code, spelled, scratch_)) return cannotWrite(raw.code, value);
    scratch_ += old.substr(last);
    if (scratch_ == old) return;
    rewrite(id, scratch_);
    if (tag.begin == 0 || isFieldCode(raw.code)) reindex(id);
}

// In one walk through both forms, since the places are those of the text form.
void Drawing::editBinary(RecordId id, const std::vector<TagEdit>& edits) {
    const std::string_view old = storedBytes(id);
    const std::string_view text = bytes(id);
    const char* const textEnd = text.data() + text.size();
    const char* const end = old.data() + old.size();
    const char* line = text.data();
    const char* at = old.data();
    auto edit = edits.begin();
    scratch_.clear();
    for (RawTag tag{}, asText{}; edit != edits.end(); at = tag.next, line = asText.next) {
        require(line != textEnd && cutTag(line, textEnd, kBinaryLineEnd, asText) == Cut::Tag &&
                    cutBinary(index_.codeForm, at, end, tag) == Cut::Tag,
                "a tag that lies outside of its record");
        if (edit->tag.begin != static_cast<std::size_t>(line - text.data())) {
            scratch_.append(at, tag.next);
            continue;
        }
        std::string value;
        if (edit->hasValue) appendValue(value, edit->value);
        const char* const behindCode = at + codeSize(index_.codeForm, at);
        scratch_.append(at, behindCode);
        const bool isWritten = edit->hasValue && appendValueBytes(tag.code, value, scratch_);
        if (edit->hasValue && !isWritten) cannotWrite(tag.code, edit->value);
        if (!isWritten) scratch_.append(behindCode, tag.next);
        appendBinary(edit->behind, scratch_);
        ++edit;
    }
    scratch_.append(at, end);
    if (scratch_ == old) return;
    rewrite(id, scratch_);
    reindex(id);
}

// --- whole records

void Drawing::link(RecordId id, RecordId before) {
    NewPlace place{before, kNoRecord, kNoRecord};
    if (isNew(before)) {
        NewPlace& following = newPlaces_[before - originalCount_];
        place = {following.anchor, following.previous, before};
        following.previous = id;
    } else {
        index_.records[before].flags |= kHasNewBefore;
        NewRow& row = newRows_.try_emplace(before, NewRow{kNoRecord, kNoRecord}).first->second;
        place.previous = row.last;
        row.last = id;
    }
    if (place.previous != kNoRecord) {
        newPlaces_[place.previous - originalCount_].next = id;
    } else {
        newRows_[place.anchor].first = id;
    }
    newPlaces_.push_back(place);
}

// Finds out what a new record lies under, from the one it stands behind.
void Drawing::settle(RecordId id) {
    Record& one = index_.records[id];
    const RecordId before = previousAlive(id);
    if (one.kind == RecordKind::Section || one.kind == RecordKind::EndOfFile || before == kNoRecord) return;
    RecordId container = kNoRecord;
    RecordId main = kNoRecord;
    const Record& neighbour = record(before);
    if (isHead(neighbour.kind)) {
        container = before;
    } else if (isEnd(neighbour.kind)) {
        if (neighbour.owner != kNoRecord) container = record(neighbour.owner).owner;
    } else if ((neighbour.flags & kSubEntity) != 0) {
        if (neighbour.type != kTypeSeqend) main = neighbour.owner;
        container = record(neighbour.owner).owner;
    } else {
        if (neighbour.type == kTypePolyline || neighbour.type == kTypeInsert) main = before;
        container = neighbour.owner;
    }
    const bool isSub = one.kind == RecordKind::Entity && main != kNoRecord &&
                       (one.type == kTypeVertex || one.type == kTypeAttrib || one.type == kTypeSeqend);
    one.owner = isSub ? main : container;
    if (isSub) one.flags |= kSubEntity;
}

RecordId Drawing::insertRecord(RecordId before, RecordKind kind, const std::vector<NewTag>& tags) {
    require(before < recordCount(), "no record to put another before");
    require(
        !tags.empty() && tags.front().code == (kind == RecordKind::HeaderVariable ? codes::kVariable : codes::kType),
        "a new record must begin with code 0, a header variable with 9");
    const auto id = static_cast<RecordId>(recordCount());
    require(id != kNoRecord, "too many records");
    if (!isBinary() && record(before).stored == 0) endLastLine(before);
    scratch_.clear();
    if (isBinary()) {
        appendBinary(tags, scratch_);
    } else {
        const Style style = styleNear(before);
        for (const NewTag& tag : tags)
            appendTag(scratch_, tag, style.codeWidth, style.lineEnd);
    }

    Record& one = index_.records.append();
    one.kind = kind;
    one.flags = kNew;
    journal_.noteNew(id);
    link(id, before);
    rewrite(id, scratch_);
    reindex(id);
    settle(id);
    if (kind == RecordKind::Section) index_.sections.push_back(id);
    if (kind == RecordKind::Table) index_.tables.push_back(id);
    if (kind == RecordKind::HeaderVariable) index_.headerVariables.push_back(id);
    if (isEnd(kind) && one.owner != kNoRecord) newEnds_[one.owner] = id;
    return id;
}

void Drawing::setErased(RecordId id, bool erase) {
    Record& one = index_.records[id];
    // A step that meets a record once takes its bytes for its own from then on, so they must not be those it gives
    // back.
    if (journal_.note(id, one) && (one.flags & kEdited) != 0)
        one.offset = arena_.keep(arena_.at(one.offset, one.stored));
    std::uint8_t& flags = one.flags;
    flags = static_cast<std::uint8_t>(erase ? flags | kErased : flags & ~kErased);
    modified_ = true;
}

void Drawing::eraseRecord(RecordId id, bool erase) {
    if (isErased(id) == erase) return;
    setErased(id, erase);
    const std::uint16_t type = record(id).type;
    if (type != kTypePolyline && type != kTypeInsert) return;
    for (RecordId sub = nextInOrder(id); sub != kNoRecord; sub = nextInOrder(sub)) {
        const Record& one = record(sub);
        if ((one.flags & kSubEntity) != 0 && one.owner == id) {
            setErased(sub, erase);
        } else if ((one.flags & kErased) == 0) {
            break;
        }
    }
}

void Drawing::adjustTableCount(RecordId table, int by) {
    Tag tag;
    if (by == 0 || !findTag(table, codes::kTableCount, tag)) return;
    const std::string_view value = tag.value;
    std::string count = std::to_string(toInteger(value) + by);
    const std::size_t width = value.find_last_not_of(" \t") + 1;
    if (count.size() < width && value.front() == ' ') count.insert(0, width - count.size(), ' ');
    setValue(table, tag, count);
}

std::uint64_t Drawing::newHandle() {
    const RecordId variable = findHeaderVariable("$HANDSEED");
    Tag tag;
    const bool hasSeed = variable != kNoRecord && findTag(variable, codes::kHandle, tag);
    std::uint64_t handle = hasSeed ? toHandle(tag.value) : 0;
    if (handle < seed_ || handle > kGreatestHandle) handle = seed_;
    if (handle <= index_.greatestHandle) handle = index_.greatestHandle + 1;
    seed_ = handle + 1;
    if (hasSeed) setValue(variable, tag, handleText(seed_));
    return handle;
}

}  // namespace qrs::dxf
