// The viewport that takes the user's input.
#include "viewport.h"

#include "aced.h"
#include "db/access.h"
#include "entityfilter.h"
#include "session.h"

namespace qrs::host::ed {

namespace {

constexpr int kStackCode = 68;   // place among the viewports that are on; 1 takes the input
constexpr int kNumberCode = 69;  // 1 is the sheet itself
constexpr std::int64_t kModelViewport = 2;
constexpr std::int64_t kSheet = 1;

std::int64_t valueOf(const dxf::Drawing& drawing, dxf::RecordId id, int code) {
    dxf::Tag tag;
    return drawing.findTag(id, code, tag) ? dxf::toInteger(tag.value) : 0;
}

}  // namespace

CurrentViewport currentViewport(AcDbDatabase& database) {
    CurrentViewport current;
    if (database.tilemode()) {
        current.number = kModelViewport;
        return current;
    }
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    current.number = kSheet;
    bool onTop = false;
    forEachEntity(drawing, [&](dxf::RecordId id) {
        if (onTop || !liesInCurrentSpace(drawing, false, id) || drawing.typeNameOf(id) != "VIEWPORT") return;
        onTop = valueOf(drawing, id, kStackCode) == 1;
        const std::int64_t number = valueOf(drawing, id, kNumberCode);
        if (!onTop && number != kSheet) return;
        current.id = DatabaseAccess::idOf(database, id);
        current.number = number;
    });
    return current;
}

}  // namespace qrs::host::ed

AcDbObjectId acedGetCurViewportObjectId() {
    using namespace qrs::host::ed;
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    return document ? currentViewport(*document->database()).id : AcDbObjectId();
}
