// Dictionaries and records of values.
#include "dbdict.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY")

namespace {

// The tag after an entry's name holds its handle: as softly owned when the dictionary does not own it, hardly when
// it does.
// Where an entry stands in a dictionary, or where a new one is to be put: before value.begin, with value.code.
struct Place {
    bool isFound = false;
    std::uint32_t nameBegin = 0;
    dxf::Tag value;
};

Place placeOf(const dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view entryName) {
    Place end;
    end.value.code = codes::kSoftOwned;
    dxf::TagCursor cursor = drawing.tags(dictionary);
    dxf::Tag tag;
    dxf::Tag name;
    bool isOwn = false;
    bool hasName = false;
    while (cursor.next(tag) && tag.code < codes::kFirstXdata) {
        if (tag.code == codes::kSubclass) isOwn = dxf::trimmed(tag.value) == "AcDbDictionary";
        if (hasName && (tag.code == codes::kSoftOwned || tag.code == codes::kHardOwned)) {
            end.value.code = tag.code;
            if (qrs::platform::compareNoCase(qrs::host::readText(drawing, name.value), entryName) == 0)
                return {true, name.begin, tag};
        }
        // A dictionary that says so owns what it names.
        if (isOwn && tag.code == codes::dictionary::kIsHardOwner && dxf::toInteger(tag.value) != 0)
            end.value.code = codes::kHardOwned;
        hasName = isOwn && tag.code == codes::kEntryName;
        if (hasName) name = tag;
        if (isOwn) end.value.begin = tag.end;
    }
    return end;
}

}  // namespace

// --- dictionaries

std::vector<std::pair<std::wstring, AcDbObjectId>> AcDbDictionary::entries() const {
    std::vector<std::pair<std::wstring, AcDbObjectId>> found;
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return found;
    dxf::TagCursor cursor = state->drawing().tags(record());
    dxf::Tag tag;
    std::wstring name;
    bool hasName = false;
    while (cursor.next(tag) && tag.code < codes::kFirstXdata) {
        if (hasName && (tag.code == codes::kSoftOwned || tag.code == codes::kHardOwned)) {
            const AcDbObjectId id = state->idOf(state->drawing().findHandle(dxf::toHandle(tag.value)));
            if (!id.isNull()) found.emplace_back(name, id);
        }
        hasName = tag.code == codes::kEntryName;
        if (hasName) name = qrs::host::readText(state->drawing(), tag.value);
    }
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

AcDbDictionary::AcDbDictionary() {
    setOwnTags([] {
        static const qrs::host::RecordFormat format;
        return qrs::host::DetachedTags{&format, {}};
    });
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
    const std::string handle = dxf::handleText(Adesk::UInt64(entryId.handle()));
    const Place place = placeOf(drawing, record(), entryName);
    if (!place.isFound) {
        drawing.insertTags(record(), place.value.begin,
                           {{codes::kEntryName, qrs::host::writeText(drawing, entryName)}, {place.value.code, handle}});
        return Acad::eOk;
    }
    const dxf::RecordId old = drawing.findHandle(dxf::toHandle(place.value.value));
    drawing.setValue(record(), place.value, handle);
    if (old != dxf::kNoRecord && drawing.record(old).kind == dxf::RecordKind::Object) state->eraser().erase(old);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* entryName) {
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!entryName) return Acad::eInvalidInput;
    dxf::Drawing& drawing = state->drawing();
    const Place place = placeOf(drawing, record(), entryName);
    if (!place.isFound) return Acad::eKeyNotFound;
    const dxf::RecordId object = drawing.findHandle(dxf::toHandle(place.value.value));
    drawing.eraseTags(record(), place.nameBegin, place.value.end);
    if (object != dxf::kNoRecord && drawing.record(object).kind == dxf::RecordKind::Object)
        state->eraser().erase(object);
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
