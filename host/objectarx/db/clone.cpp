// Copies of entities, and new blocks to put them into.
#include <algorithm>
#include <unordered_map>

#include "dbidmap.h"
#include "dbsymtb.h"
#include "host/drawing/entityformat.h"
#include "host/drawing/sections.h"
#include "host/dxf/classcodes.h"
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

bool isPointer(int code) {
    return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481 || code == 1005;
}

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
        dxf::TagCursor cursor = drawing_.tags(id);
        dxf::Tag tag;
        bool inGroup = false;
        bool isHead = true;  // before the first subclass mark
        bool isFirstLayer = true;
        while (cursor.next(tag)) {
            const std::string_view value = dxf::trimmed(tag.value);
            if (tag.code == codes::kGroup && !value.empty() && value.front() == '{')
                inGroup = value == "{ACAD_XDICTIONARY" || value == "{ACAD_REACTORS";
            if (inGroup) {
                if (tag.code == codes::kGroup && value == "}") inGroup = false;
                continue;
            }
            if (tag.code == codes::kPaperSpace || tag.code == codes::kLayout) {
                if (tag.code == codes::kPaperSpace || isFirstLayer) continue;
            }
            if (tag.code == codes::kLayer && isFirstLayer) {
                if (block_.space == Space::Paper) tags.push_back({codes::kPaperSpace, "     1"});
                isFirstLayer = false;
            }
            if (tag.code == codes::kHandle || isPointer(tag.code)) {
                std::string handle = mapped(tag.value);
                const bool isOwner = tag.code == codes::kOwner && isHead && handle == tag.value && blockHandle_ != 0;
                if (isOwner) handle = dxf::handleText(blockHandle_);
                tags.push_back({tag.code, handle});
            } else {
                tags.push_back({tag.code, std::string(tag.value)});
            }
            if (tag.code == codes::kSubclass) isHead = false;
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
        idMap.assign(ids[static_cast<int>(i)], idOf(copies[i]));
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

// --- new blocks

namespace {

std::vector<dxf::NewTag> blockTags(DatabaseState& state, const char* type, std::uint64_t owner, const char* mark,
                                   bool hasHandle) {
    dxf::Drawing& drawing = state.drawing();
    std::vector<dxf::NewTag> tags{{codes::kType, type}};
    if (hasHandle) tags.push_back({codes::kHandle, dxf::handleText(drawing.newHandle())});
    if (owner != 0 && drawing.version() >= dxf::kFirstWithOwners)
        tags.push_back({codes::kOwner, dxf::handleText(owner)});
    const bool hasMarks = drawing.version() >= dxf::kFirstWithSubclasses;
    if (hasMarks) tags.push_back({codes::kSubclass, "AcDbEntity"});
    tags.push_back({codes::kLayer, "0"});
    if (hasMarks) tags.push_back({codes::kSubclass, mark});
    return tags;
}

// "*U" becomes "*U7", with a number nobody has.
std::wstring freeName(const BlockIndex& blocks, const std::wstring& name) {
    if (platform::compareNoCase(name, L"*U") != 0) return name;
    for (std::size_t i = 1;; ++i)
        if (std::wstring candidate = L"*U" + std::to_wstring(i); !blocks.find(candidate)) return candidate;
}

}  // namespace

// The block's id: its record's where drawings have a table of them, else its definition's.
std::uint32_t DatabaseState::addBlock(const DetachedTags& own, std::wstring_view wantedName) {
    const std::wstring name = freeName(blocks(), std::wstring(wantedName));
    const bool hasTable = drawing_->version() >= dxf::Version::R13;
    bool hasHandle = drawing_->hasHandles();
    // Old drawings may have handles on other records alone.
    for (const Block& block : blocks().blocks())
        if (!hasTable && block.head != kNoRecord) hasHandle = drawing_->record(block.head).handle != 0;
    RecordId record = kNoRecord;
    if (hasTable) {
        record = tables().add(TableKind::Block,
                              {&tableFormat(TableKind::Block).record, {{codes::kName, platform::toUtf8(name)}}});
    }
    const std::uint64_t owner = record == kNoRecord ? 0 : drawing_->record(record).handle;
    const RecordId end = drawing_->endOf(ensureSection(*drawing_, "BLOCKS"));
    const std::string spelled = writeText(*drawing_, name);
    std::vector<dxf::NewTag> tags = blockTags(*this, "BLOCK", owner, "AcDbBlockBegin", hasHandle);
    tags.push_back({codes::kName, spelled});
    tags.push_back({codes::kFlags, name.front() == L'*' ? "1" : "0"});
    for (const int code : {codes::kPoint, codes::yOf(codes::kPoint), codes::zOf(codes::kPoint)}) {
        const auto found =
            std::find_if(own.tags.begin(), own.tags.end(), [&](const auto& tag) { return tag.code == code; });
        tags.push_back({code, found == own.tags.end() ? "0.0" : found->value});
    }
    tags.push_back({codes::block::kSecondName, spelled});
    if (hasTable) tags.push_back({codes::block::kPath, ""});
    const RecordId head = drawing_->insertRecord(end, RecordKind::Block, tags);
    drawing_->insertRecord(end, RecordKind::EndBlock, blockTags(*this, "ENDBLK", owner, "AcDbBlockEnd", hasHandle));
    contents_->came(head);
    return record == kNoRecord ? head : record;
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
    state->objects().adopt(*newRecord, state->addBlock(*own, name));
    recordId = newRecord->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTable::add(AcDbBlockTableRecord* newRecord) {
    AcDbObjectId id;
    return add(id, newRecord);
}
