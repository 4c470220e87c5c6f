// Finds the current viewport in the header or the tables, its height, its layers and its way to the world.
#include "host/editor/viewport.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "aced.h"
#include "host/dxf/classcodes.h"
#include "host/editor/documents.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/pick/entity.h"

namespace qrs::host::ed {

namespace {

using pick::Entity;
using pick::Vec;
namespace viewport = dxf::codes::viewport;

constexpr std::int64_t kOffBit = 0x20000;
constexpr std::int64_t kModelViewport = 2;
constexpr std::int64_t kSheet = 1;
constexpr std::size_t kMostViews = 11;  // ten to go back to

std::int64_t valueOf(const dxf::Drawing& drawing, dxf::RecordId id, int code) {
    dxf::Tag tag;
    return drawing.findTag(id, code, tag) ? dxf::toInteger(tag.value) : 0;
}

std::optional<View> soundView(const Vec& center, double height) {
    const bool isSound = pick::isFinite(center) && std::isfinite(height) && height > 0.0;
    return isSound ? std::optional<View>(View{center.x, center.y, height}) : std::nullopt;
}

// A view's center is told in its own coordinates: around the target, turned by the twist.
std::optional<View> viewOf(const Entity& record, int heightCode) {
    const std::optional<Vec> center = record.point(viewport::kViewCenter);
    if (!center) return std::nullopt;
    const Vec target = record.point(viewport::kViewTarget).value_or(Vec{});
    const double twist = -record.real(viewport::kViewTwist, 0.0) * pick::kRadiansPerDegree;
    const Vec turned{center->x * std::cos(twist) - center->y * std::sin(twist),
                     center->x * std::sin(twist) + center->y * std::cos(twist), 0};
    return soundView(target + turned, record.real(heightCode, 0.0));
}

// The view that the drawing keeps of the tab of model space.
std::optional<View> activeModelView(const dxf::Drawing& drawing) {
    const dxf::RecordId table = drawing.findTable("VPORT");
    if (table == dxf::kNoRecord) return std::nullopt;
    for (dxf::RecordId id = drawing.next(table); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::TableRecord) break;
        Entity record;
        record.read(drawing, id);
        if (record.text(dxf::codes::kName) != L"*ACTIVE" && record.text(dxf::codes::kName) != L"*Active") continue;
        if (const std::optional<View> view = viewOf(record, dxf::codes::vport::kViewHeight)) return view;
    }
    return std::nullopt;
}

std::optional<Vec> headerPoint(const dxf::Drawing& drawing, const char* name) {
    const dxf::RecordId id = drawing.findHeaderVariable(name);
    if (id == dxf::kNoRecord) return std::nullopt;
    Entity variable;
    variable.read(drawing, id);
    return variable.point(dxf::codes::kPoint);
}

// Corners that the drawing's header tells.
struct HeaderView {
    const char* low;
    const char* high;
};
constexpr HeaderView kModelCorners[] = {{"$EXTMIN", "$EXTMAX"}, {"$LIMMIN", "$LIMMAX"}};
constexpr HeaderView kPaperCorners[] = {{"$PEXTMIN", "$PEXTMAX"}, {"$PLIMMIN", "$PLIMMAX"}};

View headerView(const dxf::Drawing& drawing, const HeaderView (&corners)[2]) {
    for (const HeaderView& pair : corners) {
        const std::optional<Vec> low = headerPoint(drawing, pair.low);
        const std::optional<Vec> high = headerPoint(drawing, pair.high);
        // Drawings without anything in them tell extents the wrong way round.
        if (!low || !high || !(high->x > low->x) || !(high->y > low->y) || high->x - low->x > 1e19) continue;
        return viewAround(*low, *high);
    }
    return viewAround(Vec{0, 0, 0}, Vec{420, 297, 0});
}

View firstView(AcDbDatabase& database) {
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    if (database.tilemode()) {
        if (const std::optional<View> view = activeModelView(drawing)) return *view;
        const std::optional<Vec> center = headerPoint(drawing, "$VIEWCTR");
        const dxf::RecordId size = drawing.findHeaderVariable("$VIEWSIZE");
        if (center && size != dxf::kNoRecord) {
            Entity variable;
            variable.read(drawing, size);
            if (const std::optional<View> view = soundView(*center, variable.real(dxf::codes::variable::kReal, 0.0)))
                return *view;
        }
        return headerView(drawing, kModelCorners);
    }
    const CurrentViewport current = currentViewport(database);
    if (!current.id.isNull()) {
        Entity record;
        record.read(drawing, DatabaseAccess::recordOf(current.id));
        if (const std::optional<View> view = viewOf(record, viewport::kViewHeight)) return *view;
    }
    return current.number > kSheet ? headerView(drawing, kModelCorners) : headerView(drawing, kPaperCorners);
}

std::vector<View>& viewsOf(AcApDocument& document) {
    AcDbDatabase& database = *document.database();
    const bool isModel = database.tilemode();
    const dxf::RecordId sheet = isModel ? dxf::kNoRecord : currentSheet(database).head;
    const std::int64_t number = isModel ? 0 : currentViewport(database).number;
    std::vector<View>& views = document.state().views.views[{sheet, number}];
    if (views.empty()) views.push_back(firstView(database));
    return views;
}

ViewMemory* memoryOf(AcDbDatabase& database) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.document(&database) : nullptr;
    return document ? &document->state().views : nullptr;
}

}  // namespace

View viewAround(const Vec& low, const Vec& high) {
    const double height = std::fmax(high.y - low.y, (high.x - low.x) * kScreenHeight / kScreenWidth);
    return View{(low.x + high.x) / 2, (low.y + high.y) / 2, height};
}

std::vector<SheetViewport> viewportsOf(AcDbDatabase& database, EntitySpace sheet) {
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    std::vector<SheetViewport> viewports;
    std::vector<dxf::RecordId> records;
    forEachEntityOfSpace(drawing, sheet, [&](dxf::RecordId id) {
        if (drawing.typeNameOf(id) != "VIEWPORT") return;
        records.push_back(id);
        viewports.push_back({DatabaseAccess::idOf(database, id), valueOf(drawing, id, viewport::kNumber),
                             valueOf(drawing, id, viewport::kStack)});
    });
    const bool areNumbered = std::any_of(viewports.begin(), viewports.end(),
                                         [](const SheetViewport& viewport) { return viewport.number != 0; });
    for (std::size_t i = 0; i < viewports.size() && !areNumbered; ++i) {
        const bool isOff = (valueOf(drawing, records[i], viewport::kStatus) & kOffBit) != 0;
        viewports[i].number = kSheet + static_cast<std::int64_t>(i);
        viewports[i].place = isOff ? 0 : viewports[i].number;
    }
    return viewports;
}

CurrentViewport currentViewport(AcDbDatabase& database) {
    CurrentViewport current;
    if (database.tilemode()) {
        current.number = kModelViewport;
        return current;
    }
    const EntitySpace sheet = currentSheet(database);
    std::int64_t chosen = 0;
    if (const ViewMemory* memory = memoryOf(database))
        if (const auto found = memory->viewports.find(sheet.head); found != memory->viewports.end())
            chosen = found->second;
    current.number = kSheet;
    for (const SheetViewport& viewport : viewportsOf(database, sheet)) {
        const bool isChosen = chosen != 0 ? viewport.number == chosen : viewport.place == 1;
        if (!isChosen && !viewport.isSheet()) continue;
        current.id = viewport.id;
        current.number = viewport.number;
        if (isChosen) break;
    }
    return current;
}

bool setCurrentViewport(AcApDocument& document, std::int64_t number) {
    AcDbDatabase& database = *document.database();
    if (database.tilemode()) return number == kModelViewport;
    const EntitySpace sheet = currentSheet(database);
    const std::vector<SheetViewport> viewports = viewportsOf(database, sheet);
    const bool exists =
        number == kSheet || std::any_of(viewports.begin(), viewports.end(), [&](const SheetViewport& viewport) {
            return viewport.number == number && viewport.place != 0;
        });
    if (exists) document.state().views.viewports[sheet.head] = number;
    return exists;
}

std::int64_t topViewport(AcDbDatabase& database) {
    std::int64_t top = 0;
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    for (const SheetViewport& viewport : viewportsOf(database, currentSheet(database))) {
        if (viewport.number <= kSheet || viewport.place <= 0 || viewport.place >= best) continue;
        best = viewport.place;
        top = viewport.number;
    }
    return top;
}

bool picksModelSpace(AcDbDatabase& database) {
    return database.tilemode() || currentViewport(database).number > kSheet;
}

EntitySpace currentSheet(AcDbDatabase& database) {
    const ViewMemory* memory = memoryOf(database);
    const bool hasBlock = memory && memory->sheet.head != dxf::kNoRecord;
    const bool isGone = !memory || (hasBlock && DatabaseAccess::drawing(database).isErased(memory->sheet.head));
    return isGone ? kShownSheet : memory->sheet;
}

EntitySpace currentSpace(AcDbDatabase& database) {
    return picksModelSpace(database) ? kModelSpace : currentSheet(database);
}

View currentView(AcApDocument& document) {
    return viewsOf(document).back();
}

void setView(AcApDocument& document, const View& view) {
    if (!soundView(Vec{view.centerX, view.centerY, 0}, view.height)) return;
    std::vector<View>& views = viewsOf(document);
    views.push_back(view);
    if (views.size() > kMostViews) views.erase(views.begin());
}

bool setPreviousView(AcApDocument& document) {
    std::vector<View>& views = viewsOf(document);
    if (views.size() < 2) return false;
    views.pop_back();
    return true;
}

double pickBoxSize(AcApDocument& document) {
    const Session* session = Session::current();
    const double dots = session ? session->variables.integer(L"PICKBOX") : 0;
    return dots * currentView(document).height / kScreenHeight;
}

}  // namespace qrs::host::ed

AcDbObjectId acedGetCurViewportObjectId() {
    using namespace qrs::host::ed;
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    return document ? currentViewport(*document->database()).id : AcDbObjectId();
}
