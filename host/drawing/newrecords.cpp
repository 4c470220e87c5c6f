// Putting new records together tag by tag.
#include "host/drawing/newrecords.h"

#include <algorithm>
#include <iterator>

#include "host/drawing/entityformat.h"
#include "host/drawing/sections.h"
#include "host/dxf/classcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

NewRecords::Spelling NewRecords::spell(const DetachedTags& own, std::string_view dxfName,
                                       std::vector<dxf::NewTag>& tags) const {
    for (const auto& [code, value] : own.tags) {
        if (drawing_.version() < own.format->sinceOf(code)) continue;
        std::wstring text = platform::fromUtf8(value);
        if (const NamingTag* naming = namingTag(dxfName, code)) {
            const std::uint32_t named = contents_.ids().find(naming->table, text);
            if (named == kNoRecord && (naming->table != TableKind::Linetype || !isLogicalLinetype(text))) {
                // Where nothing else is said, a text has the standard style, defined or not.
                if (naming->table == TableKind::TextStyle && platform::compareNoCase(text, L"Standard") == 0) continue;
                return code == codes::kLayer ? Spelling::UnknownLayer : Spelling::UnknownName;
            }
            if (named != kNoRecord && naming->table != TableKind::Block) text = contents_.tables().nameOf(named);
        }
        tags.push_back({code, writeText(drawing_, text)});
    }
    return Spelling::Done;
}

// The tags all entities share, as far as the drawing's version knows them.
void NewRecords::addCommonTags(const std::vector<dxf::NewTag>& own, const Block& block,
                               std::vector<dxf::NewTag>& tags) const {
    if (drawing_.version() >= dxf::kFirstWithSubclasses) tags.push_back({codes::kSubclass, "AcDbEntity"});
    if (block.space == Space::Paper) tags.push_back({codes::kPaperSpace, "1"});
    const auto isCommon = [](const dxf::NewTag& tag) { return entityFormat().rankOf(tag.code) >= 0; };
    std::copy_if(own.begin(), own.end(), std::back_inserter(tags), isCommon);
    const bool hasLayer =
        std::any_of(own.begin(), own.end(), [](const auto& tag) { return tag.code == codes::kLayer; });
    if (!hasLayer) tags.push_back({codes::kLayer, "0"});
}

// The tags of the entity's kind, with the marks of its sections, in the order of their format.
void NewRecords::addOwnTags(const std::vector<dxf::NewTag>& own, const RecordFormat& format,
                            std::vector<dxf::NewTag>& tags) const {
    for (std::size_t i = entityFormat().count + 1; i < format.count; ++i) {
        const CodeFormat& row = format.codes[i];
        if (row.mark && drawing_.version() >= row.since) tags.push_back({row.code, row.mark});
        for (const dxf::NewTag& tag : own)
            if (!row.mark && tag.code == row.code) tags.push_back(tag);
    }
}

RecordId NewRecords::addEntity(const std::string& dxfName, const Block& block, const std::vector<dxf::NewTag>& own,
                               const std::vector<dxf::NewTag>& fields) {
    std::vector<dxf::NewTag> tags{{codes::kType, dxfName}};
    if (drawing_.hasHandles()) tags.push_back({codes::kHandle, dxf::handleText(drawing_.newHandle())});
    const std::uint64_t owner = contents_.ids().handleOf(block.id);
    if (owner != 0 && drawing_.version() >= dxf::kFirstWithOwners)
        tags.push_back({codes::kOwner, dxf::handleText(owner)});
    addCommonTags(own, block, tags);
    addOwnTags(own, entityFormatOf(dxfName), tags);
    tags.insert(tags.end(), fields.begin(), fields.end());
    const RecordId head = block.space == Space::None ? block.head : ensureSection(drawing_, "ENTITIES");
    return drawing_.insertRecord(drawing_.endOf(head), RecordKind::Entity, tags);
}

// --- blocks

std::wstring NewRecords::freeName(std::wstring_view wanted) const {
    if (platform::compareNoCase(wanted, L"*U") != 0) return std::wstring(wanted);
    for (std::size_t i = 1;; ++i)
        if (std::wstring candidate = L"*U" + std::to_wstring(i); !contents_.blocks().find(candidate)) return candidate;
}

// Old drawings may have handles on other records alone.
bool NewRecords::blocksHaveHandles() const {
    bool haveHandles = drawing_.hasHandles();
    for (const Block& block : contents_.blocks().blocks())
        if (drawing_.version() < dxf::Version::R13 && block.head != kNoRecord)
            haveHandles = drawing_.record(block.head).handle != 0;
    return haveHandles;
}

std::vector<dxf::NewTag> NewRecords::blockTags(const char* type, std::uint64_t owner, const char* mark,
                                               bool hasHandle) const {
    std::vector<dxf::NewTag> tags{{codes::kType, type}};
    if (hasHandle) tags.push_back({codes::kHandle, dxf::handleText(drawing_.newHandle())});
    if (owner != 0 && drawing_.version() >= dxf::kFirstWithOwners)
        tags.push_back({codes::kOwner, dxf::handleText(owner)});
    const bool hasMarks = drawing_.version() >= dxf::kFirstWithSubclasses;
    if (hasMarks) tags.push_back({codes::kSubclass, "AcDbEntity"});
    tags.push_back({codes::kLayer, "0"});
    if (hasMarks) tags.push_back({codes::kSubclass, mark});
    return tags;
}

std::uint32_t NewRecords::addBlock(const DetachedTags& own, std::wstring_view wantedName) {
    const std::wstring name = freeName(wantedName);
    const bool hasTable = drawing_.version() >= dxf::Version::R13;
    const bool haveHandles = blocksHaveHandles();
    RecordId record = kNoRecord;
    if (hasTable) {
        record = contents_.tables().add(
            TableKind::Block, {&tableFormat(TableKind::Block).record, {{codes::kName, platform::toUtf8(name)}}});
    }
    const std::uint64_t owner = record == kNoRecord ? 0 : drawing_.record(record).handle;
    const RecordId end = drawing_.endOf(ensureSection(drawing_, "BLOCKS"));
    const std::string spelled = writeText(drawing_, name);
    std::vector<dxf::NewTag> tags = blockTags("BLOCK", owner, "AcDbBlockBegin", haveHandles);
    tags.push_back({codes::kName, spelled});
    tags.push_back({codes::kFlags, name.front() == L'*' ? "1" : "0"});
    for (const int code : {codes::kPoint, codes::yOf(codes::kPoint), codes::zOf(codes::kPoint)}) {
        const auto found =
            std::find_if(own.tags.begin(), own.tags.end(), [&](const auto& tag) { return tag.code == code; });
        tags.push_back({code, found == own.tags.end() ? "0.0" : found->value});
    }
    tags.push_back({codes::block::kSecondName, spelled});
    if (hasTable) tags.push_back({codes::block::kPath, ""});
    const RecordId head = drawing_.insertRecord(end, RecordKind::Block, tags);
    drawing_.insertRecord(end, RecordKind::EndBlock, blockTags("ENDBLK", owner, "AcDbBlockEnd", haveHandles));
    contents_.came(head);
    return record == kNoRecord ? head : record;
}

// --- objects

RecordId NewRecords::addObject(const std::string& dxfName, std::uint64_t owner,
                               const std::vector<dxf::NewTag>& content) {
    std::vector<dxf::NewTag> tags{{codes::kType, dxfName},
                                  {codes::kHandle, dxf::handleText(drawing_.newHandle())},
                                  {codes::kOwner, dxf::handleText(owner)}};
    tags.insert(tags.end(), content.begin(), content.end());
    const RecordId section = ensureSection(drawing_, "OBJECTS");
    return drawing_.insertRecord(drawing_.endOf(section), RecordKind::Object, tags);
}

RecordId NewRecords::ensureRootDictionary() {
    const RecordId root = rootDictionary(drawing_);
    if (root != kNoRecord || drawing_.version() < dxf::kFirstWithObjects) return root;
    // It is known by being the first object.
    const RecordId section = ensureSection(drawing_, "OBJECTS");
    std::vector<dxf::NewTag> tags{{codes::kType, "DICTIONARY"},
                                  {codes::kHandle, dxf::handleText(drawing_.newHandle())},
                                  {codes::kOwner, "0"},
                                  {codes::kSubclass, "AcDbDictionary"}};
    if (drawing_.version() >= dxf::Version::R2000) tags.push_back({codes::dictionary::kCloning, "1"});
    return drawing_.insertRecord(drawing_.next(section), RecordKind::Object, tags);
}

RecordId rootDictionary(const dxf::Drawing& drawing) {
    const RecordId section = drawing.findSection("OBJECTS");
    if (section == kNoRecord) return kNoRecord;
    const RecordId first = drawing.next(section);
    const bool isDictionary = first != kNoRecord && drawing.record(first).kind == RecordKind::Object &&
                              drawing.typeNameOf(first) == "DICTIONARY";
    return isDictionary ? first : kNoRecord;
}

}  // namespace qrs::host
