// What a record is, by where it stands: sections, tables, blocks, polylines and what they hold.
#include "host/dxf/indexer.h"
#include "host/dxf/tags.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

namespace {

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

}  // namespace

Indexer::Step Indexer::startRecord(const char* at, const RawTag& tag) {
    const std::uint16_t type = typeNumber(index_.types.intern(trimmed(textOf(tag))));
    if (secondBegin_ != nullptr && at >= secondBegin_) {
        if (const Step step = joinSecond(at); step != Step::Goes) return step;
    }
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
            if (type == kTypeEndBlock && isInBlockAfterAll()) becomeBlocks();
            if (group_ != kNoRecord && place_ == (type == kTypeEndTable ? Place::Tables : Place::Blocks)) break;
            fault(at, kNoRecord, FaultKind::StrayRecord,
                  type == kTypeEndTable ? translated("ENDTAB without a TABLE") : translated("ENDBLK without a BLOCK"));
            return open(at, RecordKind::Other, type, section_);
        case kTypeBlock:
            // One block is not closed before the next one begins.
            if (isInBlockAfterAll()) becomeBlocks();
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

Indexer::Step Indexer::endOfFile(const char* at, const RawTag& tag) {
    Step step = open(at, RecordKind::EndOfFile, kTypeEndOfFile, kNoRecord);
    if (step == Step::Goes && tag.next != end_) step = open(tag.next, RecordKind::Other, 0, kNoRecord);
    if (step != Step::Goes || !close(end_)) return Step::Fails;
    return Step::Ends;
}

}  // namespace qrs::dxf
