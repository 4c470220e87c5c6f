// The one pass over a file that finds its records.
#include "host/dxf/codecache.h"
#include "host/dxf/index.h"
#include "host/dxf/lines.h"
#include "host/dxf/tags.h"

namespace qrs::dxf {

namespace {

// The signature bytes a binary drawing begins with.
constexpr std::string_view kBinarySignature = "AutoCAD Binary DXF";
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

// A piece of a file as a message can show it.
std::string printable(std::string_view text) {
    constexpr std::size_t kShown = 24;
    std::string shown(text.substr(0, kShown));
    for (char& c : shown) {
        if (c < ' ' || c > '~') c = '?';
    }
    return text.size() > kShown ? shown + "..." : shown;
}

class Indexer {
  public:
    Indexer(std::string_view bytes, Index& index, Damage& damage)
        : start_(bytes.data()), end_(bytes.data() + bytes.size()), index_(index), damage_(damage) {}

    bool run();

  private:
    enum class Step { Goes, Ends, Fails };

    bool preamble(const char*& at);
    template <char lineEnd>
    bool scan(const char* at);
    bool cutFailure(const char* at, Cut cut);
    Step startRecord(const char* at, const RawTag& tag);
    Step startOutside(const char* at, const RawTag& tag, std::uint16_t type);
    Step startSection(const char* at, const RawTag& tag);
    Step startInTables(const char* at, std::uint16_t type);
    Step startInBlocks(const char* at, std::uint16_t type);
    Step startEntity(const char* at, std::uint16_t type, RecordId container);
    Step endOfFile(const char* at, const RawTag& tag);
    bool sectionName(const char* at, std::string_view& name) const;

    Step open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner);
    Step openHead(const char* at, RecordKind kind, std::uint16_t type, RecordId owner, std::size_t& slot);
    bool close(const char* at);
    Step fails(const char* at, std::string reason);
    std::string sectionText() const;
    RecordId lastId() const { return static_cast<RecordId>(index_.records.size() - 1); }

    const char* start_;
    const char* end_;
    Index& index_;
    Damage& damage_;
    CodeCache cache_;
    FieldReader fields_;
    Record* current_ = nullptr;
    Place place_ = Place::Outside;
    RecordKind plainKind_ = RecordKind::Other;
    RecordId section_ = kNoRecord;
    RecordId group_ = kNoRecord;  // the open table or block
    RecordId main_ = kNoRecord;   // the polyline or block reference whose sub-entities may follow
    std::size_t sectionSlot_ = 0;
    std::size_t groupSlot_ = 0;
    std::string_view sectionName_;
};

Indexer::Step Indexer::fails(const char* at, std::string reason) {
    damage_.offset = static_cast<std::size_t>(at - start_);
    damage_.reason = std::move(reason);
    return Step::Fails;
}

std::string Indexer::sectionText() const {
    return "section " + printable(sectionName_);
}

bool Indexer::close(const char* at) {
    if (current_ == nullptr) return true;
    const std::uint64_t length = static_cast<std::uint64_t>(at - start_) - current_->offset;
    if (length > 0xFFFFFFFFu) {
        fails(start_ + current_->offset, "a record of more than 4 GB");
        return false;
    }
    current_->length = static_cast<std::uint32_t>(length);
    index_.countHandle(current_->handle);
    return true;
}

Indexer::Step Indexer::open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner) {
    if (!close(at)) return Step::Fails;
    if (index_.records.size() >= kNoRecord) return fails(at, "too many records");
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
    if (bytes.substr(0, kBinarySignature.size()) == kBinarySignature) {
        damage_.hasLine = false;
        fails(start_, "binary drawings cannot be read yet, only drawings in text form");
        return false;
    }
    index_.lineEnd = lineEndOf(bytes);
    const char* at = start_;
    if (!preamble(at)) return false;
    return index_.lineEnd == '\r' ? scan<'\r'>(at) : scan<'\n'>(at);
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
        const Cut cut = cutTag(at, end_, index_.lineEnd, tag);
        if (cut == Cut::Tag && tag.code == 999) {
            at = tag.next;
            continue;
        }
        if (at == end_) {
            fails(at, "not a DXF file: nothing in it");
        } else if (cut == Cut::NoCode) {
            fails(at, "not a DXF file: first line is no group code");
        } else if (cut == Cut::NoValue) {
            return cutFailure(at, cut);
        } else if (tag.code != 0) {
            fails(at, "not a DXF file: 0 SECTION expected, found group code " + std::to_string(tag.code));
        } else {
            return at == start_ || open(start_, RecordKind::Preamble, 0, kNoRecord) == Step::Goes;
        }
        return false;
    }
}

bool Indexer::cutFailure(const char* at, Cut cut) {
    if (at == end_) {
        const char* last = at == start_ ? at : at - 1;
        fails(last, "the file is cut off: 0 EOF is missing");
    } else if (cut == Cut::NoValue) {
        fails(at, "the file is cut off: no value behind the last group code");
    } else {
        const Line line = cutLine(at, end_, index_.lineEnd);
        const std::string_view text(line.begin, static_cast<std::size_t>(line.end - line.begin));
        if (text.find('\0') != std::string_view::npos) {
            fails(at, "NUL byte in a group code");
        } else {
            fails(at, "group code expected, found \"" + printable(text) + "\"");
        }
    }
    return false;
}

template <char lineEnd>
bool Indexer::scan(const char* at) {
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
            if (cut != Cut::Tag) return cutFailure(at, cut);
            if (left >= CodeCache::kReach) cache_.learn(at, tag, lineEnd);
            matters = CodeCache::mattersToIndex(tag.code);
        }
        at = tag.next;
        if (!matters) continue;
        if (tag.code == 0 || (tag.code == 9 && place_ == Place::Header)) {
            const Step step = startRecord(begin, tag);
            if (step != Step::Goes) return step == Step::Ends;
        } else if (tag.code != 9) {
            fields_.take(tag.code, textOf(tag), index_.layers, false);
        }
    }
}

Indexer::Step Indexer::startRecord(const char* at, const RawTag& tag) {
    const std::uint16_t type = typeNumber(index_.types.intern(trimmed(textOf(tag))));
    if (tag.code == 9) {
        const Step step = open(at, RecordKind::HeaderVariable, type, section_);
        if (step == Step::Goes) index_.headerVariables.push_back(lastId());
        return step;
    }
    if (place_ == Place::Outside) return startOutside(at, tag, type);
    std::string_view name;
    switch (type) {
        case kTypeEndSection:
            if (group_ != kNoRecord) {
                return fails(at, std::string("ENDSEC inside a ") +
                                     (place_ == Place::Tables ? "table: ENDTAB" : "block: ENDBLK") + " is missing");
            }
            place_ = Place::Outside;
            main_ = kNoRecord;
            if (open(at, RecordKind::EndSection, type, section_) != Step::Goes) return Step::Fails;
            index_.ends[sectionSlot_].second = lastId();
            return Step::Goes;
        case kTypeEndOfFile:
            return fails(at, "EOF inside " + sectionText() + ": ENDSEC is missing");
        case kTypeSection:
            // An entity may be called SECTION too; the head of a section goes on with its name.
            if (sectionName(tag.next, name)) {
                return fails(at, "SECTION inside " + sectionText() + ": ENDSEC is missing");
            }
            break;
        case kTypeEndTable:
            if (group_ == kNoRecord || place_ != Place::Tables) return fails(at, "ENDTAB without a TABLE");
            break;
        case kTypeEndBlock:
            if (group_ == kNoRecord || place_ != Place::Blocks) return fails(at, "ENDBLK without a BLOCK");
            break;
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

Indexer::Step Indexer::startOutside(const char* at, const RawTag& tag, std::uint16_t type) {
    if (type == kTypeSection) return startSection(at, tag);
    if (type == kTypeEndOfFile) return endOfFile(at, tag);
    if (type == kTypeEndSection) return fails(at, "ENDSEC without a SECTION");
    return fails(at, printable(trimmed(textOf(tag))) + " outside of a section");
}

bool Indexer::sectionName(const char* at, std::string_view& name) const {
    RawTag tag{};
    while (cutTag(at, end_, index_.lineEnd, tag) == Cut::Tag) {
        if (tag.code != 999) {
            name = trimmed(textOf(tag));
            return tag.code == 2;
        }
        at = tag.next;
    }
    return false;
}

Indexer::Step Indexer::startSection(const char* at, const RawTag& tag) {
    if (!sectionName(tag.next, sectionName_)) return fails(at, "a section without a name");
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
        if (group_ != kNoRecord) return fails(at, "TABLE inside a table: ENDTAB is missing");
        const Step step = openHead(at, RecordKind::Table, type, section_, groupSlot_);
        if (step != Step::Goes) return step;
        group_ = lastId();
        index_.tables.push_back(group_);
        return Step::Goes;
    }
    if (group_ == kNoRecord) return open(at, RecordKind::Other, type, section_);
    if (type != kTypeEndTable) return open(at, RecordKind::TableRecord, type, group_);
    const Step step = open(at, RecordKind::EndTable, type, group_);
    if (step == Step::Goes) index_.ends[groupSlot_].second = lastId();
    group_ = kNoRecord;
    return step;
}

Indexer::Step Indexer::startInBlocks(const char* at, std::uint16_t type) {
    if (type == kTypeBlock) {
        if (group_ != kNoRecord) return fails(at, "BLOCK inside a block: ENDBLK is missing");
        const Step step = openHead(at, RecordKind::Block, type, section_, groupSlot_);
        if (step == Step::Goes) group_ = lastId();
        return step;
    }
    if (group_ == kNoRecord) return open(at, RecordKind::Other, type, section_);
    if (type != kTypeEndBlock) return startEntity(at, type, group_);
    main_ = kNoRecord;
    const Step step = open(at, RecordKind::EndBlock, type, group_);
    if (step == Step::Goes) index_.ends[groupSlot_].second = lastId();
    group_ = kNoRecord;
    return step;
}

Indexer::Step Indexer::startEntity(const char* at, std::uint16_t type, RecordId container) {
    const bool isSub = main_ != kNoRecord && (type == kTypeVertex || type == kTypeAttrib || type == kTypeSeqend);
    if (!isSub) {
        const Step step = open(at, RecordKind::Entity, type, container);
        main_ = type == kTypePolyline || type == kTypeInsert ? lastId() : kNoRecord;
        return step;
    }
    const Step step = open(at, RecordKind::Entity, type, main_);
    if (step == Step::Goes) current_->flags |= kSubEntity;
    if (type == kTypeSeqend) main_ = kNoRecord;
    return step;
}

Indexer::Step Indexer::endOfFile(const char* at, const RawTag& tag) {
    Step step = open(at, RecordKind::EndOfFile, kTypeEndOfFile, kNoRecord);
    if (step == Step::Goes && tag.next != end_) step = open(tag.next, RecordKind::Other, 0, kNoRecord);
    if (step != Step::Goes || !close(end_)) return Step::Fails;
    return Step::Ends;
}

}  // namespace

bool buildIndex(std::string_view bytes, Index& index, Damage& damage) {
    return Indexer(bytes, index, damage).run();
}

}  // namespace qrs::dxf
