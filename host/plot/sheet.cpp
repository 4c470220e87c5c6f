// Draws the entities of a layout, and the model in its viewports.
#include "host/plot/sheet.h"

#include <algorithm>
#include <cmath>

#include "host/drawing/frozenlayers.h"
#include "host/dxf/classcodes.h"
#include "host/pick/draworder.h"
#include "host/pick/scene.h"

namespace qrs::host::plot {

namespace {

namespace codes = dxf::codes;
namespace viewport = dxf::codes::viewport;
using pick::Transform;
using pick::Vec;

constexpr long kOffBit = 0x20000;

// The corners of an outline.
class CornerProbe final : public pick::Probe {
  public:
    explicit CornerProbe(double closeness) : closeness_(closeness) {}
    const std::vector<Vec>& corners() const { return corners_; }

    void area(const std::vector<std::vector<Vec>>&) override {}
    bool wants(const Box&) override { return true; }
    bool isDone() const override { return false; }
    double closeness() const override { return closeness_; }

  protected:
    void takeLine(const Vec& p, const Vec& d, double t0, double t1) override { add({p + d * t0, p + d * t1}); }
    void takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) override {
        constexpr int kPieces = 64;
        std::vector<Vec> points;
        for (int i = 0; i <= kPieces; ++i) {
            const double t = t0 + (t1 - t0) * i / kPieces;
            points.push_back(center + u * std::cos(t) + v * std::sin(t));
        }
        add(std::move(points));
    }

  private:
    // Arcs run one way, the outline may run the other.
    void add(std::vector<Vec> points) {
        if (!corners_.empty()) {
            const Vec& last = corners_.back();
            const double first = std::hypot(points.front().x - last.x, points.front().y - last.y);
            const double second = std::hypot(points.back().x - last.x, points.back().y - last.y);
            if (second < first) std::reverse(points.begin(), points.end());
        }
        corners_.insert(corners_.end(), points.begin(), points.end());
    }

    double closeness_;
    std::vector<Vec> corners_;
};

// What drawings of old formats say of a view in extended data: target, direction, twist, height, center.
struct OldView {
    std::vector<Vec> points;
    std::vector<double> numbers;
};

OldView readOldView(const dxf::Drawing& drawing, dxf::RecordId id) {
    OldView view;
    dxf::TagCursor cursor = drawing.tags(id);
    bool isInside = false;
    for (dxf::Tag tag; cursor.next(tag);) {
        if (tag.code == codes::kXdataApplication) isInside = dxf::trimmed(tag.value) == "ACAD";
        if (!isInside) continue;
        const double number = pick::finiteOf(tag.value).value_or(0.0);
        if (tag.code == codes::kXdataPoint) view.points.push_back({number, 0, 0});
        if (tag.code == codes::yOf(codes::kXdataPoint) && !view.points.empty()) view.points.back().y = number;
        if (tag.code == codes::zOf(codes::kXdataPoint) && !view.points.empty()) view.points.back().z = number;
        if (tag.code == codes::kXdataReal) view.numbers.push_back(number);
    }
    return view;
}

// From the model to a view's own plane: looked at along its direction, turned around its target.
Transform viewPlane(const Vec& target, const Vec& direction, double twist) {
    const Transform plane = pick::planeOf(direction);
    // The rows of the plane's axes undo it.
    const Transform flat{
        {plane.x.x, plane.y.x, plane.z.x}, {plane.x.y, plane.y.y, plane.z.y}, {plane.x.z, plane.y.z, plane.z.z}, {}};
    const Transform turn{{std::cos(twist), std::sin(twist), 0}, {-std::sin(twist), std::cos(twist), 0}, {0, 0, 1}, {}};
    return turn.after(flat).after(Transform{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, target * -1.0});
}

}  // namespace

std::vector<Layout> tabsOf(const dxf::Drawing& drawing, const BlockIndex& blocks) {
    std::vector<Layout> layouts = layoutsOf(drawing, blocks);
    if (!layouts.empty())
        std::stable_sort(layouts.begin() + 1, layouts.end(),
                         [](const Layout& a, const Layout& b) { return a.tab < b.tab; });
    for (Layout& layout : layouts)
        if (layout.name.empty()) layout.name = L"Layout1";
    return layouts;
}

Sheet::Sheet(dxf::Drawing& drawing, pick::References& references, const LocateFile& locate, const Layout& layout)
    : drawing_(drawing),
      references_(references),
      locate_(locate),
      name_(layout.name),
      block_(*layout.block),
      space_(spaceOf(*layout.block)),
      tables_(drawing),
      blocks_(drawing) {
    if (isModel()) return;
    // Programs that number the viewports of no sheet but the one shown last put the sheet itself first.
    struct Seen {
        dxf::RecordId id;
        long number;
        bool isOff;
    };
    std::vector<Seen> seen;
    pick::Entity entity;
    forEachEntityOfSpace(drawing, space_, [&](dxf::RecordId id) {
        if (drawing.typeNameOf(id) != "VIEWPORT") return;
        entity.read(drawing, id);
        const bool isOff = entity.has(viewport::kStatus) ? (entity.integer(viewport::kStatus, 0) & kOffBit) != 0
                                                         : entity.integer(viewport::kStack, 1) == 0;
        seen.push_back({id, entity.integer(viewport::kNumber, 0), isOff});
    });
    const bool hasSheet = std::any_of(seen.begin(), seen.end(), [](const Seen& one) { return one.number == 1; });
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const bool isSheet = hasSheet ? seen[i].number == 1 : i == 0;
        if (!isSheet && !seen[i].isOff) windows_.push_back(seen[i].id);
    }
}

std::optional<PageSetup> Sheet::setup() const {
    if (block_.id >= drawing_.recordCount()) return std::nullopt;
    return readPageSetup(drawing_, drawing_.record(block_.id).handle);
}

bool Sheet::isWindow(dxf::RecordId id) const {
    return std::find(windows_.begin(), windows_.end(), id) != windows_.end();
}

std::vector<dxf::RecordId> Sheet::entities(EntitySpace space) const {
    std::vector<dxf::RecordId> ids;
    forEachEntityOfSpace(drawing_, space, [&](dxf::RecordId id) {
        // The sheet itself, and viewports that are off.
        if (drawing_.typeNameOf(id) != "VIEWPORT" || isWindow(id)) ids.push_back(id);
    });
    const Block* const block = space == space_ ? &block_ : blocks_.bySpace(space.kind);
    pick::DrawOrder(drawing_, block).sort(ids);
    return ids;
}

pick::Box Sheet::extents() {
    const pick::LayerStates layers(drawing_, &tables_);
    pick::Scene scene(drawing_, layers, references_, locate_);
    pick::Box all;
    for (const dxf::RecordId id : entities(space_)) {
        if ((drawing_.record(id).flags & dxf::kInvisible) || layers.of(id) & (pick::kFrozenLayer | pick::kOffLayer))
            continue;
        if (scene.isFurtherColumn(id)) continue;
        const pick::Box box = scene.extents(id);
        if (!box.isBounded()) continue;
        all.add(box.low);
        all.add(box.high);
    }
    return all;
}

std::optional<Sheet::Window> Sheet::windowOf(dxf::RecordId id) const {
    if (!isWindow(id) || pick::LayerStates(drawing_, &tables_).isFrozen(id)) return std::nullopt;
    pick::Entity entity;
    entity.read(drawing_, id);
    const std::optional<Vec> center = entity.point(codes::kPoint);
    const double width = entity.real(viewport::kWidth, 0.0);
    const double height = entity.real(viewport::kHeight, 0.0);
    if (!center || !(width > 0.0) || !(height > 0.0)) return std::nullopt;
    Vec target = entity.point(viewport::kViewTarget).value_or(Vec{});
    Vec direction = entity.point(viewport::kViewDirection).value_or(Vec{0, 0, 1});
    Vec viewCenter = entity.point(viewport::kViewCenter).value_or(Vec{});
    double viewHeight = entity.real(viewport::kViewHeight, 0.0);
    double twist = entity.real(viewport::kViewTwist, 0.0) * pick::kRadiansPerDegree;
    if (!entity.has(viewport::kViewHeight)) {
        const OldView old = readOldView(drawing_, id);
        if (old.points.size() < 2 || old.numbers.size() < 4) return std::nullopt;
        target = old.points[0];
        direction = old.points[1];
        twist = old.numbers[0] * pick::kRadiansPerDegree;
        viewHeight = old.numbers[1];
        viewCenter = {old.numbers[2], old.numbers[3], 0};
    }
    if (!(viewHeight > 0.0)) return std::nullopt;
    const double scale = height / viewHeight;
    const Transform toView = viewPlane(target, direction, twist);
    const Transform placed{{scale, 0, 0},
                           {0, scale, 0},
                           {0, 0, scale},
                           {center->x - viewCenter.x * scale, center->y - viewCenter.y * scale, 0}};
    Window window{id,
                  {center->x - width / 2, center->y - height / 2, 0},
                  {center->x + width / 2, center->y + height / 2, 0},
                  placed.after(toView),
                  dxf::kNoRecord};
    dxf::Tag tag;
    if ((entity.integer(viewport::kStatus, 0) & viewport::kIsClipped) != 0 &&
        drawing_.findTag(id, viewport::kOutline, tag))
        window.outline = drawing_.findHandle(dxf::toHandle(tag.value));
    return window;
}

// The outline of a viewport on the page.
std::vector<std::vector<Vec>> Sheet::edgeOf(const Window& window, const Transform& toPage) {
    if (window.outline != dxf::kNoRecord) {
        CornerProbe probe(1.0);
        const pick::LayerStates layers(drawing_, &tables_);
        pick::Scene scene(drawing_, layers, references_, locate_);
        scene.show(window.outline, probe, toPage);
        if (probe.corners().size() > 2) return {probe.corners()};
    }
    return {{toPage.point(window.low), toPage.point({window.high.x, window.low.y, 0}), toPage.point(window.high),
             toPage.point({window.low.x, window.high.y, 0})}};
}

pick::LayerStates Sheet::layersIn(dxf::RecordId viewport) const {
    pick::LayerStates layers(drawing_, &tables_);
    if (viewport == dxf::kNoRecord) return layers;
    for (const dxf::RecordId layer : FrozenLayers(drawing_, tables_, viewport).layers())
        if (layer != dxf::kNoRecord) layers.freeze(tables_.nameOf(layer));
    return layers;
}

std::size_t Sheet::drawWindow(const Window& window, Canvas& canvas, Texts& texts, const Transform& toPage,
                              const ViewScale& scale, Painter* painter, Notes& notes) {
    const pick::LayerStates layers = layersIn(window.id);
    const Transform toDots = toPage.after(window.toSheet);
    ViewScale inner = scale;
    const double models = std::fabs(pick::scaleOf(toDots));
    // Drawings that do not say how it is come from before the question.
    if (headerNumber(drawing_, "$PSLTSCALE", codes::variable::kInteger, 0) != 0 && models > 0.0)
        inner.linetypeFactor = pick::scaleOf(toPage) / models;
    inner.window = window.id;
    canvas.pushClip(edgeOf(window, toPage));
    std::size_t count = 0;
    {
        pick::Scene scene(drawing_, layers, references_, locate_);
        View view(canvas, texts, drawing_, inner, painter, notes);
        for (const dxf::RecordId id : entities(kModelSpace)) {
            ++count;
            if (scene.show(id, view, toDots)) continue;
            notes.all.insert(Note::RestLeftOut);
            break;
        }
    }
    canvas.popClip();
    return count;
}

std::size_t Sheet::draw(Canvas& canvas, Texts& texts, const Transform& toPage, const ViewScale& scale, Painter* painter,
                        Notes& notes) {
    const pick::LayerStates layers(drawing_, &tables_);
    pick::Scene scene(drawing_, layers, references_, locate_);
    View view(canvas, texts, drawing_, scale, painter, notes);
    std::size_t count = 0;
    for (const dxf::RecordId id : entities(space_)) {
        ++count;
        if (const std::optional<Window> window = windowOf(id))
            count += drawWindow(*window, canvas, texts, toPage, scale, painter, notes);
        if (scene.show(id, view, toPage)) continue;
        notes.all.insert(Note::RestLeftOut);
        break;
    }
    return count;
}

}  // namespace qrs::host::plot
