// Objects, their ids and handles, and how they are opened.
#include "dbmain.h"

#include <cstdio>
#include <cstdlib>

#include "dbfiler.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::ObjectTags;

ACRX_DEFINE_MEMBERS(AcDbObject, AcRxObject)

// --- ids

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const {
    const DatabaseState* state = DatabaseState::byNumber(database_);
    return state && state->ids().isObject(record_);
}

bool AcDbObjectId::isErased() const {
    const DatabaseState* state = DatabaseState::byNumber(database_);
    return state && state->ids().isErased(record_);
}

AcDbDatabase* AcDbObjectId::database() const {
    const DatabaseState* state = DatabaseState::byNumber(database_);
    return state ? &state->database : nullptr;
}

AcRxClass* AcDbObjectId::objectClass() const {
    DatabaseState* state = DatabaseState::byNumber(database_);
    return state && state->ids().isObject(record_) ? state->kinds().of(record_).rxClass : nullptr;
}

AcDbHandle AcDbObjectId::handle() const {
    const DatabaseState* state = DatabaseState::byNumber(database_);
    return AcDbHandle(state ? state->ids().handleOf(record_) : 0);
}

// --- handles

AcDbHandle::AcDbHandle(const ACHAR* text) {
    value_ = qrs::dxf::toHandle(qrs::platform::toUtf8(text ? text : L""));
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, std::size_t length) const {
    const std::string text = qrs::dxf::handleText(value_);
    if (!buffer || text.size() >= length) return false;
    for (const char digit : text)
        *buffer++ = static_cast<ACHAR>(digit);
    *buffer = L'\0';
    return true;
}

// --- objects

AcDbObject::AcDbObject() : record_(qrs::dxf::kNoRecord) {}

AcDbObject::~AcDbObject() {
    qrs::host::OpenObjects::forget(*this);
}

AcDbObjectId AcDbObject::objectId() const {
    const DatabaseState* state = DatabaseState::of(database_);
    return state ? AcDbObjectId(state->number, record_) : AcDbObjectId();
}

AcDbObjectId AcDbObject::ownerId() const {
    DatabaseState* state = DatabaseState::of(database_);
    return state ? state->idOf(state->ids().ownerOf(record_)) : AcDbObjectId();
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const {
    handle = objectId().handle();
}

Acad::ErrorStatus AcDbObject::close() {
    return qrs::host::OpenObjects::close(*this);
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (!database_) return Acad::eNotInDatabase;
    if (writer_) return Acad::eWasOpenForWrite;
    if (readers_ != 1) return Acad::eWasOpenForRead;
    readers_ = 0;
    writer_ = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (!database_) return Acad::eNotInDatabase;
    if (!writer_) return Acad::eNotOpenForWrite;
    qrs::host::OpenObjects::writeFields(*this);
    readers_ = 1;
    writer_ = false;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    DatabaseState* state = DatabaseState::of(database_);
    if (!state) return Acad::eNotInDatabase;
    if (!writer_) return Acad::eNotOpenForWrite;
    return state->erase(record_, erasing);
}

bool AcDbObject::isErased() const {
    const DatabaseState* state = DatabaseState::of(database_);
    return state && state->ids().isErased(record_);
}

// --- values of applications' classes

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    return filer ? filer->filerStatus() : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
    return filer ? filer->filerStatus() : Acad::eInvalidInput;
}

void AcDbObject::assertReadEnabled() const {
    DatabaseState* state = DatabaseState::of(database_);
    // Reading fills in what the object stands for; it does not change it.
    if (state && !fieldsRead_) state->objects().readFields(const_cast<AcDbObject&>(*this));
}

void AcDbObject::assertWriteEnabled() {
    if (!writer_) {
        std::fprintf(stderr, "an object that is not open for writing was to be changed\n");
        std::abort();
    }
    assertReadEnabled();
    if (DatabaseState* state = DatabaseState::of(database_); state && !modified_) state->objects().willChange(*this);
    modified_ = database_ != nullptr;
}

ObjectTags AcDbObject::tags() const {
    const DatabaseState* state = DatabaseState::of(database_);
    if (!state) return own_ ? ObjectTags(own_.get()) : ObjectTags();
    const qrs::dxf::RecordId record = state->ids().recordOf(record_);
    if (record == qrs::dxf::kNoRecord) return ObjectTags();
    return ObjectTags(&state->drawing(), record, state->ids().formatOf(record_), ObjectTags::Part::Whole);
}

void AcDbObject::setOwnTags(qrs::host::DetachedTags tags) {
    own_ = std::make_unique<qrs::host::DetachedTags>(std::move(tags));
}

void AcDbObject::setOwnTags(qrs::host::DetachedTags (*make)()) {
    if (!qrs::host::OpenObjects::isOpening()) setOwnTags(make());
}

Acad::ErrorStatus AcDbObject::checkWrite() const {
    if (orphan_) return Acad::eNoDatabase;
    if (!database_ && !own_) return Acad::eNotInDatabase;
    return writer_ ? Acad::eOk : Acad::eNotOpenForWrite;
}

// --- opening

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
    object = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    DatabaseState* state = DatabaseState::byNumber(id.databaseNumber());
    return state ? state->objects().open(object, id.recordNumber(), mode, openErased) : Acad::eNoDatabase;
}
