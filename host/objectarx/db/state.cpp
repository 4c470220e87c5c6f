// Databases by number, and what each of them consists of.
#include "host/objectarx/db/state.h"

#include <algorithm>
#include <utility>

#include "acutads.h"
#include "dbapserv.h"
#include "dbsymtb.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

// By number; numbers are not given twice, so an id of a closed drawing stays without one.
std::vector<DatabaseState*>& allStates() {
    static std::vector<DatabaseState*> states;
    return states;
}

}  // namespace

DatabaseState::DatabaseState(AcDbDatabase& owner, std::unique_ptr<dxf::Drawing> content)
    : database(owner), number(static_cast<std::uint32_t>(allStates().size() + 1)), objects_(*this) {
    allStates().push_back(this);
    replace(std::move(content));
}

DatabaseState::~DatabaseState() {
    allStates()[number - 1] = nullptr;
    objects_.abandon();
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    if (services->workingDatabase() == &database) services->setWorkingDatabase(nullptr);
}

DatabaseState* DatabaseState::byNumber(std::uint32_t number) {
    return number == 0 || number > allStates().size() ? nullptr : allStates()[number - 1];
}

DatabaseState* DatabaseState::ofNames(const AcDbEntity& entity) {
    AcDbDatabase* own = entity.database();
    return of(own ? own : acdbHostApplicationServices()->workingDatabase());
}

void DatabaseState::replace(std::unique_ptr<dxf::Drawing> content) {
    drawing_ = std::move(content);
    renew();
}

void DatabaseState::renew() {
    contents_ = std::make_unique<Contents>(*drawing_);
    kinds_ = std::make_unique<ObjectKinds>(*contents_);
    objects_.readAgain();
    erasedWith_.clear();
    erasedAlone_.clear();
}

AcDbObjectId DatabaseState::idOf(std::uint32_t record) const {
    const std::uint32_t id = ids().of(record);
    return id == kNoRecord ? AcDbObjectId() : AcDbObjectId(number, id);
}

bool DatabaseState::isRecordOf(AcDbObjectId id, TableKind kind) {
    const DatabaseState* state = byNumber(id.databaseNumber());
    return state && state->ids().isRecordOf(id.recordNumber(), kind);
}

// --- erasing

Acad::ErrorStatus DatabaseState::erase(std::uint32_t object, bool erasing) {
    if (ids().isErased(object) == erasing) return erasing ? Acad::eWasErased : Acad::eOk;
    if (!erasing) return bringBack(object);
    if (isTableId(object) || object >= drawing_->recordCount()) return Acad::eCannotBeErasedByCaller;
    std::vector<RecordId> leaving;
    TableKind table = TableKind::Block;
    if (const Block* block = blocks().byId(object)) {
        dxf::Tag layout;
        const bool hasLayout = drawing_->findTag(object, 340, layout) && dxf::toHandle(layout.value) != 0;
        if (block->space != Space::None || hasLayout) return Acad::eCannotBeErasedByCaller;
        gatherBlock(*block, leaving);
    } else if (tables().kindOf(object, table)) {
        if (table == TableKind::Block) return Acad::eCannotBeErasedByCaller;
        if (table == TableKind::Layer &&
            (database.clayer().recordNumber() == object || tables().nameOf(object) == L"0"))
            return Acad::eCannotBeErasedByCaller;
    } else if (drawing_->record(object).kind != RecordKind::Entity) {
        return Acad::eCannotBeErasedByCaller;
    }
    leaving.push_back(object);
    gatherExtension(object, leaving);
    leave(object, std::move(leaving));
    return Acad::eOk;
}

void DatabaseState::leave(std::uint32_t object, std::vector<RecordId> leaving) {
    for (const RecordId id : leaving) {
        const bool isThere = !drawing_->isErased(id);
        drawing_->eraseRecord(id);
        if (isThere) contents_->went(id);
    }
    // Half a drawing may go at once, and few of its entities have anything that goes with them.
    if (leaving.size() > 1) {
        erasedWith_[object] = std::move(leaving);
    } else {
        if (object >= erasedAlone_.size()) erasedAlone_.resize(drawing_->recordCount(), false);
        erasedAlone_[object] = true;
    }
}

void DatabaseState::eraseObject(RecordId object) {
    std::vector<RecordId> leaving{object};
    gatherExtension(object, leaving);
    leave(object, std::move(leaving));
}

Acad::ErrorStatus DatabaseState::bringBack(std::uint32_t object) {
    TableKind table;
    const bool isNamed = tables().kindOf(object, table);
    if (isNamed && ids().find(table, tables().nameOf(object)) != kNoRecord) return Acad::eDuplicateRecordName;
    const bool wasAlone = object < erasedAlone_.size() && erasedAlone_[object];
    const auto found = erasedWith_.find(object);
    if (!wasAlone && found == erasedWith_.end()) return Acad::ePermanentlyErased;
    for (const RecordId id : wasAlone ? std::vector<RecordId>{object} : found->second) {
        drawing_->eraseRecord(id, false);
        contents_->came(id);
    }
    if (wasAlone)
        erasedAlone_[object] = false;
    else
        erasedWith_.erase(found);
    return Acad::eOk;
}

void DatabaseState::gatherBlock(const Block& block, std::vector<RecordId>& leaving) const {
    if (block.head == kNoRecord) return;
    if (block.head != block.id) leaving.push_back(block.head);
    const RecordId end = drawing_->endOf(block.head);
    for (RecordId id = drawing_->next(block.head); id != end && id != kNoRecord; id = drawing_->next(id))
        leaving.push_back(id);
    leaving.push_back(end);
}

// The extension dictionary is its object's alone; what it owns goes with it.
void DatabaseState::gatherExtension(RecordId record, std::vector<RecordId>& leaving) const {
    const bool isDictionary = drawing_->typeNameOf(record) == "DICTIONARY";
    // Few entities have one, and half a drawing may be erased at once.
    if (!isDictionary && drawing_->bytes(record).find("{ACAD_XDICTIONARY") == std::string_view::npos) return;
    dxf::TagCursor cursor(drawing_->bytes(record));
    dxf::Tag tag;
    bool inGroup = false;
    while (cursor.next(tag)) {
        if (tag.code == 102) inGroup = dxf::trimmed(tag.value) == "{ACAD_XDICTIONARY";
        // Dictionaries may own softly; what a soft pointer of the group names is not its object's.
        const bool isOwned = (tag.code == 360 && (inGroup || isDictionary)) || (tag.code == 350 && isDictionary);
        if (!isOwned) continue;
        const RecordId owned = drawing_->findHandle(dxf::toHandle(tag.value));
        if (owned == kNoRecord || drawing_->record(owned).kind != RecordKind::Object) continue;
        // A damaged drawing may have them own each other in a ring.
        if (std::find(leaving.begin(), leaving.end(), owned) != leaving.end()) continue;
        leaving.push_back(owned);
        gatherExtension(owned, leaving);
    }
}

// --- shared helpers

AcGePoint3d readPoint(const ObjectTags& tags, int code) {
    return {tags.real(code, 0.0), tags.real(code + 10, 0.0), tags.real(code + 20, 0.0)};
}

ACHAR* newString(const std::wstring& text) {
    ACHAR* copy = nullptr;
    acutNewString(text.c_str(), copy);
    return copy;
}

}  // namespace qrs::host
