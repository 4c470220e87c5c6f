// What new objects say of themselves, turned into records.
#include "host/objectarx/db/append.h"

#include <utility>

#include "dbdict.h"
#include "dbfiler.h"
#include "dbxrecrd.h"
#include "host/drawing/entityformat.h"
#include "host/drawing/newrecords.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/pictures.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::RecordId;
using dxf::RecordKind;

namespace {

// Where drawings begin to keep the objects of classes that they know by a record of the class alone.
constexpr dxf::Version kFirstWithClasses = dxf::Version::R2000;

std::wstring textOf(const ACHAR* text) {
    return text ? text : L"";
}

// What an application's class hands out, for a new object.
Acad::ErrorStatus fieldTags(DatabaseState& state, const AcDbObject& object, std::vector<dxf::NewTag>& tags) {
    const AcRxClass* rxClass = object.isA();
    const RecordKind kind = rxClass->isDerivedFrom(AcDbEntity::desc()) ? RecordKind::Entity : RecordKind::Object;
    if (!rxClass->pseudoConstructor() || !rxClass->dxfName()) return Acad::eNotApplicable;
    if (objectKind(kind, platform::toUtf8(rxClass->dxfName())).rxClass != rxClass) return Acad::eNotApplicable;
    if (rxClass->appName() && state.drawing().version() < kFirstWithClasses) return Acad::eNotApplicable;
    auto fields = std::make_unique<FieldFiler>(state, dxf::kNoRecord);
    const FieldFiler& written = *fields;
    AcDbDxfFiler filer(std::move(fields));
    object.dxfOutFields(&filer);
    if (written.status() == Acad::eOk) tags = written.tags();
    return written.status();
}

Acad::ErrorStatus spelledTags(DatabaseState& state, const DetachedTags& own, const std::string& dxfName,
                              std::vector<dxf::NewTag>& tags) {
    switch (NewRecords(state.contents()).spell(own, dxfName, tags)) {
        case NewRecords::Spelling::UnknownLayer:
            return Acad::eInvalidLayer;
        case NewRecords::Spelling::UnknownName:
            return Acad::eKeyNotFound;
        case NewRecords::Spelling::Done:
            break;
    }
    return Acad::eOk;
}

// The drawing tells of the classes of applications.
void become(DatabaseState& state, AcDbObject& object, RecordId record) {
    const AcRxClass& rxClass = *object.isA();
    if (rxClass.appName())
        state.contents().classes().add({textOf(rxClass.dxfName()), textOf(rxClass.name()), textOf(rxClass.appName()),
                                        rxClass.proxyFlags(), rxClass.isDerivedFrom(AcDbEntity::desc())});
    state.objects().adopt(object, record);
}

}  // namespace

Acad::ErrorStatus examineNewRecord(const AcDbSymbolTable& table, const AcDbSymbolTableRecord* record,
                                   const ACHAR*& name, const DetachedTags*& own) {
    if (!table.database() || !table.isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!record) return Acad::eNullObjectPointer;
    own = OpenObjects::ownTags(*record);
    if (record->database() || !own) return Acad::eAlreadyInDb;
    return record->getName(name) == Acad::eOk && *name ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus appendEntity(DatabaseState& state, AcDbEntity& entity, std::uint32_t blockId) {
    const Block* block = state.blocks().byId(blockId);
    const AcRxClass* rxClass = entity.isA();
    if (!block || (block->space == Space::None && block->head == dxf::kNoRecord)) return Acad::eNotApplicable;
    if (!rxClass->dxfName()) return Acad::eNotApplicable;
    const std::string dxfName = platform::toUtf8(rxClass->dxfName());
    const DetachedTags* own = OpenObjects::ownTags(entity);
    const bool isBuiltIn = !rxClass->pseudoConstructor() && &entityFormatOf(dxfName) != &entityFormat() && own;

    std::vector<dxf::NewTag> fields;
    std::vector<dxf::NewTag> tags;
    Acad::ErrorStatus status = isBuiltIn ? Acad::eOk : fieldTags(state, entity, fields);
    if (status == Acad::eOk && own) status = spelledTags(state, *own, dxfName, tags);
    if (status != Acad::eOk) return status;
    become(state, entity, NewRecords(state.contents()).addEntity(dxfName, *block, tags, fields));
    renewPicture(entity, {});
    return Acad::eOk;
}

Acad::ErrorStatus appendObject(DatabaseState& state, AcDbObject& object, std::uint64_t owner) {
    const dxf::Drawing& drawing = state.drawing();
    const AcRxClass* rxClass = object.isA();
    if (drawing.version() < dxf::kFirstWithObjects || !rxClass->dxfName()) return Acad::eNotApplicable;
    std::vector<dxf::NewTag> content;
    const bool isRecord = rxClass == AcDbXrecord::desc();
    const bool isDictionary = rxClass == AcDbDictionary::desc();
    if (isRecord || isDictionary) {
        content.push_back({dxf::codes::kSubclass, isRecord ? "AcDbXrecord" : "AcDbDictionary"});
        // What becomes of a doubled name when drawings are put together: the first stays.
        if (drawing.version() >= dxf::Version::R2000)
            content.push_back({isRecord ? dxf::codes::xrecord::kCloning : dxf::codes::dictionary::kCloning, "1"});
        if (const DetachedTags* own = OpenObjects::ownTags(object))
            for (const auto& [code, value] : own->tags)
                content.push_back({code, writeText(drawing, platform::fromUtf8(value))});
    } else if (const Acad::ErrorStatus status = fieldTags(state, object, content); status != Acad::eOk) {
        return status;
    }
    const std::string dxfName = platform::toUtf8(rxClass->dxfName());
    become(state, object, NewRecords(state.contents()).addObject(dxfName, owner, content));
    return Acad::eOk;
}

}  // namespace qrs::host

using qrs::host::DatabaseState;

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& outputId, AcDbEntity* entity) {
    outputId.setNull();
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!entity) return Acad::eNullObjectPointer;
    if (entity->database()) return Acad::eAlreadyInDb;
    const Acad::ErrorStatus status = qrs::host::appendEntity(*state, *entity, record());
    if (status != Acad::eOk) return status;
    qrs::platform::recordCall("AcDbBlockTableRecord::appendAcDbEntity", entity->isA()->dxfName());
    outputId = entity->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}
