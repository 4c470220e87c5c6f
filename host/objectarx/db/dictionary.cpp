// Dictionaries and records of values.
#include "dbdict.h"
#include "dbxrecrd.h"
#include "host/objectarx/db/state.h"
#include "host/objectarx/db/xdata.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY")
ACRX_DEFINE_DXF_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD")

namespace {

constexpr int kEntryNameCode = 3;
// The tag behind an entry's name holds its handle: 350 when the dictionary does not own it, 360 when it does.
constexpr int kSoftOwnerCode = 350;
constexpr int kHardOwnerCode = 360;
constexpr int kFirstXdata = 1000;

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
    while (cursor.next(tag) && tag.code < kFirstXdata) {
        if (hasName && (tag.code == kSoftOwnerCode || tag.code == kHardOwnerCode)) {
            const AcDbObjectId id = state->idOf(state->drawing().findHandle(dxf::toHandle(tag.value)));
            if (!id.isNull()) found.emplace_back(name, id);
        }
        hasName = tag.code == kEntryNameCode;
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

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObject*& entry, AcDb::OpenMode mode) const {
    entry = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(entryName, id);
    return status == Acad::eOk ? acdbOpenObject(entry, id, mode) : status;
}

bool AcDbDictionary::has(const ACHAR* entryName) const {
    AcDbObjectId id;
    return getAt(entryName, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId entryId) const {
    for (const auto& entry : entries())
        if (entry.second == entryId) return true;
    return false;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    return static_cast<Adesk::UInt32>(entries().size());
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

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) const {
    object = nullptr;
    return done() ? Acad::eEndOfObject : acdbOpenObject(object, objectId(), mode);
}

bool AcDbDictionaryIterator::next() {
    if (!done()) ++position_;
    return !done();
}

// --- records of values

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase*) const {
    if (!chain) return Acad::eInvalidInput;
    *chain = nullptr;
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    qrs::host::ChainBuilder values(*state);
    dxf::TagCursor cursor = state->drawing().tags(record());
    dxf::Tag tag;
    bool isContent = false;
    bool isFirst = false;
    while (cursor.next(tag) && tag.code < kFirstXdata) {
        // 280 right behind the subclass tells how duplicates are kept; it is no value.
        if (isContent && !(isFirst && tag.code == 280)) values.add(tag);
        isFirst = tag.code == 100 && dxf::trimmed(tag.value) == "AcDbXrecord";
        isContent = isContent || isFirst;
    }
    *chain = values.take();
    return Acad::eOk;
}
