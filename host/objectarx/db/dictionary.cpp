// Dictionaries of drawings: objects by name.
#include "dbdict.h"

#include "host/drawing/dictionaries.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY")

namespace {

void eraseEntry(DatabaseState& state, dxf::RecordId entry) {
    if (entry != dxf::kNoRecord && state.drawing().record(entry).kind == dxf::RecordKind::Object)
        state.eraser().erase(entry);
}

}  // namespace

AcDbDictionary::AcDbDictionary() {
    setOwnTags([] {
        static const qrs::host::RecordFormat format;
        return qrs::host::DetachedTags{&format, {}};
    });
}

std::vector<std::pair<std::wstring, AcDbObjectId>> AcDbDictionary::entries() const {
    std::vector<std::pair<std::wstring, AcDbObjectId>> found;
    const DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return found;
    for (const qrs::host::DictionaryEntry& entry : qrs::host::dictionaryEntries(state->drawing(), record()))
        if (const AcDbObjectId id = state->idOf(entry.object); !id.isNull()) found.emplace_back(entry.name, id);
    return found;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObjectId& entryId) const {
    entryId.setNull();
    if (!isReadEnabled()) return Acad::eNotOpenForRead;
    if (!entryName) return Acad::eInvalidInput;
    for (const auto& [name, id] : entries()) {
        if (qrs::platform::compareNoCase(name, entryName) != 0) continue;
        entryId = id;
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* entryName, AcDbObject* newValue, AcDbObjectId& entryId) {
    entryId.setNull();
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!newValue) return Acad::eNullObjectPointer;
    if (!entryName || !*entryName) return Acad::eInvalidInput;
    if (newValue->database()) return Acad::eAlreadyInDb;
    dxf::Drawing& drawing = state->drawing();
    const Acad::ErrorStatus status = qrs::host::appendObject(*state, *newValue, drawing.record(record()).handle);
    if (status != Acad::eOk) return status;
    entryId = newValue->objectId();
    eraseEntry(*state, qrs::host::setDictionaryEntry(drawing, record(), entryName, entryId.recordNumber()));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* entryName) {
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!entryName) return Acad::eInvalidInput;
    dxf::RecordId entry = dxf::kNoRecord;
    if (!qrs::host::removeDictionaryEntry(state->drawing(), record(), entryName, entry)) return Acad::eKeyNotFound;
    eraseEntry(*state, entry);
    return Acad::eOk;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
    if (!isReadEnabled()) return nullptr;
    std::unique_ptr<AcDbDictionaryIterator> iterator(new AcDbDictionaryIterator);
    iterator->entries_ = entries();
    return iterator.release();
}

const ACHAR* AcDbDictionaryIterator::name() const {
    return done() ? nullptr : entries_[position_].first.c_str();
}

AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : entries_[position_].second;
}

bool AcDbDictionaryIterator::next() {
    if (!done()) ++position_;
    return !done();
}
