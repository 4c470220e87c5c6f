// Symbol tables and their records in general.
#include <cwchar>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::TableKind;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)

namespace {

// A drawing with a longer name is one the editor cannot open.
constexpr std::size_t kLongestName = 255;

bool isSymbolName(const ACHAR* name) {
    return name && *name && std::wcslen(name) <= kLongestName && !std::wcspbrk(name, L"<>/\\\":;?*|,=`\n\r");
}

std::vector<std::uint32_t> recordsOf(DatabaseState& state, TableKind kind) {
    if (kind != TableKind::Block) return state.tables().records(kind);
    std::vector<std::uint32_t> records;
    for (const qrs::host::Block& block : state.blocks().blocks())
        records.push_back(block.id);
    return records;
}

// Everything that names a layer: entities, block heads, the current layer, and extended data.
void renameLayerReferences(DatabaseState& state, dxf::RecordId layer, std::wstring_view name) {
    dxf::Drawing& drawing = state.drawing();
    const std::string spelled = qrs::host::writeText(drawing, name);
    const std::wstring oldName = state.tables().nameOf(layer);
    const auto isOld = [&](std::string_view value) {
        return qrs::platform::compareNoCase(qrs::host::readText(drawing, value), oldName) == 0;
    };
    for (dxf::RecordId id = drawing.first(); id != dxf::kNoRecord; id = drawing.next(id)) {
        dxf::Tag tag;
        const dxf::Record& record = drawing.record(id);
        const bool isCurrentLayer = record.kind == dxf::RecordKind::HeaderVariable &&
                                    drawing.typeName(record.type) == "$CLAYER" &&
                                    drawing.findTag(id, codes::kLayer, tag) && isOld(tag.value);
        const bool liesOnLayer = record.layer != dxf::kNoName && state.contents().layers().find(record.layer) == layer;
        if ((isCurrentLayer || liesOnLayer) && drawing.findTag(id, codes::kLayer, tag))
            drawing.setValue(id, tag, spelled);
        if ((drawing.record(id).flags & dxf::kHasXdata) == 0) continue;
        for (int nth = 0; drawing.findTag(id, codes::kXdataLayer, tag, nth); ++nth)
            if (isOld(tag.value)) drawing.setValue(id, tag, spelled);
    }
}

}  // namespace

// --- records

AcDbSymbolTableRecord::AcDbSymbolTableRecord() = default;

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
    name = nullptr;
    if (!isReadEnabled()) return Acad::eNotOpenForRead;
    DatabaseState* state = DatabaseState::of(database());
    const qrs::host::Block* block = state ? state->blocks().byId(record()) : nullptr;
    nameText_ = block ? block->name : tags().text(codes::kName);
    name = nameText_.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    // A new block may ask for a name of its own making.
    const bool isAnonymous = !state && isA() == AcDbBlockTableRecord::desc() && name && std::wcscmp(name, L"*U") == 0;
    if (!isSymbolName(name) && !isAnonymous) return Acad::eInvalidInput;
    if (state) {
        TableKind kind;
        if (!state->tables().kindOf(record(), kind)) return Acad::eNotApplicable;
        const std::wstring present = state->tables().nameOf(record());
        if (present == name) return Acad::eOk;
        // What refers to a record by name does so without regard to case. Of a block more than its record is named.
        const bool isSpelling = kind != TableKind::Block && qrs::platform::compareNoCase(present, name) == 0;
        if (kind != TableKind::Layer && !isSpelling) return Acad::eNotApplicable;
        if (present == L"0") return Acad::eInvalidInput;
        const dxf::RecordId other = state->tables().find(kind, name);
        if (other != dxf::kNoRecord && other != record()) return Acad::eDuplicateRecordName;
        if (kind == TableKind::Layer) renameLayerReferences(*state, record(), name);
    }
    qrs::platform::recordCall(
        isA() == AcDbLayerTableRecord::desc() ? "AcDbLayerTableRecord::setName" : "AcDbSymbolTableRecord::setName",
        name);
    tags().setText(codes::kName, name);
    if (state) state->contents().renamed(record());
    return Acad::eOk;
}

// --- iterators

AcDbSymbolTableIterator::AcDbSymbolTableIterator(AcDbDatabase* database, std::uint32_t table)
    : database_(database), table_(table) {
    start();
}

void AcDbSymbolTableIterator::start() {
    DatabaseState* state = DatabaseState::of(database_);
    records_.clear();
    if (state) records_ = recordsOf(*state, qrs::host::tableKindOf(table_));
    position_ = 0;
}

bool AcDbSymbolTableIterator::done() const {
    return position_ >= records_.size();
}

void AcDbSymbolTableIterator::passErased() {
    const DatabaseState* state = DatabaseState::of(database_);
    while (!done() && state && state->ids().isErased(records_[position_]))
        ++position_;
}

void AcDbSymbolTableIterator::step() {
    if (done()) return;
    ++position_;
    passErased();
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& recordId) const {
    recordId.setNull();
    const DatabaseState* state = DatabaseState::of(database_);
    if (done() || !state) return Acad::eEndOfObject;
    recordId = state->idOf(records_[position_]);
    return Acad::eOk;
}

// --- tables

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& recordId, bool) const {
    recordId.setNull();
    DatabaseState* state = DatabaseState::of(database());
    if (!isReadEnabled() || !state) return Acad::eNotOpenForRead;
    if (!name) return Acad::eInvalidInput;
    const std::uint32_t found = state->ids().find(qrs::host::tableKindOf(record()), name);
    if (found == dxf::kNoRecord) return Acad::eKeyNotFound;
    recordId = state->idOf(found);
    return Acad::eOk;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    AcDbObjectId recordId;
    return getAt(name, recordId) == Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::addRecord(AcDbObjectId& recordId, AcDbSymbolTableRecord* newRecord) {
    recordId.setNull();
    const ACHAR* name = nullptr;
    const qrs::host::DetachedTags* own = nullptr;
    const Acad::ErrorStatus status = qrs::host::examineNewRecord(*this, newRecord, name, own);
    if (status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    const TableKind kind = qrs::host::tableKindOf(record());
    if (state->tables().find(kind, name) != dxf::kNoRecord) return Acad::eDuplicateRecordName;
    qrs::platform::recordCall("AcDbSymbolTable::add", qrs::host::tableFormat(kind).name, name);
    const dxf::RecordId added = state->tables().add(kind, *own);
    state->objects().adopt(*newRecord, added);
    recordId = state->idOf(added);
    return Acad::eOk;
}
