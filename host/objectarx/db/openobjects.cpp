// Opening and closing objects, and what lies between: who reads, who writes, which values are to be written.
#include "host/objectarx/db/openobjects.h"

#include "dbfiler.h"
#include "host/drawing/objecttags.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/pictures.h"
#include "host/objectarx/db/state.h"

namespace qrs::host {

namespace {
constexpr std::uint16_t kMaxReaders = 256;
}  // namespace

bool OpenObjects::isOpening_ = false;

struct OpenObjects::Opening {
    Opening() { isOpening_ = true; }
    ~Opening() { isOpening_ = false; }
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;
};

Acad::ErrorStatus OpenObjects::addOpening(AcDbObject& object, AcDb::OpenMode mode) {
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

Acad::ErrorStatus OpenObjects::open(AcDbObject*& object, std::uint32_t id, AcDb::OpenMode mode, bool openErased) {
    object = nullptr;
    const ObjectIds& ids = state_.ids();
    if (!ids.isObject(id)) return Acad::eInvalidIndex;
    if (!openErased && ids.isErased(id)) return Acad::eWasErased;
    if (const auto place = objects_.find(id); place != objects_.end()) {
        const Acad::ErrorStatus status = addOpening(*place->second, mode);
        if (status == Acad::eOk) object = place->second;
        return status;
    }
    std::unique_ptr<AcDbObject> made;
    {
        const Opening opening;
        made.reset(static_cast<AcDbObject*>(state_.kinds().of(id).make()));
    }
    made->own_.reset();
    // The last step that may fail, of those before the object belongs to the drawing.
    objects_.emplace(id, made.get());
    made->writer_ = false;
    made->database_ = &state_.database;
    made->record_ = id;
    addOpening(*made, mode);
    object = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus OpenObjects::close(AcDbObject& object) {
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

void OpenObjects::adopt(AcDbObject& object, std::uint32_t id) {
    object.own_.reset();
    object.database_ = &state_.database;
    object.record_ = id;
    object.writer_ = true;
    object.fieldsRead_ = true;
    object.modified_ = false;
    objects_[id] = &object;
}

void OpenObjects::forget(AcDbObject& object) {
    if (DatabaseState* state = DatabaseState::of(object.database_)) state->objects().objects_.erase(object.record_);
}

// What an object lacks, or has wrong, it answers with what a new one has.
void OpenObjects::readFields(AcDbObject& object) {
    object.fieldsRead_ = true;
    AcDbDxfFiler filer(std::make_unique<FieldFiler>(state_, state_.ids().recordOf(object.record_)));
    object.dxfInFields(&filer);
}

void OpenObjects::writeFields(AcDbObject& object) {
    DatabaseState* state = DatabaseState::of(object.database_);
    if (!state || !object.modified_) return;
    object.modified_ = false;
    auto fields = std::make_unique<FieldFiler>(*state, state->ids().recordOf(object.record_));
    FieldFiler& written = *fields;
    AcDbDxfFiler filer(std::move(fields));
    object.dxfOutFields(&filer);
    const bool isChanged = written.merge();
    const auto drawn = state->objects().drawn_.extract(object.record_);
    const AcDbEntity* entity = AcDbEntity::cast(&object);
    if (isChanged && entity && !drawn.empty()) renewPicture(*entity, drawn.mapped());
}

void OpenObjects::willChange(const AcDbObject& object) {
    if (const AcDbEntity* entity = AcDbEntity::cast(&object)) drawn_[object.record_] = drawnPicture(*entity);
}

void OpenObjects::writeAll() {
    for (const auto& [id, object] : objects_)
        writeFields(*object);
}

void OpenObjects::readAgain() {
    for (const auto& [id, object] : objects_)
        object->fieldsRead_ = false;
}

void OpenObjects::abandon() {
    for (const auto& [id, object] : objects_) {
        object->database_ = nullptr;
        object->orphan_ = true;
    }
}

}  // namespace qrs::host
