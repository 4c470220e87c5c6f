// New entities: their records, and what the drawing says of their class.
#include <utility>

#include "dbfiler.h"
#include "dbsymtb.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/sections.h"
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
    tags.push_back(number(281, 1));  // an entity
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

// The tags all entities share, as far as the drawing's version knows them.
Acad::ErrorStatus DatabaseState::commonTags(const AcDbEntity& entity, const Block& block,
                                            std::vector<dxf::NewTag>& tags) const {
    if (drawing_->version() >= "AC1012") tags.push_back({100, "AcDbEntity"});
    if (block.space == Space::Paper) tags.push_back({67, "1"});
    const DetachedTags* own = ownTags(entity);
    bool hasLayer = false;
    for (std::size_t i = 0; own && i < own->tags.size(); ++i) {
        const auto& [code, value] = own->tags[i];
        if (drawing_->version() < entityFormat().sinceOf(code)) continue;
        std::wstring text = platform::fromUtf8(value);
        hasLayer = hasLayer || code == kLayerCode;
        if (code == kLayerCode || code == kLinetypeCode) {
            const TableKind kind = code == kLayerCode ? TableKind::Layer : TableKind::Linetype;
            const RecordId named = tables_->find(kind, text);
            const bool isLogical = code == kLinetypeCode && (platform::compareNoCase(text, L"ByLayer") == 0 ||
                                                             platform::compareNoCase(text, L"ByBlock") == 0);
            if (named == kNoRecord && !isLogical) return code == kLayerCode ? Acad::eInvalidLayer : Acad::eKeyNotFound;
            if (named != kNoRecord) text = tables_->nameOf(named);
        }
        tags.push_back({code, writeText(*drawing_, text)});
    }
    if (!hasLayer) tags.push_back({kLayerCode, "0"});
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseState::append(AcDbEntity& entity, std::uint32_t blockId) {
    const Block* block = blocks_->byId(blockId);
    const AcRxClass* rxClass = entity.isA();
    if (!block || (block->space == Space::None && block->head == kNoRecord)) return Acad::eNotApplicable;
    if (!rxClass->pseudoConstructor() || !rxClass->dxfName()) return Acad::eNotApplicable;
    const std::string dxfName = platform::toUtf8(rxClass->dxfName());
    if (objectKind(RecordKind::Entity, dxfName).rxClass != rxClass) return Acad::eNotApplicable;
    if (rxClass->appName() && drawing_->version() < kFirstWithClasses) return Acad::eNotApplicable;

    AcDbDxfFiler filer(std::make_unique<FieldFiler>(*this, kNoRecord));
    entity.dxfOutFields(&filer);
    if (filer.filerStatus() != Acad::eOk) return filer.filerStatus();
    std::vector<dxf::NewTag> common;
    if (const Acad::ErrorStatus status = commonTags(entity, *block, common); status != Acad::eOk) return status;

    std::vector<dxf::NewTag> tags{{0, dxfName}};
    if (drawing_->hasHandles()) tags.push_back({5, dxf::handleText(drawing_->newHandle())});
    const std::uint64_t owner = handleOf(block->id);
    if (owner != 0 && drawing_->version() >= "AC1015") tags.push_back({330, dxf::handleText(owner)});
    for (dxf::NewTag& tag : common)
        tags.push_back(std::move(tag));
    for (dxf::NewTag& tag : filer.state_->tags())
        tags.push_back(std::move(tag));

    const RecordId head = block->space == Space::None ? block->head : ensureSection(*drawing_, "ENTITIES");
    const RecordId record = drawing_->insertRecord(drawing_->endOf(head), RecordKind::Entity, tags);
    if (rxClass->appName()) tellOfClass(*drawing_, *rxClass);
    adopt(entity, record);
    return Acad::eOk;
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
