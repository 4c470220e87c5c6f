// What hangs on an object: its extension dictionary, the objects that hear of its changes; and layouts.
#include "dbdict.h"
#include "dblayout.h"
#include "dbsymtb.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"

using qrs::host::DatabaseState;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbLayout, AcDbObject, "LAYOUT")

namespace {

constexpr int kGroupCode = 102;
constexpr int kHandleCode = 5;
constexpr int kDimStyleHandleCode = 105;

// The handles that stand in a 102 group of an object.
std::vector<std::uint64_t> handlesIn(const dxf::Drawing& drawing, dxf::RecordId record, std::string_view group,
                                     int code) {
    std::vector<std::uint64_t> handles;
    dxf::TagCursor cursor = drawing.tags(record);
    dxf::Tag tag;
    bool inGroup = false;
    while (cursor.next(tag) && tag.code < 1000) {
        if (tag.code == kGroupCode) inGroup = dxf::trimmed(tag.value) == group;
        if (inGroup && tag.code == code) handles.push_back(dxf::toHandle(tag.value));
    }
    return handles;
}

}  // namespace

AcDbObjectId AcDbObject::extensionDictionary() const {
    const DatabaseState* state = DatabaseState::of(database_);
    const dxf::RecordId record = state ? state->ids().recordOf(record_) : dxf::kNoRecord;
    if (record == dxf::kNoRecord) return AcDbObjectId();
    const auto handles = handlesIn(state->drawing(), record, "{ACAD_XDICTIONARY", 360);
    return handles.empty() ? AcDbObjectId() : state->idOf(state->drawing().findHandle(handles.front()));
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database_);
    if (!state) return Acad::eNotInDatabase;
    if (!extensionDictionary().isNull()) return Acad::eOk;
    dxf::Drawing& drawing = state->drawing();
    const dxf::RecordId record = state->ids().recordOf(record_);
    if (drawing.version() < dxf::kFirstWithObjects || record == dxf::kNoRecord || drawing.record(record).handle == 0)
        return Acad::eNotApplicable;
    auto dictionary = std::make_unique<AcDbDictionary>();
    // It owns what it names.
    qrs::host::OpenObjects::ownTags(*dictionary)->tags.push_back({280, "1"});
    const Acad::ErrorStatus status = qrs::host::appendObject(*state, *dictionary, drawing.record(record).handle);
    if (status != Acad::eOk) return status;
    const std::string handle = dxf::handleText(Adesk::UInt64(dictionary->objectId().handle()));
    dictionary.release()->close();
    dxf::Tag own;
    const bool hasHandle =
        drawing.findTag(record, kHandleCode, own) || drawing.findTag(record, kDimStyleHandleCode, own);
    drawing.insertTags(record, hasHandle ? own.end : drawing.length(record),
                       {{kGroupCode, "{ACAD_XDICTIONARY"}, {360, handle}, {kGroupCode, "}"}});
    return Acad::eOk;
}

AcDbObjectIdArray AcDbObject::reactors() const {
    AcDbObjectIdArray ids;
    const DatabaseState* state = DatabaseState::of(database_);
    const dxf::RecordId record = state ? state->ids().recordOf(record_) : dxf::kNoRecord;
    if (record == dxf::kNoRecord) return ids;
    for (const std::uint64_t handle : handlesIn(state->drawing(), record, "{ACAD_REACTORS", 330)) {
        const AcDbObjectId id = state->idOf(state->drawing().findHandle(handle));
        if (!id.isNull()) ids.append(id);
    }
    return ids;
}

bool AcDbObject::hasPersistentReactor(AcDbObjectId id) const {
    return reactors().contains(id);
}

// --- layouts

namespace {

// The tags of a layout behind those of its plot settings, which have codes in common with it.
bool findLayoutTag(const DatabaseState& state, dxf::RecordId record, int code, dxf::Tag& found) {
    dxf::TagCursor cursor = state.drawing().tags(record);
    bool isOwn = false;
    while (cursor.next(found) && found.code < 1000) {
        if (found.code == 100) isOwn = dxf::trimmed(found.value) == "AcDbLayout";
        if (isOwn && found.code == code) return true;
    }
    return false;
}

}  // namespace

Acad::ErrorStatus AcDbLayout::getLayoutName(ACHAR*& name) const {
    name = nullptr;
    const DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    dxf::Tag tag;
    const bool isFound = findLayoutTag(*state, record(), 1, tag);
    name = qrs::host::newString(isFound ? qrs::host::readText(state->drawing(), tag.value) : std::wstring());
    return Acad::eOk;
}

AcDbObjectId AcDbLayout::getBlockTableRecordId() const {
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    if (!state || !findLayoutTag(*state, record(), 330, tag)) return AcDbObjectId();
    return state->idOf(state->drawing().findHandle(dxf::toHandle(tag.value)));
}

int AcDbLayout::getTabOrder() const {
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    return state && findLayoutTag(*state, record(), 71, tag) ? static_cast<int>(dxf::toInteger(tag.value)) : 0;
}

bool AcDbLayout::modelType() const {
    constexpr int kModelBit = 1024;  // of the plot settings' flags
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    return state && state->drawing().findTag(record(), 70, tag) && (dxf::toInteger(tag.value) & kModelBit) != 0;
}

AcDbObjectId AcDbDatabase::layoutDictionaryId() const {
    const AcDbObjectId root = namedObjectsDictionaryId();
    AcDbDictionary* dictionary = nullptr;
    if (root.isNull() || acdbOpenObject(dictionary, root, AcDb::kForRead) != Acad::eOk) return AcDbObjectId();
    AcDbObjectId id;
    dictionary->getAt(L"ACAD_LAYOUT", id);
    dictionary->close();
    return id;
}

Acad::ErrorStatus AcDbDatabase::getLayoutDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    dictionary = nullptr;
    const AcDbObjectId id = layoutDictionaryId();
    return id.isNull() ? Acad::eKeyNotFound : acdbOpenObject(dictionary, id, mode);
}

AcDbObjectId AcDbBlockTableRecord::getLayoutId() const {
    const DatabaseState* state = DatabaseState::of(database());
    return state ? state->idOf(state->drawing().findHandle(tags().handle(340))) : AcDbObjectId();
}
