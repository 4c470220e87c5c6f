// Everything a database keeps beside its drawing file.
#include "host/objectarx/db/state.h"

#include <algorithm>
#include <utility>

#include "acutads.h"
#include "dbapserv.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "host/drawing/entityformat.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/kinds.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

constexpr std::uint16_t kMaxReaders = 256;
constexpr std::uint32_t kNotLookedUp = kNoRecord - 1;

// By number; numbers are not given twice, so an id of a closed drawing stays without one.
std::vector<DatabaseState*>& allStates() {
    static std::vector<DatabaseState*> states;
    return states;
}

bool isObjectKind(RecordKind kind) {
    return kind == RecordKind::TableRecord || kind == RecordKind::Block || kind == RecordKind::Entity ||
           kind == RecordKind::EndBlock || kind == RecordKind::Object;
}

}  // namespace

bool DatabaseState::opening_ = false;

DatabaseState::DatabaseState(AcDbDatabase& owner, std::unique_ptr<dxf::Drawing> content)
    : database(owner), number(static_cast<std::uint32_t>(allStates().size() + 1)) {
    allStates().push_back(this);
    replace(std::move(content));
}

DatabaseState::~DatabaseState() {
    allStates()[number - 1] = nullptr;
    for (auto& [record, object] : open_) {
        object->database_ = nullptr;
        object->orphan_ = true;
    }
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
    tables_ = std::make_unique<SymbolTables>(*drawing_);
    blocks_ = std::make_unique<BlockIndex>(*drawing_);
    layerAge_ = 0;
    erasedWith_.clear();
    erasedAlone_.clear();
    for (auto& [record, object] : open_)
        object->fieldsRead_ = false;
    layerByName_.clear();
    entityKinds_.clear();
    classByType_.clear();
}

// --- ids

AcDbObjectId DatabaseState::idOf(std::uint32_t record) const {
    if (record == kNoRecord) return AcDbObjectId();
    if (record < drawing_->recordCount() && drawing_->record(record).kind == RecordKind::Table) {
        const TableFormat* format = nullptr;
        dxf::Tag tag;
        if (drawing_->findTag(record, 2, tag)) format = findTableFormat(dxf::trimmed(tag.value));
        return format ? AcDbObjectId(number, tableId(format->kind)) : AcDbObjectId();
    }
    return AcDbObjectId(number, record);
}

RecordId DatabaseState::recordOf(std::uint32_t object) const {
    if (isTable(object)) return tables_->head(static_cast<TableKind>(object - kTableIds));
    return object < drawing_->recordCount() ? object : kNoRecord;
}

bool DatabaseState::isObject(std::uint32_t object) const {
    if (isTable(object)) return true;
    if (object == kUnnamedModelSpace || object == kUnnamedPaperSpace) return blocks_->byId(object) != nullptr;
    return object < drawing_->recordCount() && isObjectKind(drawing_->record(object).kind);
}

bool DatabaseState::isErased(std::uint32_t object) const {
    return object < drawing_->recordCount() && drawing_->isErased(object);
}

std::uint64_t DatabaseState::handleOf(std::uint32_t object) const {
    const RecordId record = recordOf(object);
    return record == kNoRecord ? 0 : drawing_->record(record).handle;
}

std::uint32_t DatabaseState::ownerOf(std::uint32_t object) {
    if (isTable(object)) return kNoRecord;
    if (blocks_->byId(object)) return tableId(TableKind::Block);
    if (object >= drawing_->recordCount()) return kNoRecord;
    const dxf::Record& entry = drawing_->record(object);
    const auto idOfBlock = [](const Block* block) { return block ? block->id : kNoRecord; };
    if (entry.kind == RecordKind::Block) return idOfBlock(blocks_->byHead(object));
    if (entry.kind == RecordKind::EndBlock) return idOfBlock(blocks_->byHead(entry.owner));
    if (entry.kind == RecordKind::TableRecord) {
        TableKind kind;
        return tables_->kindOf(object, kind) ? tableId(kind) : kNoRecord;
    }
    if (entry.kind == RecordKind::Entity) {
        if ((entry.flags & dxf::kSubEntity) != 0) return entry.owner;
        if (entry.owner != kNoRecord && drawing_->record(entry.owner).kind == RecordKind::Block)
            return idOfBlock(blocks_->byHead(entry.owner));
        return idOfBlock(blocks_->bySpace((entry.flags & dxf::kPaperSpace) != 0 ? Space::Paper : Space::Model));
    }
    dxf::Tag tag;
    return drawing_->findTag(object, 330, tag) ? drawing_->findHandle(dxf::toHandle(tag.value)) : kNoRecord;
}

// --- layers and names

RecordId DatabaseState::layerOf(RecordId entity) {
    return layerNamed(drawing_->record(entity).layer);
}

RecordId DatabaseState::layerNamed(dxf::NameId name) {
    if (layerAge_ != tables_->layerAge()) {
        layerByName_.clear();
        layerAge_ = tables_->layerAge();
    }
    if (name >= layerByName_.size()) layerByName_.resize(drawing_->nameCount(), kNotLookedUp);
    if (name >= layerByName_.size()) return kNoRecord;
    RecordId& layer = layerByName_[name];
    if (layer == kNotLookedUp) layer = tables_->find(TableKind::Layer, readText(*drawing_, drawing_->name(name)));
    return layer;
}

std::uint32_t DatabaseState::findNamed(TableKind kind, std::wstring_view name) {
    if (kind != TableKind::Block) return tables_->find(kind, name);
    const Block* block = blocks_->find(name);
    return block ? block->id : kNoRecord;
}

// --- objects

const ObjectKind& DatabaseState::kindOf(std::uint32_t object) {
    if (isTable(object)) return tableKind(static_cast<TableKind>(object - kTableIds));
    const bool isEntity = object < drawing_->recordCount() && drawing_->record(object).kind == RecordKind::Entity;
    if (!isEntity && blocks_->byId(object)) return blockDefinitionKind();
    const dxf::Record& entry = drawing_->record(object);
    if (!isEntity) return objectKind(entry.kind, drawing_->typeName(entry.type));
    if (kindAge_ != kindAge()) entityKinds_.clear();
    kindAge_ = kindAge();
    if (entry.type >= entityKinds_.size()) entityKinds_.resize(entry.type + std::size_t{1}, nullptr);
    const ObjectKind*& kind = entityKinds_[entry.type];
    if (!kind) kind = &objectKind(entry.kind, drawing_->typeName(entry.type));
    return *kind;
}

AcRxClass* DatabaseState::classOf(std::uint32_t object) {
    return isObject(object) ? kindOf(object).rxClass : nullptr;
}

const RecordFormat& DatabaseState::formatOf(std::uint32_t object) const {
    TableKind kind;
    const RecordId record = recordOf(object);
    if (record == kNoRecord) return entityFormat();
    if (tables_->kindOf(record, kind)) return tableFormat(kind).record;
    return entityFormatOf(drawing_->typeNameOf(record));
}

bool DatabaseState::isRecordOf(AcDbObjectId id, TableKind wanted) {
    const DatabaseState* state = byNumber(id.databaseNumber());
    TableKind kind = wanted;
    return state && id.isValid() && !isTable(id.recordNumber()) &&
           state->recordOf(id.recordNumber()) != dxf::kNoRecord && state->tables_->kindOf(id.recordNumber(), kind) &&
           kind == wanted;
}

Acad::ErrorStatus DatabaseState::addOpening(AcDbObject& object, AcDb::OpenMode mode) {
    if (object.writer_) return Acad::eWasOpenForWrite;
    if (mode == AcDb::kForWrite) {
        if (object.readers_ > 0) return Acad::eWasOpenForRead;
        object.writer_ = true;
        return Acad::eOk;
    }
    if (object.readers_ >= kMaxReaders) return Acad::eAtMaxReaders;
    ++object.readers_;
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseState::open(AcDbObject*& object, std::uint32_t record, AcDb::OpenMode mode, bool openErased) {
    object = nullptr;
    if (!isObject(record)) return Acad::eInvalidIndex;
    if (!openErased && isErased(record)) return Acad::eWasErased;
    const auto [place, isNew] = open_.try_emplace(record, nullptr);
    if (!isNew) {
        const Acad::ErrorStatus status = addOpening(*place->second, mode);
        if (status == Acad::eOk) object = place->second;
        return status;
    }
    opening_ = true;
    std::unique_ptr<AcDbObject> made(static_cast<AcDbObject*>(kindOf(record).make()));
    opening_ = false;
    made->own_.reset();
    made->writer_ = false;
    made->database_ = &database;
    made->record_ = record;
    addOpening(*made, mode);
    object = place->second = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseState::close(AcDbObject& object) {
    if (object.orphan_) {
        delete &object;
        return Acad::eNoDatabase;
    }
    if (!object.database_) return Acad::eNotInDatabase;
    writeFields(object);
    if (object.writer_)
        object.writer_ = false;
    else
        --object.readers_;
    if (object.readers_ == 0) delete &object;
    return Acad::eOk;
}

void DatabaseState::adopt(AcDbObject& object, std::uint32_t record) {
    object.own_.reset();
    object.database_ = &database;
    object.record_ = record;
    object.writer_ = true;
    object.fieldsRead_ = true;
    object.modified_ = false;
    open_[record] = &object;
}

// What an object lacks, or has wrong, it answers with what a new one has.
void DatabaseState::readFields(AcDbObject& object) {
    object.fieldsRead_ = true;
    AcDbDxfFiler filer(std::make_unique<FieldFiler>(*this, recordOf(object.record_)));
    object.dxfInFields(&filer);
}

void DatabaseState::writeFields(AcDbObject& object) {
    DatabaseState* state = of(object.database_);
    if (!state || !object.modified_) return;
    object.modified_ = false;
    AcDbDxfFiler filer(std::make_unique<FieldFiler>(*state, state->recordOf(object.record_)));
    object.dxfOutFields(&filer);
    filer.state_->merge();
}

void DatabaseState::writeOpenObjects() {
    for (const auto& [record, object] : open_)
        writeFields(*object);
}

void DatabaseState::forget(AcDbObject& object) {
    if (DatabaseState* state = of(object.database_)) state->open_.erase(object.record_);
}

// --- erasing

Acad::ErrorStatus DatabaseState::erase(std::uint32_t object, bool erasing) {
    if (isErased(object) == erasing) return erasing ? Acad::eWasErased : Acad::eOk;
    if (!erasing) return bringBack(object);
    if (isTable(object) || object >= drawing_->recordCount()) return Acad::eCannotBeErasedByCaller;
    std::vector<RecordId> leaving;
    TableKind table = TableKind::Block;
    if (const Block* block = blocks_->byId(object)) {
        dxf::Tag layout;
        const bool hasLayout = drawing_->findTag(object, 340, layout) && dxf::toHandle(layout.value) != 0;
        if (block->space != Space::None || hasLayout) return Acad::eCannotBeErasedByCaller;
        gatherBlock(*block, leaving);
    } else if (tables_->kindOf(object, table)) {
        if (table == TableKind::Block) return Acad::eCannotBeErasedByCaller;
        if (table == TableKind::Layer &&
            (database.clayer().recordNumber() == object || tables_->nameOf(object) == L"0"))
            return Acad::eCannotBeErasedByCaller;
    } else if (drawing_->record(object).kind != RecordKind::Entity) {
        return Acad::eCannotBeErasedByCaller;
    }
    leaving.push_back(object);
    gatherExtension(object, leaving);
    leave(object, std::move(leaving));
    if (tables_->kindOf(object, table)) tables_->countChanged(table, object, -1);
    return Acad::eOk;
}

void DatabaseState::leave(std::uint32_t object, std::vector<RecordId> leaving) {
    // Looking the blocks over again for every entity that goes would take longer than all the rest.
    bool isContent = true;
    for (const RecordId id : leaving) {
        if (!drawing_->isErased(id)) countInstance(id, -1);
        const RecordKind kind = drawing_->record(id).kind;
        isContent = isContent && (kind == RecordKind::Entity || kind == RecordKind::Object);
        drawing_->eraseRecord(id);
    }
    if (!isContent) blocks_->changed();
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
    const bool isNamed = tables_->kindOf(object, table);
    if (isNamed && findNamed(table, tables_->nameOf(object)) != kNoRecord) return Acad::eDuplicateRecordName;
    const bool wasAlone = object < erasedAlone_.size() && erasedAlone_[object];
    const auto found = erasedWith_.find(object);
    if (!wasAlone && found == erasedWith_.end()) return Acad::ePermanentlyErased;
    for (const RecordId id : wasAlone ? std::vector<RecordId>{object} : found->second) {
        drawing_->eraseRecord(id, false);
        countInstance(id, 1);
    }
    if (wasAlone)
        erasedAlone_[object] = false;
    else
        erasedWith_.erase(found);
    blocks_->changed();
    if (isNamed) tables_->countChanged(table, object, 1);
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

RecordId rootDictionary(const dxf::Drawing& drawing) {
    const RecordId section = drawing.findSection("OBJECTS");
    if (section == kNoRecord) return kNoRecord;
    const RecordId first = drawing.next(section);
    const bool isDictionary = first != kNoRecord && drawing.record(first).kind == RecordKind::Object &&
                              drawing.typeNameOf(first) == "DICTIONARY";
    return isDictionary ? first : kNoRecord;
}

AcGePoint3d readPoint(const ObjectTags& tags, int code) {
    return {tags.real(code, 0.0), tags.real(code + 10, 0.0), tags.real(code + 20, 0.0)};
}

ACHAR* newString(const std::wstring& text) {
    ACHAR* copy = nullptr;
    acutNewString(text.c_str(), copy);
    return copy;
}

}  // namespace qrs::host
