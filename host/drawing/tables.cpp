// Finds records of tables by name, and writes new ones as their siblings are written.
#include "host/drawing/tables.h"

#include <algorithm>

#include "host/drawing/sections.h"
#include "host/dxf/groupcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

bool isLogicalLinetype(std::wstring_view name) {
    return platform::compareNoCase(name, L"ByLayer") == 0 || platform::compareNoCase(name, L"ByBlock") == 0;
}

bool SymbolTables::kindOf(RecordId record, TableKind& kind) const {
    const dxf::Record& entry = drawing_.record(record);
    if (entry.kind != RecordKind::TableRecord) return false;
    const TableFormat* format = findTableFormat(drawing_.typeName(entry.type));
    if (!format) return false;
    kind = format->kind;
    return true;
}

std::vector<RecordId> SymbolTables::records(TableKind kind) const {
    std::vector<RecordId> found;
    const RecordId table = head(kind);
    if (table == kNoRecord) return found;
    const std::string_view type = tableFormat(kind).name;
    for (RecordId id = drawing_.next(table); id != kNoRecord; id = drawing_.next(id)) {
        const dxf::Record& entry = drawing_.record(id);
        if (entry.kind != RecordKind::TableRecord) break;
        // What bears another name inside the table is no record of it.
        if (drawing_.typeName(entry.type) == type) found.push_back(id);
    }
    return found;
}

std::wstring SymbolTables::nameOf(RecordId record) const {
    dxf::Tag tag;
    return drawing_.findTag(record, codes::kName, tag) ? readText(drawing_, tag.value) : std::wstring();
}

RecordId SymbolTables::find(TableKind kind, std::wstring_view name) const {
    Names& names = names_[static_cast<std::size_t>(kind)];
    if (!names.built) {
        names.records.clear();
        for (RecordId id : records(kind))
            names.records.emplace(platform::foldCase(nameOf(id)), id);
        names.built = true;
    }
    const auto found = names.records.find(platform::foldCase(name));
    return found == names.records.end() ? kNoRecord : found->second;
}

void SymbolTables::countChanged(TableKind kind, RecordId record, int by) {
    Names& names = names_[static_cast<std::size_t>(kind)];
    if (names.built && by > 0)
        names.records.emplace(platform::foldCase(nameOf(record)), record);
    else
        names.built = false;  // another record of the same name may now be the first
    if (kind == TableKind::Layer) ++layerAge_;
    drawing_.adjustTableCount(head(kind), by);
}

RecordId SymbolTables::add(TableKind kind, const DetachedTags& own) {
    RecordId table = head(kind);
    if (table == kNoRecord) table = makeHead(kind);
    // Extended data stands under registered applications alone.
    for (const dxf::NewTag& tag : own.tags)
        if (tag.code == codes::kXdataApplication && drawing_.version() >= tableFormat(kind).record.sinceOf(tag.code))
            registerApplication(platform::fromUtf8(tag.value));
    const RecordId end = drawing_.endOf(table);
    const RecordId added = drawing_.insertRecord(end, RecordKind::TableRecord, composed(tableFormat(kind), own, table));
    countChanged(kind, added, 1);
    return added;
}

void SymbolTables::registerApplication(std::wstring_view name) {
    if (find(TableKind::RegApp, name) != kNoRecord) return;
    const RecordFormat& format = tableFormat(TableKind::RegApp).record;
    add(TableKind::RegApp, {&format, {{codes::kName, platform::toUtf8(name)}, {codes::kFlags, "0"}}});
}

// Layer "0" when there is one: it has what every layer of the drawing has.
RecordId SymbolTables::siblingOf(TableKind kind) const {
    if (kind == TableKind::Layer) {
        const RecordId zero = find(kind, L"0");
        if (zero != kNoRecord) return zero;
    }
    const std::vector<RecordId> present = records(kind);
    return present.empty() ? kNoRecord : present.front();
}

std::string SymbolTables::sample(RecordId sibling, int code) const {
    dxf::Tag tag;
    if (sibling == kNoRecord || !drawing_.findTag(sibling, code, tag)) return {};
    return std::string(tag.value);
}

std::vector<dxf::NewTag> SymbolTables::composed(const TableFormat& format, const DetachedTags& own, RecordId head) {
    const RecordId sibling = siblingOf(format.kind);
    const bool alone = sibling == kNoRecord;
    dxf::Tag tag;
    std::vector<dxf::NewTag> tags{{codes::kType, format.name}};
    if (drawing_.hasHandles() && (alone || drawing_.record(sibling).handle != 0))
        tags.push_back({format.handleCode, dxf::handleText(drawing_.newHandle())});
    const std::uint64_t owner = drawing_.record(head).handle;
    if (owner != 0 &&
        (alone ? drawing_.version() >= dxf::kFirstWithOwners : drawing_.findTag(sibling, codes::kOwner, tag)))
        tags.push_back({codes::kOwner, dxf::handleText(owner)});
    if (alone ? drawing_.version() >= dxf::kFirstWithSubclasses : drawing_.findTag(sibling, codes::kSubclass, tag)) {
        tags.push_back({codes::kSubclass, "AcDbSymbolTableRecord"});
        tags.push_back({codes::kSubclass, format.recordSubclass});
    }
    for (dxf::NewTag& one : ownTags(format, own, sibling))
        tags.push_back(std::move(one));
    return tags;
}

// The record's own tags in the order of the table's format, in the drawing's encoding, without what its version does
// not know, and with what the other records have.
std::vector<dxf::NewTag> SymbolTables::ownTags(const TableFormat& format, const DetachedTags& own,
                                               RecordId sibling) const {
    std::vector<dxf::NewTag> tags;
    for (const dxf::NewTag& one : own.tags) {
        if (drawing_.version() < format.record.sinceOf(one.code)) continue;
        std::wstring text = platform::fromUtf8(one.value);
        if (format.kind == TableKind::Layer && one.code == codes::kLinetype) {
            // Spelled as the linetype table spells it: "CONTINUOUS" in old drawings.
            const RecordId linetype = find(TableKind::Linetype, text);
            if (linetype != kNoRecord) text = nameOf(linetype);
        }
        tags.push_back({one.code, paddedLike(sample(sibling, one.code), writeText(drawing_, text))});
    }
    for (std::size_t i = 0; i < format.siblingTagCount; ++i) {
        const SiblingTag& wanted = format.siblingTags[i];
        const std::string present = sample(sibling, wanted.code);
        const bool given = std::any_of(tags.begin(), tags.end(), [&](const auto& t) { return t.code == wanted.code; });
        if (present.empty() || given) continue;
        // What the sibling points to may be missing.
        const std::uint64_t target = wanted.value ? 0 : dxf::toHandle(present);
        if (target != 0 && drawing_.findHandle(target) == kNoRecord) continue;
        tags.push_back({wanted.code, wanted.value ? paddedLike(present, wanted.value) : present});
    }
    std::stable_sort(tags.begin(), tags.end(), [&](const dxf::NewTag& a, const dxf::NewTag& b) {
        // Tags that repeat in groups keep their order.
        const int firstOfGroups = format.record.rankOf(format.record.groupCode);
        const auto rank = [&](int code) {
            const int place = format.record.rankOf(code);
            return firstOfGroups < 0 ? place : std::min(place, firstOfGroups);
        };
        return rank(a.code) < rank(b.code);
    });
    return tags;
}

RecordId SymbolTables::makeHead(TableKind kind) {
    const RecordId section = ensureSection(drawing_, "TABLES");
    RecordId before = drawing_.endOf(section);
    for (std::size_t later = static_cast<std::size_t>(kind) + 1; later < kTableCount; ++later) {
        const RecordId other = head(static_cast<TableKind>(later));
        if (other == kNoRecord) continue;
        before = other;
        break;
    }
    std::vector<dxf::NewTag> tags{{codes::kType, "TABLE"}, {codes::kName, tableFormat(kind).name}};
    if (drawing_.hasHandles()) {
        if (drawing_.version() >= dxf::kFirstWithHandles)
            tags.push_back({codes::kHandle, dxf::handleText(drawing_.newHandle())});
        if (drawing_.version() >= dxf::kFirstWithOwners) tags.push_back({codes::kOwner, "0"});
    }
    if (drawing_.version() >= dxf::kFirstWithSubclasses) tags.push_back({codes::kSubclass, "AcDbSymbolTable"});
    tags.push_back({codes::kTableCount, "0"});
    const RecordId table = drawing_.insertRecord(before, RecordKind::Table, tags);
    drawing_.insertRecord(before, RecordKind::EndTable, {{codes::kType, "ENDTAB"}});
    return table;
}

}  // namespace qrs::host
