// The one pass over a file that finds its records.
#include <algorithm>
#include <cstring>

#include "host/dxf/binary.h"
#include "host/dxf/codecache.h"
#include "host/dxf/handlecheck.h"
#include "host/dxf/index.h"
#include "host/dxf/lines.h"
#include "host/dxf/references.h"
#include "host/dxf/sizes.h"
#include "host/dxf/tags.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

enum class Place { Outside, Header, Classes, Tables, Blocks, Entities, Objects, Unknown };

struct NamedPlace {
    std::string_view name;
    Place place;
    RecordKind kind;  // of the records in it
};
constexpr NamedPlace kPlaces[] = {
    {"HEADER", Place::Header, RecordKind::Other},      {"CLASSES", Place::Classes, RecordKind::Other},
    {"TABLES", Place::Tables, RecordKind::Other},      {"BLOCKS", Place::Blocks, RecordKind::Other},
    {"ENTITIES", Place::Entities, RecordKind::Entity}, {"OBJECTS", Place::Objects, RecordKind::Object},
};

// Records that tables hold without counting them: the linetypes ByLayer and ByBlock, the blocks of model and paper
// space, the editor's own application.
struct Uncounted {
    std::string_view name;
    int records;
};
constexpr Uncounted kUncounted[] = {{"LTYPE", 2}, {"BLOCK_RECORD", 3}, {"APPID", 1}};

// A piece of a file as a message can show it.
std::string printable(std::string_view text) {
    constexpr std::size_t kShown = 24;
    std::string shown(text.substr(0, kShown));
    for (char& c : shown) {
        if (c < ' ' || c > '~') c = '?';
    }
    return text.size() > kShown ? shown + "..." : shown;
}

// Kinds of records that have handles and name those of others.
bool hasPointers(RecordKind kind) {
    switch (kind) {
        case RecordKind::Table:
        case RecordKind::TableRecord:
        case RecordKind::Block:
        case RecordKind::Entity:
        case RecordKind::EndBlock:
        case RecordKind::Object:
            return true;
        default:
            return false;
    }
}

class Indexer {
  public:
    Indexer(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault)
        : start_(bytes.data()),
          end_(bytes.data() + bytes.size()),
          file_(file),
          index_(index),
          fault_(fault),
          given_(bytes.size()),
          pointedTo_(bytes.size()) {}

    bool run();

  private:
    enum class Step { Goes, Ends, Fails };

    bool text();
    bool binary();
    bool preamble(const char*& at);
    bool takePreamble(const char* at, const RawTag& tag);
    template <char lineEnd>
    bool scanText(const char* at);
    template <CodeForm form>
    bool scanBinary(const char* at);
    Step take(const char* at, const RawTag& tag, std::string_view value);
    bool atEnd(const char* at, Cut cut);
    bool cutFailure(const char* at, Cut cut);
    Cut cut(const char* at, RawTag& tag) const;
    Step startRecord(const char* at, const RawTag& tag);
    Step startOutside(const char* at, const RawTag& tag, std::uint16_t type);
    Step startSection(const char* at, const RawTag& tag);
    Step startInTables(const char* at, std::uint16_t type);
    Step startInBlocks(const char* at, std::uint16_t type);
    Step startEntity(const char* at, std::uint16_t type, RecordId container);
    Step endSection(const char* at, bool isThere);
    Step endGroup(const char* at, bool isThere);
    Step endOfFile(const char* at, const RawTag& tag);
    bool sectionName(const char* at, std::string_view& name) const;
    void closeMain(const char* at);
    std::string valueIn(const char* place, const char* end, int code, const char*& found) const;
    void checkCount(const char* at);
    void checkVertices(const char* at);
    void checkPointers();
    void checkNumbers(const char* end);
    void checkNumber(const char* comma);
    void checkLastLine();

    Step open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner);
    Step openHead(const char* at, RecordKind kind, std::uint16_t type, RecordId owner, std::size_t& slot);
    bool close(const char* at);
    Step fails(const char* at, std::string reason);
    void fault(const char* at, RecordId record, FaultKind kind, std::string text) {
        index_.faults.add(static_cast<std::size_t>(at - start_), record, kind, std::move(text));
    }
    RecordId lastId() const { return static_cast<RecordId>(index_.records.size() - 1); }

    const char* start_;
    const char* end_;
    const platform::MappedFile* file_;
    std::size_t released_ = 0;
    const char* numbersChecked_ = nullptr;  // up to here
    Index& index_;
    Fault& fault_;
    CodeCache cache_;
    FieldReader fields_;
    HandleSet given_;
    HandleSet pointedTo_;
    Record* current_ = nullptr;
    Place place_ = Place::Outside;
    RecordKind plainKind_ = RecordKind::Other;
    RecordId section_ = kNoRecord;
    RecordId group_ = kNoRecord;  // the open table or block
    RecordId main_ = kNoRecord;   // the polyline or block reference whose sub-entities may follow
    bool hasSubs_ = false;        // one of them did
    std::size_t sectionSlot_ = 0;
    std::size_t groupSlot_ = 0;
    std::string_view sectionName_;
};

Indexer::Step Indexer::fails(const char* at, std::string reason) {
    fault_.offset = static_cast<std::size_t>(at - start_);
    fault_.text = std::move(reason);
    return Step::Fails;
}

bool Indexer::close(const char* at) {
    if (current_ == nullptr) return true;
    const std::uint64_t length = static_cast<std::uint64_t>(at - start_) - current_->offset;
    if (length > 0xFFFFFFFFu) {
        fails(start_ + current_->offset, translated("a record of more than 4 GB"));
        return false;
    }
    current_->stored = static_cast<std::uint32_t>(length);
    index_.countHandle(current_->handle);
    if (current_->handle != 0 && !given_.add(current_->handle)) {
        fault(start_ + current_->offset, lastId(), FaultKind::HandleTwice,
              translated("another record has this handle too"));
    }
    if (current_->type == kTypeLwPolyline) checkVertices(at);
    return true;
}

Indexer::Step Indexer::open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner) {
    if (!close(at)) return Step::Fails;
    if (index_.records.size() >= kNoRecord) return fails(at, translated("too many records"));
    if (const auto read = static_cast<std::size_t>(at - start_); read - released_ >= kReleaseStep) {
        // About as much as the index takes, so that memory stays near the size of the file; not more, because all of it
        // is fetched again when the drawing is saved.
        checkNumbers(at);
        const bool isFirstQuarter = read <= static_cast<std::size_t>(end_ - start_) / 4;
        if (file_ != nullptr && isFirstQuarter) file_->release(released_, read);
        released_ = read;
    }
    current_ = &index_.records.append();
    current_->offset = static_cast<std::uint64_t>(at - start_);
    current_->owner = owner;
    current_->type = type;
    current_->kind = kind;
    fields_.begin(*current_);
    return Step::Goes;
}

Indexer::Step Indexer::openHead(const char* at, RecordKind kind, std::uint16_t type, RecordId owner,
                                std::size_t& slot) {
    const Step step = open(at, kind, type, owner);
    if (step == Step::Goes) {
        slot = index_.ends.size();
        index_.ends.emplace_back(lastId(), kNoRecord);
    }
    return step;
}

bool Indexer::run() {
    const std::string_view bytes(start_, static_cast<std::size_t>(end_ - start_));
    const bool isWhole = bytes.substr(0, kBinarySignature.size()) == kBinarySignature ? binary() : text();
    if (!isWhole) return false;
    checkPointers();
    if (index_.lineEnd != kBinaryLineEnd) {
        checkNumbers(end_);
        checkLastLine();
    }
    return true;
}

bool Indexer::text() {
    index_.lineEnd = lineEndOf({start_, static_cast<std::size_t>(end_ - start_)});
    const char* at = start_;
    if (!preamble(at)) return false;
    return index_.lineEnd == '\r' ? scanText<'\r'>(at) : scanText<'\n'>(at);
}

bool Indexer::binary() {
    index_.lineEnd = kBinaryLineEnd;
    const char* at = start_ + kBinarySignature.size();
    index_.codeForm = codeFormOf({at, static_cast<std::size_t>(end_ - at)});
    RawTag tag{};
    Cut result = cut(at, tag);
    while (result == Cut::Tag && tag.code == codes::kComment) {
        at = tag.next;
        result = cut(at, tag);
    }
    if (result != Cut::Tag) return cutFailure(at, result);
    if (!takePreamble(at, tag)) return false;
    return index_.codeForm == CodeForm::Long ? scanBinary<CodeForm::Long>(at) : scanBinary<CodeForm::Short>(at);
}

Cut Indexer::cut(const char* at, RawTag& tag) const {
    return index_.lineEnd == kBinaryLineEnd ? cutBinary(index_.codeForm, at, end_, tag)
                                            : cutTag(at, end_, index_.lineEnd, tag);
}

// Passes over byte-order mark, blank lines and comments before the first tag.
bool Indexer::preamble(const char*& at) {
    const std::string_view bytes(start_, static_cast<std::size_t>(end_ - start_));
    index_.hasUtf8Mark = bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark;
    if (index_.hasUtf8Mark) at += kUtf8Mark.size();
    RawTag tag{};
    for (;;) {
        const Line line = cutLine(at, end_, index_.lineEnd);
        if (trimmed({line.begin, static_cast<std::size_t>(line.end - line.begin)}).empty() && line.hasEnd) {
            at = line.next;
            continue;
        }
        const Cut result = cut(at, tag);
        if (result == Cut::Tag && tag.code == codes::kComment) {
            at = tag.next;
            continue;
        }
        if (at == end_) {
            fails(at, translated("not a DXF file: nothing in it"));
        } else if (result == Cut::NoCode) {
            fails(at, translated("not a DXF file: first line is no group code"));
        } else if (result == Cut::NoValue) {
            return cutFailure(at, result);
        } else {
            return takePreamble(at, tag);
        }
        return false;
    }
}

// The first tag decides whether this is a drawing at all.
bool Indexer::takePreamble(const char* at, const RawTag& tag) {
    if (tag.code != codes::kType) {
        fails(at, translated("not a DXF file: 0 SECTION expected, found group code %1", tag.code));
        return false;
    }
    const std::uint16_t type = typeNumber(index_.types.intern(trimmed(textOf(tag))));
    if (type != kTypeSection && type != kTypeEndOfFile) {
        fails(at, translated("not a DXF file: 0 SECTION expected, found %1", printable(trimmed(textOf(tag)))));
        return false;
    }
    return at == start_ || open(start_, RecordKind::Preamble, 0, kNoRecord) == Step::Goes;
}

bool Indexer::cutFailure(const char* at, Cut cut) {
    if (at == end_) {
        const char* last = at == start_ ? at : at - 1;
        fails(last, translated("the file is cut off: 0 EOF is missing"));
    } else if (cut == Cut::NoValue) {
        fails(at, index_.lineEnd == kBinaryLineEnd
                      ? translated("the file is cut off: a group code or its value is not whole")
                      : translated("the file is cut off: no value after the last group code"));
    } else {
        const Line line = cutLine(at, end_, index_.lineEnd);
        const std::string_view text(line.begin, static_cast<std::size_t>(line.end - line.begin));
        if (text.find('\0') != std::string_view::npos) {
            fails(at, translated("NUL byte in a group code"));
        } else {
            fails(at, translated("group code expected, found \"%1\"", printable(text)));
        }
    }
    return false;
}

// No tag begins here: the file's end, where only EOF may be missing, or damage.
bool Indexer::atEnd(const char* at, Cut cut) {
    if (at != end_ || place_ != Place::Outside) return cutFailure(at, cut);
    fault(at == start_ ? at : at - 1, kNoRecord, FaultKind::MissingEnd, translated("EOF is missing"));
    return open(at, RecordKind::EndOfFile, kTypeEndOfFile, kNoRecord) == Step::Goes && close(end_);
}

template <char lineEnd>
bool Indexer::scanText(const char* at) {
    RawTag tag{};
    for (;;) {
        bool matters = true;
        const char* const begin = at;
        const auto left = static_cast<std::size_t>(end_ - at);
        const CodeCache::Entry* known =
            kFastTags && left >= CodeCache::kReach ? cache_.fastTag(at, lineEnd, tag) : nullptr;
        if (known != nullptr) {
            matters = known->matters;
        } else {
            const Cut cut = cutTag(at, end_, lineEnd, tag);
            if (cut != Cut::Tag) return atEnd(at, cut);
            if (left >= CodeCache::kReach) cache_.learn(at, tag, lineEnd);
            matters = CodeCache::mattersToIndex(tag.code);
            if (tag.code == kUnreadableCode)
                fault(at, lastId(), FaultKind::NoGroupCode, translated("a number that is no group code"));
        }
        at = tag.next;
        if (!matters) continue;
        const Step step = take(begin, tag, textOf(tag));
        if (step != Step::Goes) return step == Step::Ends;
    }
}

template <CodeForm form>
bool Indexer::scanBinary(const char* at) {
    RawTag tag{};
    std::string number;
    for (;;) {
        const char* const begin = at;
        const Cut cut = cutBinary<form>(at, end_, tag);
        if (cut != Cut::Tag) return atEnd(at, cut);
        at = tag.next;
        if (!CodeCache::mattersToIndex(tag.code)) continue;
        std::string_view value = textOf(tag);
        if (!isXdataCode(tag.code) && !isTextual(valueKindOf(tag.code))) {
            number.clear();
            appendValueText(tag, number);
            value = number;
        }
        const Step step = take(begin, tag, value);
        if (step != Step::Goes) return step == Step::Ends;
    }
}

// A tag that matters to the index.
Indexer::Step Indexer::take(const char* at, const RawTag& tag, std::string_view value) {
    if (tag.code == codes::kType || (tag.code == codes::kVariable && place_ == Place::Header))
        return startRecord(at, tag);
    if (fields_.isReference(tag.code)) index_.noteReference(lastId());
    if (isResolved(referenceOf(tag.code))) {
        if (const std::uint64_t handle = toHandle(value); handle != 0 && hasPointers(current_->kind)) {
            pointedTo_.add(handle);
        }
    } else if (tag.code != codes::kVariable) {
        fields_.take(tag.code, value, index_.layers, false);
    }
    return Step::Goes;
}

Indexer::Step Indexer::startRecord(const char* at, const RawTag& tag) {
    const std::uint16_t type = typeNumber(index_.types.intern(trimmed(textOf(tag))));
    if (tag.code == codes::kVariable) {
        const Step step = open(at, RecordKind::HeaderVariable, type, section_);
        if (step == Step::Goes) index_.headerVariables.push_back(lastId());
        return step;
    }
    if (place_ == Place::Outside) return startOutside(at, tag, type);
    std::string_view name;
    switch (type) {
        case kTypeEndSection:
            return endSection(at, true);
        case kTypeEndOfFile:
            if (endSection(at, false) != Step::Goes) return Step::Fails;
            return endOfFile(at, tag);
        case kTypeSection:
            // An entity may be called SECTION too; the head of a section goes on with its name.
            if (!sectionName(tag.next, name)) break;
            if (endSection(at, false) != Step::Goes) return Step::Fails;
            return startSection(at, tag);
        case kTypeEndTable:
        case kTypeEndBlock:
            if (group_ != kNoRecord && place_ == (type == kTypeEndTable ? Place::Tables : Place::Blocks)) break;
            fault(at, kNoRecord, FaultKind::StrayRecord,
                  type == kTypeEndTable ? translated("ENDTAB without a TABLE") : translated("ENDBLK without a BLOCK"));
            return open(at, RecordKind::Other, type, section_);
        default:
            break;
    }
    switch (place_) {
        case Place::Tables:
            return startInTables(at, type);
        case Place::Blocks:
            return startInBlocks(at, type);
        case Place::Entities:
            return startEntity(at, type, section_);
        case Place::Classes:
            return open(at, type == kTypeClass ? RecordKind::Class : RecordKind::Other, type, section_);
        default:
            return open(at, plainKind_, type, section_);
    }
}

// An end that is not there is an end without bytes at the place where it was missed.
Indexer::Step Indexer::endSection(const char* at, bool isThere) {
    if (group_ != kNoRecord && endGroup(at, false) != Step::Goes) return Step::Fails;
    closeMain(at);
    if (!isThere)
        fault(at, section_, FaultKind::MissingEnd,
              translated("ENDSEC of section %1 is missing", printable(sectionName_)));
    place_ = Place::Outside;
    if (open(at, RecordKind::EndSection, kTypeEndSection, section_) != Step::Goes) return Step::Fails;
    index_.ends[sectionSlot_].second = lastId();
    return Step::Goes;
}

Indexer::Step Indexer::endGroup(const char* at, bool isThere) {
    const bool isTable = place_ == Place::Tables;
    if (isTable) checkCount(at);
    closeMain(at);
    if (!isThere)
        fault(at, group_, FaultKind::MissingEnd,
              isTable ? translated("ENDTAB of a table is missing") : translated("ENDBLK of a block is missing"));
    const Step step = open(at, isTable ? RecordKind::EndTable : RecordKind::EndBlock,
                           isTable ? kTypeEndTable : kTypeEndBlock, group_);
    if (step == Step::Goes) index_.ends[groupSlot_].second = lastId();
    group_ = kNoRecord;
    return step;
}

Indexer::Step Indexer::startOutside(const char* at, const RawTag& tag, std::uint16_t type) {
    if (type == kTypeSection) return startSection(at, tag);
    if (type == kTypeEndOfFile) return endOfFile(at, tag);
    const Step step = open(at, RecordKind::Other, type, kNoRecord);
    fault(at, kNoRecord, FaultKind::StrayRecord,
          type == kTypeEndSection ? translated("ENDSEC without a SECTION")
                                  : translated("%1 outside of a section", printable(trimmed(textOf(tag)))));
    return step;
}

bool Indexer::sectionName(const char* at, std::string_view& name) const {
    RawTag tag{};
    while (cut(at, tag) == Cut::Tag) {
        if (tag.code != codes::kComment) {
            name = trimmed(textOf(tag));
            return tag.code == codes::kName;
        }
        at = tag.next;
    }
    return false;
}

Indexer::Step Indexer::startSection(const char* at, const RawTag& tag) {
    if (!sectionName(tag.next, sectionName_)) {
        if (index_.sections.empty()) return fails(at, translated("a section without a name"));
        sectionName_ = {};
        fault(at, kNoRecord, FaultKind::NoName, translated("a section without a name"));
    }
    place_ = Place::Unknown;
    plainKind_ = RecordKind::Other;
    for (const NamedPlace& known : kPlaces) {
        if (known.name == sectionName_) {
            place_ = known.place;
            plainKind_ = known.kind;
        }
    }
    const Step step = openHead(at, RecordKind::Section, kTypeSection, kNoRecord, sectionSlot_);
    if (step != Step::Goes) return step;
    section_ = lastId();
    index_.sections.push_back(section_);
    return Step::Goes;
}

Indexer::Step Indexer::startInTables(const char* at, std::uint16_t type) {
    if (type == kTypeTable) {
        if (group_ != kNoRecord && endGroup(at, false) != Step::Goes) return Step::Fails;
        const Step step = openHead(at, RecordKind::Table, type, section_, groupSlot_);
        if (step != Step::Goes) return step;
        group_ = lastId();
        index_.tables.push_back(group_);
        return Step::Goes;
    }
    if (group_ == kNoRecord) return open(at, RecordKind::Other, type, section_);
    return type == kTypeEndTable ? endGroup(at, true) : open(at, RecordKind::TableRecord, type, group_);
}

Indexer::Step Indexer::startInBlocks(const char* at, std::uint16_t type) {
    if (type == kTypeBlock) {
        if (group_ != kNoRecord && endGroup(at, false) != Step::Goes) return Step::Fails;
        const Step step = openHead(at, RecordKind::Block, type, section_, groupSlot_);
        if (step == Step::Goes) group_ = lastId();
        return step;
    }
    if (group_ == kNoRecord) return open(at, RecordKind::Other, type, section_);
    return type == kTypeEndBlock ? endGroup(at, true) : startEntity(at, type, group_);
}

Indexer::Step Indexer::startEntity(const char* at, std::uint16_t type, RecordId container) {
    const bool isSub = main_ != kNoRecord && (type == kTypeVertex || type == kTypeAttrib || type == kTypeSeqend);
    if (!isSub) {
        closeMain(at);
        const Step step = open(at, RecordKind::Entity, type, container);
        if (type == kTypePolyline || type == kTypeInsert) main_ = lastId();
        return step;
    }
    const Step step = open(at, RecordKind::Entity, type, main_);
    if (step == Step::Goes) current_->flags |= kSubEntity;
    hasSubs_ = true;
    if (type == kTypeSeqend) main_ = kNoRecord;
    return step;
}

// What follows is no part of the polyline or block reference any more.
void Indexer::closeMain(const char* at) {
    if (main_ != kNoRecord && (hasSubs_ || index_.records[main_].type == kTypePolyline)) {
        fault(at, main_, FaultKind::MissingEnd,
              translated("SEQEND of the %1 is missing", index_.types[index_.records[main_].type]));
    }
    main_ = kNoRecord;
    hasSubs_ = false;
}

// The first value of a code in the open record or table head; empty when it has none.
std::string Indexer::valueIn(const char* place, const char* end, int code, const char*& found) const {
    std::string value;
    for (RawTag tag{}; place != end && cut(place, tag) == Cut::Tag; place = tag.next) {
        if (tag.code != code) continue;
        found = place;
        if (index_.lineEnd == kBinaryLineEnd) {
            appendValueText(tag, value);
        } else {
            value = trimmed(textOf(tag));
        }
        break;
    }
    return value;
}

// The count in a table's head is the most it may hold, so a greater one is none the worse.
void Indexer::checkCount(const char* at) {
    const char* const head = start_ + index_.records[group_].offset;
    const char* const headEnd = lastId() == group_ ? at : start_ + index_.records[group_ + 1].offset;
    const char* place = head;
    const char* ignored = head;
    const std::string name = valueIn(head, headEnd, codes::kName, ignored);
    const std::string value = valueIn(head, headEnd, codes::kTableCount, place);
    if (value.empty()) return;
    std::int64_t count = lastId() - group_;
    for (const Uncounted& table : kUncounted) {
        if (table.name == name) count = std::max(std::int64_t{0}, count - table.records);
    }
    if (toInteger(value, -1) >= count) return;
    fault(place, group_, FaultKind::WrongCount,
          translated("the table says %1 records and holds %2", value, lastId() - group_));
}

// The vertices of a polyline are as many as it says.
void Indexer::checkVertices(const char* at) {
    const char* place = start_ + current_->offset;
    const char* counted = place;
    const std::string value = valueIn(place, at, codes::kVertexCount, counted);
    std::int64_t count = 0;
    for (RawTag tag{}; place != at && cut(place, tag) == Cut::Tag; place = tag.next)
        count += tag.code == codes::kPoint;
    if (toInteger(value, count) == count) return;
    fault(counted, lastId(), FaultKind::WrongCount,
          translated("the polyline says %1 vertices and has %2", value, count));
}

// Looks for pointers to nothing once more, for their places, when there are any.
void Indexer::checkPointers() {
    if (pointedTo_.isPartOf(given_)) return;
    for (RecordId id = 0; id < index_.records.size(); ++id) {
        const Record& record = index_.records[id];
        if (!hasPointers(record.kind)) continue;
        const char* place = start_ + record.offset;
        const char* const recordEnd = place + record.stored;
        ReferencePlace references(index_.types[record.type]);
        for (RawTag tag{}; place != recordEnd && cut(place, tag) == Cut::Tag; place = tag.next) {
            const ReferenceRule* rule = references.pass(tag.code, textOf(tag));
            if (!rule || rule->loss == Loss::Stays || !isResolved(referenceOf(tag.code))) continue;
            const std::uint64_t handle = toHandle(textOf(tag));
            if (handle == 0 || given_.has(handle)) continue;
            fault(place, id, FaultKind::DeadPointer,
                  translated("group code %1 points to %2, which no record is", tag.code, handleText(handle)));
        }
    }
}

// Looks for numbers as they are written where the comma stands for the point. Programs read them as far as the comma,
// or refuse the file. Done in steps while the bytes are still near.
void Indexer::checkNumbers(const char* end) {
    if (index_.lineEnd == kBinaryLineEnd) return;
    const char* at = numbersChecked_ == nullptr ? start_ : numbersChecked_;
    while (at < end) {
        const auto* comma = static_cast<const char*>(std::memchr(at, ',', static_cast<std::size_t>(end - at)));
        if (comma == nullptr) break;
        checkNumber(comma);
        at = comma + 1;
    }
    numbersChecked_ = std::max(end, at);
}

void Indexer::checkNumber(const char* comma) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char* begin = comma;
    while (begin != start_ && isDigit(begin[-1]))
        --begin;
    const char* end = comma + 1;
    while (end != end_ && isDigit(*end))
        ++end;
    if (begin == comma || end == comma + 1) return;
    const char* lineBegin = begin;
    while (lineBegin != start_ && (lineBegin[-1] == ' ' || lineBegin[-1] == '-' || lineBegin[-1] == '+'))
        --lineBegin;
    while (end != end_ && (*end == ' ' || *end == '\r'))
        ++end;
    if (lineBegin == start_ || lineBegin[-1] != index_.lineEnd || (end != end_ && *end != index_.lineEnd)) return;
    const char* codeBegin = lineBegin - 1;
    while (codeBegin != start_ && codeBegin[-1] != index_.lineEnd)
        --codeBegin;
    RawTag tag{};
    if (cutTag(codeBegin, end_, index_.lineEnd, tag) != Cut::Tag || isTextual(valueKindOf(tag.code))) return;
    fault(lineBegin, kNoRecord, FaultKind::ForeignNumber,
          translated("group code %1 has the value %2, which other programs do not read as a number", tag.code,
                     printable(trimmed(textOf(tag)))));
}

// Line ends of two bytes, and the last one has only its first: the file was cut off there.
void Indexer::checkLastLine() {
    if (index_.lineEnd != '\n' || end_ == start_ || end_[-1] != '\r') return;
    fault(end_ - 1, kNoRecord, FaultKind::CutLineEnd, translated("the file is cut off between CR and LF"));
}

Indexer::Step Indexer::endOfFile(const char* at, const RawTag& tag) {
    Step step = open(at, RecordKind::EndOfFile, kTypeEndOfFile, kNoRecord);
    if (step == Step::Goes && tag.next != end_) step = open(tag.next, RecordKind::Other, 0, kNoRecord);
    if (step != Step::Goes || !close(end_)) return Step::Fails;
    return Step::Ends;
}

}  // namespace

bool buildIndex(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault) {
    return Indexer(bytes, file, index, fault).run();
}

}  // namespace qrs::dxf
