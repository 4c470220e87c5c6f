// What hangs on an object: its extension dictionary, the objects that hear of its changes; and layouts.
#include <memory>
#include <utility>

#include "dbdict.h"
#include "dblayout.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/objectarx/db/append.h"
#include "host/objectarx/db/state.h"

using qrs::host::DatabaseState;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbLayout, AcDbObject, "LAYOUT")

namespace {

// The handle of the dictionary that hangs on an object; 0 for none.
std::uint64_t extensionOf(const dxf::Drawing& drawing, dxf::RecordId record) {
    dxf::RecordWalk walk(drawing.tags(record));
    for (dxf::Tag tag; walk.next(tag) && tag.code < codes::kFirstXdata;)
        if (tag.code == codes::kHardOwned && walk.group() == "ACAD_XDICTIONARY") return dxf::toHandle(tag.value);
    return 0;
}

}  // namespace

AcDbObjectId AcDbObject::extensionDictionary() const {
    const DatabaseState* state = DatabaseState::of(database_);
    const dxf::RecordId record = state ? state->ids().recordOf(record_) : dxf::kNoRecord;
    if (record == dxf::kNoRecord) return AcDbObjectId();
    return state->idOf(state->drawing().findHandle(extensionOf(state->drawing(), record)));
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
    qrs::host::OpenObjects::ownTags(*dictionary)->tags.push_back({codes::dictionary::kIsHardOwner, "1"});
    const Acad::ErrorStatus status = qrs::host::appendObject(*state, *dictionary, drawing.record(record).handle);
    if (status != Acad::eOk) return status;
    const std::string handle = dxf::handleText(Adesk::UInt64(dictionary->objectId().handle()));
    dictionary.release()->close();
    dxf::Tag own;
    const bool hasHandle =
        drawing.findTag(record, codes::kHandle, own) || drawing.findTag(record, codes::kDimStyleHandle, own);
    drawing.insertTags(record, hasHandle ? own.end : drawing.length(record),
                       {{codes::kGroup, "{ACAD_XDICTIONARY"}, {codes::kHardOwned, handle}, {codes::kGroup, "}"}});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database_);
    if (!state) return Acad::eNotInDatabase;
    const AcDbObjectId extension = extensionDictionary();
    if (extension.isNull()) return Acad::eKeyNotFound;
    {
        const AcDbObjectPointer<AcDbDictionary> dictionary(extension, AcDb::kForRead);
        if (dictionary.openStatus() != Acad::eOk) return dictionary.openStatus();
        const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
        if (!entry->done()) return Acad::eNotApplicable;
    }
    dxf::Drawing& drawing = state->drawing();
    const dxf::RecordId record = state->ids().recordOf(record_);
    dxf::Tag first;
    dxf::Tag last;
    bool isInside = false;
    dxf::RecordWalk walk(drawing.tags(record));
    for (dxf::Tag tag; walk.next(tag) && tag.code < codes::kFirstXdata;) {
        if (walk.group() != "ACAD_XDICTIONARY") continue;
        if (!std::exchange(isInside, true)) first = tag;
        last = tag;
    }
    const dxf::RecordId dictionary = drawing.findHandle(extensionOf(drawing, record));
    drawing.eraseTags(record, first.begin, last.end);
    state->eraser().erase(dictionary);
    return Acad::eOk;
}

// --- layouts

namespace {

// The tags of a layout after those of its plot settings, which have codes in common with it.
bool findLayoutTag(const DatabaseState& state, dxf::RecordId record, int code, dxf::Tag& found) {
    dxf::RecordWalk walk(state.drawing().tags(record));
    while (walk.next(found) && walk.part() != dxf::Part::Xdata)
        if (found.code == code && walk.isOwn() && walk.section() == "AcDbLayout") return true;
    return false;
}

}  // namespace

Acad::ErrorStatus AcDbLayout::getLayoutName(ACHAR*& name) const {
    name = nullptr;
    const DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    dxf::Tag tag;
    const bool isFound = findLayoutTag(*state, record(), codes::kText, tag);
    name = qrs::host::newString(isFound ? qrs::host::readText(state->drawing(), tag.value) : std::wstring());
    return Acad::eOk;
}

AcDbObjectId AcDbLayout::getBlockTableRecordId() const {
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    if (!state || !findLayoutTag(*state, record(), codes::layout::kBlock, tag)) return AcDbObjectId();
    return state->idOf(state->drawing().findHandle(dxf::toHandle(tag.value)));
}

int AcDbLayout::getTabOrder() const {
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    return state && findLayoutTag(*state, record(), codes::layout::kTab, tag)
               ? static_cast<int>(dxf::toInteger(tag.value))
               : 0;
}

bool AcDbLayout::modelType() const {
    constexpr int kModelBit = 1024;  // of the plot settings' flags
    const DatabaseState* state = DatabaseState::of(database());
    dxf::Tag tag;
    return state && state->drawing().findTag(record(), codes::layout::kPlotFlags, tag) &&
           (dxf::toInteger(tag.value) & kModelBit) != 0;
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
    return state ? state->idOf(state->drawing().findHandle(tags().handle(codes::blockrecord::kLayout)))
                 : AcDbObjectId();
}
