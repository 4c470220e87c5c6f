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
            const bool isLogical = code == codes::kLinetype && (platform::compareNoCase(text, L"ByLayer") == 0 ||
                                                                platform::compareNoCase(text, L"ByBlock") == 0);
            if (named == kNoRecord && !isLogical) {
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
