// Blocks, and walking their entities.
#include <cmath>

#include "dbsymtb.h"
#include "host/drawing/entityformat.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"

using qrs::host::Block;
using qrs::host::DatabaseState;
using qrs::host::ObjectTags;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

ACRX_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, "BLOCK_RECORD")

namespace {

constexpr int kExternalBit = 4;

const Block* blockOf(const AcDbBlockTableRecord& record) {
    DatabaseState* state = DatabaseState::of(record.database());
    return state ? state->blocks().byId(record.objectId().recordNumber()) : nullptr;
}

// What the head of the block's definition says.
ObjectTags headTags(const AcDbBlockTableRecord& record) {
    const Block* block = blockOf(record);
    if (!block || block->head == dxf::kNoRecord) return ObjectTags();
    return ObjectTags(&DatabaseState::of(record.database())->drawing(), block->head, qrs::host::entityFormatOf("BLOCK"),
                      ObjectTags::Part::Whole);
}

}  // namespace

// --- records

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator) const {
    iterator = nullptr;
    if (!isReadEnabled() || !database()) return Acad::eNotOpenForRead;
    iterator = new AcDbBlockTableRecordIterator(database(), record());
    return Acad::eOk;
}

bool AcDbBlockTableRecord::isLayout() const {
    const Block* block = blockOf(*this);
    return block && (block->space != qrs::host::Space::None || tags().handle(codes::blockrecord::kLayout) != 0);
}

bool AcDbBlockTableRecord::isFromExternalReference() const {
    return (headTags(*this).integer(codes::kFlags, 0) & kExternalBit) != 0;
}

Acad::ErrorStatus AcDbBlockTableRecord::pathName(ACHAR*& path) const {
    path = qrs::host::newString(isFromExternalReference() ? headTags(*this).text(codes::kText) : std::wstring());
    return Acad::eOk;
}

AcGePoint3d AcDbBlockTableRecord::origin() const {
    return qrs::host::readPoint(database() ? headTags(*this) : tags(), codes::kPoint);
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(origin.x) || !std::isfinite(origin.y) || !std::isfinite(origin.z)) return Acad::eInvalidInput;
    ObjectTags head = database() ? headTags(*this) : tags();
    const Block* block = blockOf(*this);
    if (database() && (!block || block->head == dxf::kNoRecord)) return Acad::eNotApplicable;
    for (unsigned axis = 0; axis < 3; ++axis)
        head.setReal(codes::kPoint + static_cast<int>(axis) * codes::kCoordinateStep, origin[axis]);
    return Acad::eOk;
}

// --- entities of a block

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(AcDbDatabase* database, std::uint32_t block)
    : database_(database), head_(dxf::kNoRecord), end_(dxf::kNoRecord), current_(dxf::kNoRecord) {
    DatabaseState* state = DatabaseState::of(database);
    const Block* found = state ? state->blocks().byId(block) : nullptr;
    if (found && found->space != qrs::host::Space::None) {
        space_ = found->space == qrs::host::Space::Model ? Space::Model : Space::Paper;
        head_ = state->drawing().findSection("ENTITIES");
    } else if (found) {
        head_ = found->head;
    }
    if (head_ != dxf::kNoRecord) end_ = state->drawing().endOf(head_);
    start();
}

bool AcDbBlockTableRecordIterator::shows(std::uint32_t record) const {
    const dxf::Record& entry = DatabaseState::of(database_)->drawing().record(record);
    if (entry.kind != dxf::RecordKind::Entity || (entry.flags & (dxf::kSubEntity | dxf::kErased)) != 0) return false;
    if (space_ == Space::All) return true;
    return ((entry.flags & dxf::kPaperSpace) != 0) == (space_ == Space::Paper);
}

void AcDbBlockTableRecordIterator::start() {
    current_ = head_;
    step();
}

void AcDbBlockTableRecordIterator::step() {
    if (done()) return;
    const dxf::Drawing& drawing = DatabaseState::of(database_)->drawing();
    do
        current_ = drawing.next(current_);
    while (!done() && !shows(current_));
}

bool AcDbBlockTableRecordIterator::done() const {
    return current_ == end_ || current_ == dxf::kNoRecord;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& entityId) const {
    entityId.setNull();
    const DatabaseState* state = DatabaseState::of(database_);
    if (!state || done()) return Acad::eEndOfObject;
    entityId = AcDbObjectId(state->number, current_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    entity = nullptr;
    AcDbObjectId entityId;
    const Acad::ErrorStatus status = getEntityId(entityId);
    return status == Acad::eOk ? acdbOpenObject(entity, entityId, mode, openErased) : status;
}
