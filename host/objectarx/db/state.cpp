// Databases by number, and what each of them consists of.
#include "host/objectarx/db/state.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "acutads.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/pictures.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

// Those of now, by number; numbers are not given twice, so an id of a closed drawing stays without one.
std::vector<DatabaseState*>& allStates() {
    static std::vector<DatabaseState*> states;
    return states;
}

std::vector<DatabaseState*>::iterator placeOf(std::uint32_t number) {
    return std::lower_bound(allStates().begin(), allStates().end(), number,
                            [](const DatabaseState* state, std::uint32_t other) { return state->number < other; });
}

std::uint32_t nextNumber() {
    static std::uint32_t last = 0;
    return ++last;
}

}  // namespace

DatabaseState::DatabaseState(AcDbDatabase& owner, std::unique_ptr<dxf::Drawing> content)
    : database(owner), number(nextNumber()), objects_(*this) {
    allStates().push_back(this);
    replace(std::move(content));
}

DatabaseState::~DatabaseState() {
    allStates().erase(placeOf(number));
    objects_.abandon();
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    if (services->workingDatabase() == &database) services->setWorkingDatabase(nullptr);
}

DatabaseState* DatabaseState::byNumber(std::uint32_t number) {
    const auto place = placeOf(number);
    return place == allStates().end() || (*place)->number != number ? nullptr : *place;
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
    changedLayers_.clear();
    contents_ = std::make_unique<Contents>(*drawing_);
    kinds_ = std::make_unique<ObjectKinds>(*contents_);
    objects_.readAgain();
    eraser_ = std::make_unique<Eraser>(*contents_);
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
    TableKind table = TableKind::Block;
    if (const Block* block = blocks().byId(object)) {
        dxf::Tag layout;
        const bool hasLayout =
            drawing_->findTag(object, dxf::codes::blockrecord::kLayout, layout) && dxf::toHandle(layout.value) != 0;
        if (block->space != Space::None || hasLayout) return Acad::eCannotBeErasedByCaller;
    } else if (tables().kindOf(object, table)) {
        if (table == TableKind::Block) return Acad::eCannotBeErasedByCaller;
        if (table == TableKind::Layer &&
            (database.clayer().recordNumber() == object || tables().nameOf(object) == L"0"))
            return Acad::eCannotBeErasedByCaller;
    } else if (drawing_->record(object).kind != RecordKind::Entity) {
        return Acad::eCannotBeErasedByCaller;
    }
    eraser_->erase(object);
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseState::bringBack(std::uint32_t object) {
    TableKind table;
    const bool isNamed = tables().kindOf(object, table);
    if (isNamed && ids().find(table, tables().nameOf(object)) != kNoRecord) return Acad::eDuplicateRecordName;
    return eraser_->bringBack(object) ? Acad::eOk : Acad::ePermanentlyErased;
}

void DatabaseState::settle() {
    objects_.writeAll();
    if (!changedLayers_.empty()) renewPicturesOn(*this, std::exchange(changedLayers_, {}));
    if (eraser_->settle()) objects_.readAgain();
}

// --- shared helpers

AcGePoint3d readPoint(const ObjectTags& tags, int code) {
    return {tags.real(code, 0.0), tags.real(dxf::codes::yOf(code), 0.0), tags.real(dxf::codes::zOf(code), 0.0)};
}

ACHAR* newString(const std::wstring& text) {
    ACHAR* copy = nullptr;
    acutNewString(text.c_str(), copy);
    return copy;
}

}  // namespace qrs::host
