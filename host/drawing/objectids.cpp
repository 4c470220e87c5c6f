// Objects by their numbers: records, owners, handles and formats.
#include "host/drawing/objectids.h"

#include "host/drawing/entityformat.h"
#include "host/dxf/groupcodes.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

bool isObjectKind(RecordKind kind) {
    return kind == RecordKind::TableRecord || kind == RecordKind::Block || kind == RecordKind::Entity ||
           kind == RecordKind::EndBlock || kind == RecordKind::Object;
}

std::uint32_t idOf(const Block* block) {
    return block ? block->id : kNoRecord;
}

}  // namespace

std::uint32_t ObjectIds::ofTable(RecordId head) const {
    dxf::Tag tag;
    const TableFormat* format =
        drawing_.findTag(head, dxf::codes::kName, tag) ? findTableFormat(dxf::trimmed(tag.value)) : nullptr;
    return format ? tableId(format->kind) : kNoRecord;
}

RecordId ObjectIds::recordOf(std::uint32_t object) const {
    if (isTableId(object)) return tables_.head(tableKindOf(object));
    return object < drawing_.recordCount() ? object : kNoRecord;
}

bool ObjectIds::isObject(std::uint32_t object) const {
    if (isTableId(object)) return true;
    if (object == kUnnamedModelSpace || object == kUnnamedPaperSpace) return blocks_.byId(object) != nullptr;
    return object < drawing_.recordCount() && isObjectKind(drawing_.record(object).kind);
}

bool ObjectIds::isErased(std::uint32_t object) const {
    return object < drawing_.recordCount() && drawing_.isErased(object);
}

bool ObjectIds::isRecordOf(std::uint32_t object, TableKind kind) const {
    TableKind present = kind;
    return object < drawing_.recordCount() && tables_.kindOf(object, present) && present == kind;
}

std::uint64_t ObjectIds::handleOf(std::uint32_t object) const {
    const RecordId record = recordOf(object);
    return record == kNoRecord ? 0 : drawing_.record(record).handle;
}

std::uint32_t ObjectIds::ownerOf(std::uint32_t object) const {
    if (isTableId(object)) return kNoRecord;
    if (blocks_.byId(object)) return tableId(TableKind::Block);
    if (object >= drawing_.recordCount()) return kNoRecord;
    const dxf::Record& entry = drawing_.record(object);
    if (entry.kind == RecordKind::Block) return idOf(blocks_.byHead(object));
    if (entry.kind == RecordKind::EndBlock) return idOf(blocks_.byHead(entry.owner));
    if (entry.kind == RecordKind::TableRecord) {
        TableKind kind;
        return tables_.kindOf(object, kind) ? tableId(kind) : kNoRecord;
    }
    if (entry.kind == RecordKind::Entity) {
        if ((entry.flags & dxf::kSubEntity) != 0) return entry.owner;
        if (entry.owner != kNoRecord && drawing_.record(entry.owner).kind == RecordKind::Block)
            return idOf(blocks_.byHead(entry.owner));
        return idOf(blocks_.bySpace((entry.flags & dxf::kPaperSpace) != 0 ? Space::Paper : Space::Model));
    }
    dxf::Tag tag;
    return drawing_.findTag(object, dxf::codes::kOwner, tag) ? drawing_.findHandle(dxf::toHandle(tag.value))
                                                             : kNoRecord;
}

std::uint32_t ObjectIds::find(TableKind kind, std::wstring_view name) const {
    return kind == TableKind::Block ? idOf(blocks_.find(name)) : tables_.find(kind, name);
}

const RecordFormat& ObjectIds::formatOf(std::uint32_t object) const {
    TableKind kind;
    const RecordId record = recordOf(object);
    if (record == kNoRecord) return entityFormat();
    if (tables_.kindOf(record, kind)) return tableFormat(kind).record;
    return entityFormatOf(drawing_.typeNameOf(record));
}

}  // namespace qrs::host
