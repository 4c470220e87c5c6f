// What the shapes of entities become on a page.
#include "host/plot/view.h"

#include <algorithm>
#include <cmath>

#include "host/drawing/proxygraphics.h"
#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/platform/codepage.h"
#include "host/plot/patterns.h"

namespace qrs::host::plot {

namespace {

namespace codes = dxf::codes;
using pick::kPi;
using pick::Transform;

constexpr double kSame = 1e-6;     // dots
constexpr double kSmallest = 0.3;  // dots; blocks below are drawn as one
constexpr double kEntity = 1.0;    // pieces that one stands for that draws nothing
constexpr double kDot = 0.05;      // half the length of a dash that is a dot

// Polylines whose pattern runs on through their corners, and curves that come in many pieces.
bool isDrawnAsOne(const pick::Entity& entity) {
    enum { kFitted = 2, kSplined = 4, kRunsThrough = 128 };
    const std::string_view type = entity.drawing().typeNameOf(entity.id());
    if (type == "SPLINE") return true;
    if (type != "LWPOLYLINE" && type != "POLYLINE") return false;
    return (entity.integer(codes::kFlags, 0) & (kFitted | kSplined | kRunsThrough)) != 0;
}

// The shapes of the editor's own linetypes, by their numbers: as strokes around the line, in units of their scale.
struct KnownShape {
    long number;
    std::vector<std::vector<Vec>> strokes;
};

std::vector<Vec> circleStroke() {
    std::vector<Vec> points;
    constexpr int kPieces = 24;
    for (int i = 0; i <= kPieces; ++i)
        points.push_back({1 - std::cos(2 * kPi * i / kPieces), std::sin(2 * kPi * i / kPieces), 0});
    return points;
}

const std::vector<KnownShape>& knownShapes() {
    static const std::vector<KnownShape> shapes = {
        {130, {{{0, -1, 0}, {0, 1, 0}}}},
        {131, {{{0, 0, 0}, {0.5, 1, 0}, {1.5, -1, 0}, {2, 0, 0}}}},
        {132, {{{0, -1, 0}, {2, -1, 0}, {2, 1, 0}, {0, 1, 0}, {0, -1, 0}}}},
        {133, {circleStroke()}},
        {134, {{{0, -1, 0}, {1.5, -0.5, 0}, {0.5, 0.5, 0}, {2, 1, 0}}}},
    };
    return shapes;
}

Color mixed(const std::vector<long>& colors) {
    long sums[3] = {0, 0, 0};
    for (const long color : colors)
        for (int i = 0; i < 3; ++i)
            sums[i] += color >> (16 - 8 * i) & 0xFF;
    const auto count = static_cast<long>(colors.size());
    return trueColor(sums[0] / count << 16 | sums[1] / count << 8 | sums[2] / count);
}

}  // namespace

View::View(Canvas& canvas, Texts& texts, const dxf::Drawing& drawing, const ViewScale& scale, Painter* painter,
           Notes& notes)
    : canvas_(canvas), texts_(texts), looks_(drawing, scale.window), scale_(scale), painter_(painter), notes_(notes) {
    if (painter) now_.paint = painter->within(scale.window);
    pointMode_ = static_cast<long>(headerNumber(drawing, "$PDMODE", codes::variable::kInteger, 0));
    pointSize_ = headerNumber(drawing, "$PDSIZE", codes::variable::kReal, 0);
}

View::~View() {
    canvas_.flush();
}

TextStyles& View::stylesOf(const dxf::Drawing& drawing) {
    std::unique_ptr<TextStyles>& styles = styles_[&drawing];
    if (!styles) styles = std::make_unique<TextStyles>(drawing);
    return *styles;
}

Color View::colorNow() const {
    if (now_.paint.color) return *now_.paint.color;
    const Color own = now_.shapeColor.value_or(looks_.look().color);
    return scale_.isBlack ? Color{0, 0, 0, own.alpha} : own;
}

Stroke View::strokeNow() const {
    const double weight = now_.shapeWeight.value_or(looks_.look().weight);
    return {colorNow(), std::max(weight * scale_.dotsPerMillimetre, scale_.thinnest), false};
}

bool View::enter(const pick::Shown& shown) {
    looks_.enter(shown);
    outer_.push_back(now_);
    now_.drawing = &shown.entity.drawing();
    canvas_.allow(now_.drawing, now_.drawing->fileSize());
    canvas_.spend(kEntity);
    const Look& look = looks_.look();
    now_.linetype = look.linetype;
    now_.dotScale = pick::scaleOf(shown.toWorld);
    if (now_.linetype) {
        now_.dashScale =
            now_.dotScale * std::fabs(look.linetypeScale) * looks_.globalLinetypeScale() * scale_.linetypeFactor;
        now_.isOnePath = isDrawnAsOne(shown.entity);
    }
    if (painter_) now_.paint = painter_->paint(shown, looks_, now_.paint);
    now_.shapeColor.reset();
    now_.shapeWeight.reset();
    now_.isClipped = false;
    if (shown.showsBlock) clip(shown);
    if (isUndrawn(shown.entity)) ++notes_.undrawn[std::string(now_.drawing->typeNameOf(shown.entity.id()))];
    return looks_.isPlotted() && (!now_.paint.color || now_.paint.color->alpha > 0);
}

void View::leave() {
    endRun();
    if (now_.isClipped) canvas_.popClip();
    if (painter_) painter_->leave(now_.paint);
    looks_.leave();
    now_ = outer_.back();
    outer_.pop_back();
}

bool View::wants(const Box& box) {
    if (box.isEmpty() || !canvas_.isVisible(box)) return false;
    if (!box.isBounded() || box.high.x - box.low.x > kSmallest || box.high.y - box.low.y > kSmallest) return true;
    if (colorNow().alpha > 0) canvas_.line(box.low, box.high, strokeNow());
    return false;
}

void View::area(const std::vector<std::vector<Vec>>& loops) {
    canvas_.fill(loops, colorNow());
}

void View::takeLine(const Vec& p, const Vec& d, double t0, double t1) {
    if (!std::isfinite(t0) || !std::isfinite(t1)) {
        if (!clipLine(canvas_.visible(), p, d, t0, t1)) return;
    }
    const Vec from = p + d * t0;
    const Vec to = p + d * t1;
    if (!isDashed()) return canvas_.line(from, to, strokeNow());
    if (now_.isOnePath) {
        const bool goesOn =
            !run_.empty() && std::fabs(run_.back().x - from.x) < kSame && std::fabs(run_.back().y - from.y) < kSame;
        if (!goesOn) {
            endRun();
            run_.push_back(from);
        }
        run_.push_back(to);
        return;
    }
    dashedPath({from, to}, strokeNow());
}

void View::takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) {
    if (!isDashed()) return canvas_.arc(center, u, v, t0, t1, strokeNow());
    constexpr double kMostPieces = 4000;
    const double radius = std::max(std::hypot(u.x, u.y), std::hypot(v.x, v.y));
    const double turn = radius > closeness() ? 2 * std::acos(1.0 - closeness() / radius) : kPi;
    const int pieces = static_cast<int>(std::clamp(std::ceil((t1 - t0) / turn), 8.0, kMostPieces));
    std::vector<Vec> points;
    for (int i = 0; i <= pieces; ++i) {
        const double t = t0 + (t1 - t0) * i / pieces;
        points.push_back(center + u * std::cos(t) + v * std::sin(t));
    }
    if (!now_.isOnePath) return dashedPath(points, strokeNow());
    const auto meets = [&](const Vec& at) {
        return !run_.empty() && std::hypot(run_.back().x - at.x, run_.back().y - at.y) < kSame;
    };
    if (meets(points.back())) std::reverse(points.begin(), points.end());
    if (!meets(points.front())) endRun();
    run_.insert(run_.end(), points.begin(), points.end());
}

void View::endRun() {
    if (run_.empty()) return;
    const std::vector<Vec> points = std::move(run_);
    run_.clear();
    dashedPath(points, strokeNow());
}

void View::dashedPath(const std::vector<Vec>& points, const Stroke& stroke) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    const DashRow row(*now_.linetype, now_.dashScale, length);
    if (!row.isBroken()) return canvas_.path(points, false, stroke);
    double passed = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vec from = points[i - 1];
        const Vec d = points[i] - from;
        const double piece = std::hypot(d.x, d.y);
        double t0 = 0.0;
        double t1 = 1.0;
        if (piece > 0.0 && clipLine(canvas_.visible(), from, d, t0, t1)) {
            const auto at = [&](double place) { return from + d * ((place - passed) / piece); };
            row.forEach(
                passed + piece * t0, passed + piece * t1,
                [&](double low, double high) {
                    if (high - low < kDot) low -= kDot, high += kDot;
                    canvas_.line(at(low), at(high), stroke);
                },
                [&](const Dash& dash, double place) { carried(dash, at(place), d * (1.0 / piece), stroke); });
        }
        passed += piece;
    }
}

// A text or a shape in a linetype.
void View::carried(const Dash& dash, const Vec& at, const Vec& along, const Stroke& stroke) {
    const Vec x = dash.isUpright ? Vec{1, 0, 0} : along;
    const Transform line{along, {along.y, -along.x, 0}, {0, 0, 1}, at};
    const Vec origin = line.point({dash.offsetX * now_.dashScale, dash.offsetY * now_.dashScale, 0});
    const Vec turned{std::cos(dash.rotation), std::sin(dash.rotation), 0};
    const Transform axes{x, {x.y, -x.x, 0}, {0, 0, 1}, origin};
    const Transform place = axes.after(Transform{turned, {-turned.y, turned.x, 0}, {0, 0, 1}, {}});
    if (!dash.text.empty()) {
        const TextStyle& style = stylesOf(*now_.drawing).find(dash.style);
        pick::TextLine text;
        text.text = dash.text;
        text.height = (style.height > 0.0 ? style.height : 1.0) * dash.scale * now_.dashScale;
        text.widthFactor = style.widthFactor;
        return texts_.line(text, style, stroke.color, scale_.isBlack, place);
    }
    for (const KnownShape& shape : knownShapes()) {
        if (shape.number != dash.shape) continue;
        for (std::vector<Vec> points : shape.strokes) {
            for (Vec& point : points)
                point = place.point(point * (dash.scale * now_.dashScale));
            canvas_.path(points, false, stroke);
        }
        return;
    }
    notes_.all.insert(Note::UnknownShape);
}

void View::textLine(const pick::TextLine& text, const Transform& toWorld) {
    texts_.line(text, stylesOf(*now_.drawing).find(text.style), colorNow(), isOneColor(), toWorld);
}

void View::paragraphs(const pick::Paragraphs& text, const Transform& toWorld) {
    Color ground{255, 255, 255, 255};
    if (text.ground && !isOneColor()) {
        if (text.ground->rgb)
            ground = trueColor(*text.ground->rgb);
        else if (text.ground->index)
            ground = looks_.colorOf(*text.ground->index);
        ground.alpha = text.ground->opacity;
    }
    texts_.paragraphs(text, stylesOf(*now_.drawing).find(text.style), colorNow(), ground, isOneColor(), toWorld);
}

void View::filling(const pick::Filling& filling, const Transform& toWorld) {
    if (!filling.isSolid) {
        if (!fillWithPattern(canvas_, filling, toWorld, strokeNow())) notes_.all.insert(Note::FinePattern);
        return;
    }
    std::vector<std::vector<Vec>> loops = filling.loops;
    for (std::vector<Vec>& loop : loops)
        for (Vec& corner : loop)
            corner = toWorld.point(corner);
    Color color = colorNow();
    if (!filling.gradient.empty() && !isOneColor()) {
        const std::uint8_t alpha = color.alpha;
        color = mixed(filling.gradient);
        color.alpha = alpha;
    }
    canvas_.fill(loops, color);
}

void View::band(const std::vector<Vec>& points, double width, bool isClosed) {
    Stroke stroke = strokeNow();
    if (width > stroke.width) {
        stroke.width = width;
        stroke.isBand = true;
    }
    if (!isDashed()) return canvas_.path(points, isClosed, stroke);
    std::vector<Vec> whole = points;
    if (isClosed) whole.push_back(points.front());
    dashedPath(whole, stroke);
}

// As $PDMODE says: 0 a dot, 1 nothing, 2 a cross, 3 a slanted one, 4 a stroke upwards; 32 adds a circle, 64 a square.
void View::mark(const Vec& at) {
    constexpr double kUsualShare = 0.05;  // of what can be seen
    const double height = canvas_.visible().high.y - canvas_.visible().low.y;
    const double share = pointSize_ < 0.0 ? -pointSize_ / 100 : kUsualShare;
    const double half = (pointSize_ > 0.0 ? pointSize_ * now_.dotScale : share * height) / 2;
    const Stroke stroke = strokeNow();
    const auto draw = [&](double x0, double y0, double x1, double y1) {
        canvas_.line(at + Vec{x0, y0, 0} * half, at + Vec{x1, y1, 0} * half, stroke);
    };
    const long figure = pointMode_ & 31;
    if (figure == 0) canvas_.arc(at, {stroke.width / 4, 0, 0}, {0, stroke.width / 4, 0}, 0, 2 * kPi, stroke);
    if (figure == 2) draw(-2, 0, 2, 0), draw(0, -2, 0, 2);
    if (figure == 3) draw(-2, -2, 2, 2), draw(-2, 2, 2, -2);
    if (figure == 4) draw(0, 0, 0, -1);
    if (pointMode_ & 32) canvas_.arc(at, {half, 0, 0}, {0, half, 0}, 0, 2 * kPi, stroke);
    if (pointMode_ & 64) draw(-1, -1, 1, -1), draw(1, -1, 1, 1), draw(1, 1, -1, 1), draw(-1, 1, -1, -1);
}

void View::head(const Vec& tip, const Vec& from, const std::wstring& style, double scale) {
    namespace dimstyle = codes::dimstyle;
    double size = headerNumber(*now_.drawing, "$DIMASZ", codes::variable::kReal, 2.5);
    double whole = headerNumber(*now_.drawing, "$DIMSCALE", codes::variable::kReal, 1.0);
    const dxf::RecordId table = now_.drawing->findTable("DIMSTYLE");
    pick::Entity record;
    for (dxf::RecordId id = table == dxf::kNoRecord ? table : now_.drawing->next(table); id != dxf::kNoRecord;
         id = now_.drawing->next(id)) {
        canvas_.spend(kEntity);
        if (now_.drawing->record(id).kind != dxf::RecordKind::TableRecord) break;
        record.read(*now_.drawing, id);
        if (platform::compareNoCase(record.text(codes::kName), style) != 0) continue;
        size = record.real(dimstyle::kArrowSize, size);
        whole = record.real(dimstyle::kScale, whole);
        break;
    }
    const double length = size * (whole > 0.0 ? whole : 1.0) * scale;
    const Vec d = from - tip;
    const double room = std::hypot(d.x, d.y);
    // The editor leaves heads out that would not fit.
    if (!(length > 0.0) || !(room > 2 * length)) return;
    const Vec back = d * (length / room);
    const Vec side{-back.y / 6, back.x / 6, 0};
    canvas_.fill({{tip, tip + back + side, tip + back - side}}, colorNow());
}

void View::traits(std::optional<long> rgb, std::optional<long> index, std::optional<long> weight) {
    const std::uint8_t alpha = looks_.look().color.alpha;
    now_.shapeColor.reset();
    if (rgb)
        now_.shapeColor = trueColor(*rgb);
    else if (index && *index != kByLayer)
        now_.shapeColor = looks_.colorOf(*index);
    if (now_.shapeColor) now_.shapeColor->alpha = alpha;
    now_.shapeWeight.reset();
    if (weight && *weight >= 0) now_.shapeWeight = static_cast<double>(*weight) / 100.0;
}

// Of a kind that has no shape here, and without a picture of its own.
bool View::isUndrawn(const pick::Entity& entity) {
    const dxf::Drawing& drawing = entity.drawing();
    const std::uint16_t type = drawing.record(entity.id()).type;
    if (type == dxf::kTypeUncounted || type != lastType_ || &drawing != lastDrawing_) {
        lastType_ = type;
        lastDrawing_ = &drawing;
        isLastKnown_ = pick::findKind(drawing.typeNameOf(entity.id()))->draw != &pick::drawProxy;
    }
    return !isLastKnown_ && drawing.typeNameOf(entity.id()) != "SEQEND" &&
           proxyGraphicsOf(drawing, entity.id()).empty();
}

void View::clip(const pick::Shown& shown) {
    Clip clip = clips_.try_emplace(now_.drawing, *now_.drawing).first->second.clipOf(shown.entity);
    if (clip.edge.empty()) return;
    for (Vec& corner : clip.edge)
        corner = shown.toWorld.point(corner);
    std::vector<std::vector<Vec>> loops = {std::move(clip.edge)};
    const Box& all = canvas_.visible();
    if (clip.isHole) loops.push_back({all.low, {all.high.x, all.low.y, 0}, all.high, {all.low.x, all.high.y, 0}});
    canvas_.pushClip(loops);
    now_.isClipped = true;
}

void View::cover(const std::vector<Vec>& corners) {
    canvas_.fill({corners}, Color{255, 255, 255, 255});
}

}  // namespace qrs::host::plot
