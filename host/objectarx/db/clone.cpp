// Copies of entities, and new blocks to put them into.
#include <algorithm>
#include <unordered_map>

#include "dbidmap.h"
#include "dbsymtb.h"
#include "host/drawing/entityformat.h"
#include "host/drawing/newrecords.h"
#include "host/drawing/sections.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

namespace {

constexpr int kAttributesBit = 2;

// Writes the copies of some entities of one drawing.
class Cloner {
  public:
    Cloner(DatabaseState& state, const Block& block) : drawing_(state.drawing()), block_(block) {
        blockHandle_ = state.ids().handleOf(block.id);
    }

    // Entities that are copied together point to each other's copies.
    void announce(RecordId id) {
        originals_.push_back(id);
        const std::uint64_t handle = drawing_.record(id).handle;
        if (handle != 0) handles_.try_emplace(handle, drawing_.newHandle());
        for (RecordId sub = drawing_.next(id); sub != kNoRecord; sub = drawing_.next(sub)) {
            const dxf::Record& one = drawing_.record(sub);
            if ((one.flags & dxf::kSubEntity) == 0 || one.owner != id) break;
            if (one.handle != 0) handles_.try_emplace(one.handle, drawing_.newHandle());
        }
    }

    // The copies of what was announced, in that order.
    std::vector<RecordId> write(RecordId before) {
        std::vector<RecordId> copies;
        for (const RecordId id : originals_) {
            copies.push_back(drawing_.insertRecord(before, RecordKind::Entity, tagsOf(id)));
            std::vector<RecordId> subs;
            for (RecordId sub = drawing_.next(id); sub != kNoRecord; sub = drawing_.next(sub)) {
                const dxf::Record& one = drawing_.record(sub);
                if ((one.flags & dxf::kSubEntity) == 0 || one.owner != id) break;
                subs.push_back(sub);
            }
            for (const RecordId sub : subs)
                drawing_.insertRecord(before, RecordKind::Entity, tagsOf(sub));
        }
        return copies;
    }

  private:
    std::string mapped(std::string_view value) const {
        const auto found = handles_.find(dxf::toHandle(value));
        return found == handles_.end() ? std::string(value) : dxf::handleText(found->second);
    }

    // Everything the original says but whose it is, where it lies, and what hangs on it.
    std::vector<dxf::NewTag> tagsOf(RecordId id) const {
        std::vector<dxf::NewTag> tags;
        bool hasLayer = false;
        dxf::RecordWalk walk(drawing_.tags(id));
        for (dxf::Tag tag; walk.next(tag);) {
            if (walk.group() == "ACAD_XDICTIONARY" || walk.group() == "ACAD_REACTORS") continue;
            if (walk.isOwn() && tag.code == codes::kPaperSpace) continue;
            if (walk.isOwn() && tag.code == codes::kLayout && !hasLayer) continue;
            if (walk.isOwn() && tag.code == codes::kLayer && !hasLayer) {
                if (block_.space == Space::Paper) tags.push_back({codes::kPaperSpace, "     1"});
                hasLayer = true;
            }
            std::string value(tag.value);
            if (tag.code == codes::kHandle || dxf::isToOther(dxf::referenceOf(tag.code))) {
                value = mapped(tag.value);
                const bool isOwner = tag.code == codes::kOwner && walk.isOwn() && walk.sections() == 0;
                if (isOwner && value == tag.value && blockHandle_ != 0) value = dxf::handleText(blockHandle_);
            }
            tags.push_back({tag.code, std::move(value)});
        }
        return tags;
    }

    dxf::Drawing& drawing_;
    const Block& block_;
    std::uint64_t blockHandle_ = 0;
    std::vector<RecordId> originals_;
    std::unordered_map<std::uint64_t, std::uint64_t> handles_;
};

}  // namespace

Acad::ErrorStatus DatabaseState::clone(const AcDbObjectIdArray& ids, AcDbObjectId owner, AcDbIdMapping& idMap) {
    for (const AcDbObjectId& id : ids) {
        if (id.isNull()) return Acad::eNullObjectId;
        if (id.databaseNumber() != number) return Acad::eWrongDatabase;
        if (!id.isValid() || id.isErased()) return Acad::eWrongObjectType;
        const RecordId record = this->ids().recordOf(id.recordNumber());
        if (record == kNoRecord || drawing_->record(record).kind != RecordKind::Entity ||
            (drawing_->record(record).flags & dxf::kSubEntity) != 0)
            return Acad::eWrongObjectType;
    }
    if (owner.isNull()) return Acad::eNullObjectId;
    if (owner.databaseNumber() != number) return Acad::eWrongDatabase;
    const Block* block = blocks().byId(owner.recordNumber());
    if (!block) return Acad::eWrongObjectType;
    if (block->space == Space::None && block->head == kNoRecord) return Acad::eNotApplicable;
    objects_.writeAll();

    Cloner cloner(*this, *block);
    for (const AcDbObjectId& id : ids)
        cloner.announce(id.recordNumber());
    const RecordId head = block->space == Space::None ? block->head : ensureSection(*drawing_, "ENTITIES");
    const std::vector<RecordId> copies = cloner.write(drawing_->endOf(head));
    bool hasAttributes = false;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        idMap.assign(AcDbIdPair(ids[static_cast<int>(i)], idOf(copies[i]), true));
        contents_->came(copies[i]);
        hasAttributes = hasAttributes || drawing_->typeNameOf(copies[i]) == "ATTDEF";
    }
    if (hasAttributes && block->space == Space::None) {
        ObjectTags tags(drawing_.get(), block->head, entityFormatOf("BLOCK"), ObjectTags::Part::Whole);
        const std::int64_t flags = tags.integer(codes::kFlags, 0);
        if ((flags & kAttributesBit) == 0) tags.setInteger(codes::kFlags, flags | kAttributesBit);
    }
    return Acad::eOk;
}

}  // namespace qrs::host

using qrs::host::DatabaseState;
namespace codes = qrs::dxf::codes;

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& ids, AcDbObjectId owner,
                                                 AcDbIdMapping& idMap) {
    qrs::platform::recordCall("AcDbDatabase::deepCloneObjects", ids.length());
    return state_->clone(ids, owner, idMap);
}

AcDbBlockTableRecord::AcDbBlockTableRecord() {
    setOwnTags([] {
        return qrs::host::DetachedTags{
            &qrs::host::entityFormatOf("BLOCK"),
            {{codes::kPoint, "0.0"}, {codes::yOf(codes::kPoint), "0.0"}, {codes::zOf(codes::kPoint), "0.0"}}};
    });
}

Acad::ErrorStatus AcDbBlockTable::add(AcDbObjectId& recordId, AcDbBlockTableRecord* newRecord) {
    recordId.setNull();
    const ACHAR* name = nullptr;
    const qrs::host::DetachedTags* own = nullptr;
    const Acad::ErrorStatus status = qrs::host::examineNewRecord(*this, newRecord, name, own);
    if (status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    if (state->blocks().find(name)) return Acad::eDuplicateRecordName;
    qrs::platform::recordCall("AcDbSymbolTable::add", "BLOCK_RECORD", name);
    state->objects().adopt(*newRecord, qrs::host::NewRecords(state->contents()).addBlock(*own, name));
    recordId = newRecord->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTable::add(AcDbBlockTableRecord* newRecord) {
    AcDbObjectId id;
    return add(id, newRecord);
}
