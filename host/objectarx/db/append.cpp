// New entities and objects: their records, and what the drawing says of their class.
#include <algorithm>
#include <iterator>
#include <utility>

#include "dbdict.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "host/drawing/entityformat.h"
#include "host/drawing/sections.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace {

constexpr int kLayerCode = 8;
constexpr int kLinetypeCode = 6;
constexpr int kClassCountCode = 91;
constexpr RecordId kNotLookedUp = kNoRecord - 1;
// Where drawings begin to keep the objects of classes that they know by a record of the class alone.
constexpr const char* kFirstWithClasses = "AC1015";
constexpr const char* kFirstWithClassCount = "AC1018";

// Integers as wide as the drawing's other classes write them.
std::vector<dxf::NewTag> classTags(const dxf::Drawing& drawing, const AcRxClass& rxClass, RecordId sibling) {
    const auto number = [&](int code, int value) {
        dxf::Tag sample;
        const bool hasSample = sibling != kNoRecord && drawing.findTag(sibling, code, sample);
        return dxf::NewTag{code, paddedLike(hasSample ? sample.value : std::string_view(), std::to_string(value))};
    };
    std::vector<dxf::NewTag> tags{{0, "CLASS"},
                                  {1, writeText(drawing, rxClass.dxfName())},
                                  {2, writeText(drawing, rxClass.name())},
                                  {3, writeText(drawing, rxClass.appName())},
                                  number(90, rxClass.proxyFlags())};
    if (drawing.version() >= kFirstWithClassCount) tags.push_back(number(kClassCountCode, 1));
    tags.push_back(number(280, 0));  // was no proxy
    tags.push_back(number(281, rxClass.isDerivedFrom(AcDbEntity::desc()) ? 1 : 0));
    return tags;
}

// Other programs keep the objects of a class they lack as long as the drawing tells of it.
void tellOfClass(dxf::Drawing& drawing, const AcRxClass& rxClass) {
    const RecordId section = ensureSection(drawing, "CLASSES");
    const RecordId end = drawing.endOf(section);
    RecordId sibling = kNoRecord;
    for (RecordId id = drawing.next(section); id != end && id != kNoRecord; id = drawing.next(id)) {
        dxf::Tag tag;
        if (drawing.record(id).kind != RecordKind::Class || !drawing.findTag(id, 1, tag)) continue;
        sibling = id;
        if (platform::compareNoCase(readText(drawing, dxf::trimmed(tag.value)), rxClass.dxfName()) != 0) continue;
        if (drawing.findTag(id, kClassCountCode, tag))
            drawing.setValue(id, tag, paddedLike(tag.value, std::to_string(dxf::toInteger(tag.value) + 1)));
        return;
    }
    drawing.insertRecord(end, RecordKind::Class, classTags(drawing, rxClass, sibling));
}

}  // namespace

// A new entity's own tags as this drawing writes them: names as its tables spell them. Status: whether it has them all.
Acad::ErrorStatus DatabaseState::spellTags(const DetachedTags& own, std::string_view dxfName,
                                           std::vector<dxf::NewTag>& tags) {
    for (const auto& [code, value] : own.tags) {
        if (drawing_->version() < own.format->sinceOf(code)) continue;
        std::wstring text = platform::fromUtf8(value);
        if (const NamingTag* naming = namingTag(dxfName, code)) {
            const std::uint32_t named = findNamed(naming->table, text);
            const bool isLogical = code == kLinetypeCode && (platform::compareNoCase(text, L"ByLayer") == 0 ||
                                                             platform::compareNoCase(text, L"ByBlock") == 0);
            if (named == kNoRecord && !isLogical) {
                // Where nothing else is said, a text has the standard style, defined or not.
                if (naming->table == TableKind::TextStyle && platform::compareNoCase(text, L"Standard") == 0) continue;
                return code == kLayerCode ? Acad::eInvalidLayer : Acad::eKeyNotFound;
            }
            if (named != kNoRecord && naming->table != TableKind::Block) text = tables_->nameOf(named);
        }
        tags.push_back({code, writeText(*drawing_, text)});
    }
    return Acad::eOk;
}

// The tags all entities share, as far as the drawing's version knows them.
void DatabaseState::addCommonTags(const std::vector<dxf::NewTag>& own, const Block& block,
                                  std::vector<dxf::NewTag>& tags) const {
    if (drawing_->version() >= "AC1012") tags.push_back({100, "AcDbEntity"});
    if (block.space == Space::Paper) tags.push_back({67, "1"});
    const auto isCommon = [](const dxf::NewTag& tag) { return entityFormat().rankOf(tag.code) >= 0; };
    std::copy_if(own.begin(), own.end(), std::back_inserter(tags), isCommon);
    const bool hasLayer = std::any_of(own.begin(), own.end(), [](const auto& tag) { return tag.code == kLayerCode; });
    if (!hasLayer) tags.push_back({kLayerCode, "0"});
}

// The tags of the entity's kind, with the marks of its sections, in the order of their format.
void DatabaseState::addOwnTags(const std::vector<dxf::NewTag>& own, const RecordFormat& format,
                               std::vector<dxf::NewTag>& tags) const {
    for (std::size_t i = entityFormat().count + 1; i < format.count; ++i) {
        const CodeFormat& row = format.codes[i];
        if (row.mark && drawing_->version() >= row.since) tags.push_back({row.code, row.mark});
        for (const dxf::NewTag& tag : own)
            if (!row.mark && tag.code == row.code) tags.push_back(tag);
    }
}

// What an application's class hands out, for a new object.
Acad::ErrorStatus DatabaseState::fieldTags(const AcDbObject& object, std::vector<dxf::NewTag>& tags) {
    const AcRxClass* rxClass = object.isA();
    const RecordKind kind = rxClass->isDerivedFrom(AcDbEntity::desc()) ? RecordKind::Entity : RecordKind::Object;
    if (!rxClass->pseudoConstructor() || !rxClass->dxfName()) return Acad::eNotApplicable;
    if (objectKind(kind, platform::toUtf8(rxClass->dxfName())).rxClass != rxClass) return Acad::eNotApplicable;
    if (rxClass->appName() && drawing_->version() < kFirstWithClasses) return Acad::eNotApplicable;
    AcDbDxfFiler filer(std::make_unique<FieldFiler>(*this, kNoRecord));
    object.dxfOutFields(&filer);
    if (filer.filerStatus() == Acad::eOk) tags = filer.state_->tags();
    return filer.filerStatus();
}

Acad::ErrorStatus DatabaseState::append(AcDbEntity& entity, std::uint32_t blockId) {
    const Block* block = blocks_->byId(blockId);
    const AcRxClass* rxClass = entity.isA();
    if (!block || (block->space == Space::None && block->head == kNoRecord)) return Acad::eNotApplicable;
    if (!rxClass->dxfName()) return Acad::eNotApplicable;
    const std::string dxfName = platform::toUtf8(rxClass->dxfName());
    const RecordFormat& format = entityFormatOf(dxfName);
    const bool isBuiltIn = !rxClass->pseudoConstructor() && &format != &entityFormat() && ownTags(entity);

    std::vector<dxf::NewTag> fields;
    std::vector<dxf::NewTag> own;
    Acad::ErrorStatus status = isBuiltIn ? Acad::eOk : fieldTags(entity, fields);
    if (status == Acad::eOk && ownTags(entity)) status = spellTags(*ownTags(entity), dxfName, own);
    if (status != Acad::eOk) return status;

    std::vector<dxf::NewTag> tags{{0, dxfName}};
    if (drawing_->hasHandles()) tags.push_back({5, dxf::handleText(drawing_->newHandle())});
    const std::uint64_t owner = handleOf(block->id);
    if (owner != 0 && drawing_->version() >= "AC1015") tags.push_back({330, dxf::handleText(owner)});
    addCommonTags(own, *block, tags);
    if (isBuiltIn) addOwnTags(own, format, tags);
    tags.insert(tags.end(), fields.begin(), fields.end());

    const RecordId head = block->space == Space::None ? block->head : ensureSection(*drawing_, "ENTITIES");
    const RecordId record = drawing_->insertRecord(drawing_->endOf(head), RecordKind::Entity, tags);
    if (rxClass->appName()) tellOf(*rxClass);
    adopt(entity, record);
    return Acad::eOk;
}

// --- objects that are no entities

Acad::ErrorStatus DatabaseState::appendObject(AcDbObject& object, std::uint64_t owner) {
    const AcRxClass* rxClass = object.isA();
    if (drawing_->version() < "AC1012" || !rxClass->dxfName()) return Acad::eNotApplicable;
    std::vector<dxf::NewTag> content;
    const bool isRecord = rxClass == AcDbXrecord::desc();
    const bool isDictionary = rxClass == AcDbDictionary::desc();
    if (isRecord || isDictionary) {
        content.push_back({100, isRecord ? "AcDbXrecord" : "AcDbDictionary"});
        // What becomes of a doubled name when drawings are put together: the first stays.
        if (drawing_->version() >= "AC1015") content.push_back({isRecord ? 280 : 281, "1"});
        if (const DetachedTags* own = ownTags(object))
            for (const auto& [code, value] : own->tags)
                content.push_back({code, writeText(*drawing_, platform::fromUtf8(value))});
    } else if (const Acad::ErrorStatus status = fieldTags(object, content); status != Acad::eOk) {
        return status;
    }
    std::vector<dxf::NewTag> tags{{0, platform::toUtf8(rxClass->dxfName())},
                                  {5, dxf::handleText(drawing_->newHandle())},
                                  {330, dxf::handleText(owner)}};
    tags.insert(tags.end(), content.begin(), content.end());
    const RecordId section = ensureSection(*drawing_, "OBJECTS");
    const RecordId record = drawing_->insertRecord(drawing_->endOf(section), RecordKind::Object, tags);
    if (rxClass->appName()) tellOf(*rxClass);
    adopt(object, record);
    return Acad::eOk;
}

RecordId DatabaseState::ensureRootDictionary() {
    RecordId root = rootDictionary(*drawing_);
    if (root != kNoRecord || drawing_->version() < "AC1012") return root;
    // It is known by being the first object.
    const RecordId section = ensureSection(*drawing_, "OBJECTS");
    std::vector<dxf::NewTag> tags{
        {0, "DICTIONARY"}, {5, dxf::handleText(drawing_->newHandle())}, {330, "0"}, {100, "AcDbDictionary"}};
    if (drawing_->version() >= "AC1015") tags.push_back({281, "1"});
    return drawing_->insertRecord(drawing_->next(section), RecordKind::Object, tags);
}

// --- how many objects of a class there are

void DatabaseState::tellOf(const AcRxClass& rxClass) {
    tellOfClass(*drawing_, rxClass);
    classByType_.clear();
}

// The record that tells of the class of a type's objects; kNoRecord when none does.
RecordId DatabaseState::classRecordOf(RecordId object) {
    const std::uint16_t type = drawing_->record(object).type;
    if (type >= classByType_.size()) classByType_.resize(type + std::size_t{1}, kNotLookedUp);
    RecordId& found = classByType_[type];
    if (found != kNotLookedUp) return found;
    found = kNoRecord;
    const RecordId section = drawing_->findSection("CLASSES");
    if (section == kNoRecord) return found;
    const RecordId end = drawing_->endOf(section);
    const std::wstring name = platform::fromUtf8(drawing_->typeNameOf(object));
    for (RecordId id = drawing_->next(section); id != end && id != kNoRecord; id = drawing_->next(id)) {
        dxf::Tag tag;
        if (drawing_->record(id).kind != RecordKind::Class || !drawing_->findTag(id, 1, tag)) continue;
        if (platform::compareNoCase(readText(*drawing_, dxf::trimmed(tag.value)), name) == 0) return found = id;
    }
    return found;
}

void DatabaseState::countInstance(RecordId object, int by) {
    const RecordKind kind = drawing_->record(object).kind;
    if (kind != RecordKind::Entity && kind != RecordKind::Object) return;
    const RecordId told = classRecordOf(object);
    dxf::Tag tag;
    if (told == kNoRecord || !drawing_->findTag(told, kClassCountCode, tag)) return;
    const std::int64_t count = dxf::toInteger(tag.value) + by;
    if (count >= 0) drawing_->setValue(told, tag, paddedLike(tag.value, std::to_string(count)));
}

}  // namespace qrs::host

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& outputId, AcDbEntity* entity) {
    using qrs::host::DatabaseState;
    outputId.setNull();
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!entity) return Acad::eNullObjectPointer;
    if (entity->database()) return Acad::eAlreadyInDb;
    const Acad::ErrorStatus status = state->append(*entity, record());
    if (status != Acad::eOk) return status;
    qrs::platform::recordCall("AcDbBlockTableRecord::appendAcDbEntity", entity->isA()->dxfName());
    outputId = entity->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}
