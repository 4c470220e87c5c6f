// The table of the kinds of entities that have a shape.
#include "host/pick/kinds.h"

#include <cmath>
#include <deque>
#include <string>
#include <unordered_map>

#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace {

constexpr Kind kKinds[] = {
    {"LINE", &drawLine, nullptr, nullptr},
    {"CIRCLE", &drawCircle, nullptr, nullptr},
    {"ARC", &drawArc, nullptr, nullptr},
    {"ELLIPSE", &drawEllipse, nullptr, nullptr},
    {"LWPOLYLINE", &drawLightPolyline, nullptr, nullptr},
    {"POLYLINE", &drawPolyline, nullptr, nullptr},
    {"SPLINE", &drawSpline, nullptr, nullptr},
    {"HELIX", &drawSpline, nullptr, nullptr},
    {"TEXT", &drawText, nullptr, nullptr},
    {"MTEXT", &drawParagraphs, nullptr, nullptr},
    {"ATTRIB", &drawAttribute, nullptr, nullptr},
    {"ATTDEF", &drawAttributeDefinition, nullptr, nullptr},
    {"INSERT", nullptr, &placeInsert, nullptr},
    {"ACAD_TABLE", nullptr, &placeTable, nullptr},
    {"DIMENSION", nullptr, &placeDimension, nullptr},
    {"ARC_DIMENSION", nullptr, &placeDimension, nullptr},
    {"LARGE_RADIAL_DIMENSION", nullptr, &placeDimension, nullptr},
    {"HATCH", &drawHatch, nullptr, nullptr},
    {"MPOLYGON", &drawHatch, nullptr, nullptr},
    {"LEADER", &drawLeader, nullptr, nullptr},
    {"MULTILEADER", &drawMultileader, &placeMultileader, nullptr},
    {"MLEADER", &drawMultileader, &placeMultileader, nullptr},
    {"MLINE", &drawMultiline, nullptr, nullptr},
    {"MESH", &drawMesh, nullptr, nullptr},
    {"POINT", &drawPoint, nullptr, nullptr},
    {"SOLID", &drawSolid, nullptr, nullptr},
    {"TRACE", &drawSolid, nullptr, nullptr},
    {"3DFACE", &drawFace, nullptr, nullptr},
    {"VIEWPORT", &drawViewport, nullptr, nullptr},
    {"RAY", &drawRay, nullptr, nullptr},
    {"XLINE", &drawEndlessLine, nullptr, nullptr},
    {"IMAGE", &drawImage, nullptr, nullptr},
    {"WIPEOUT", &drawImage, nullptr, nullptr},
    {"TOLERANCE", &drawTolerance, nullptr, nullptr},
    {"OLE2FRAME", &drawObjectFrame, nullptr, nullptr},
};

using KindTable = std::unordered_map<std::string_view, Kind>;

// Filled before main from several files, so it is made when first asked for.
KindTable& table() {
    static KindTable kinds = [] {
        KindTable own;
        for (const Kind& kind : kKinds)
            own.emplace(kind.name, kind);
        return own;
    }();
    return kinds;
}

class PenOutline final : public Outline {
  public:
    explicit PenOutline(const Pen& pen) : pen_(pen) {}
    void point(const Vec& at) override { pen_.point(at); }
    void segment(const Vec& start, const Vec& end) override { pen_.segment(start, end); }
    void arc(const Vec& start, const Vec& end, double bulge) override { pen_.bulge(start, end, bulge); }
    void circle(const Vec& center, double radius) override {
        pen_.arc(center, {radius, 0, 0}, {0, radius, 0}, 0.0, 2.0 * kPi);
    }
    void polygon(const std::vector<Vec>& corners) override { pen_.filled(corners); }
    void text(const OutlineText& text) override {
        const double angle = text.degrees * kRadiansPerDegree;
        if (Picture* const picture = pen_.picture()) {
            TextLine line;
            line.text = text.text;
            line.height = text.height;
            line.widthFactor = kOutlineWidthFactor;
            const Vec x{std::cos(angle), std::sin(angle), 0};
            return picture->textLine(line, pen_.in(Transform{x, {-x.y, x.x, 0}, {0, 0, 1}, text.at}).toWorld());
        }
        const Vec along = Vec{std::cos(angle), std::sin(angle), 0} * text.height;
        const Vec right = text.at + along * textWidth(text.text);
        const Vec up{-along.y, along.x, 0};
        pen_.filled({text.at, right, right + up, text.at + up});
    }

  private:
    const Pen& pen_;
};

}  // namespace

const Kind* findKind(std::string_view dxfName) {
    static constexpr Kind kUnknown = {"", &drawProxy, nullptr, nullptr};
    const auto found = table().find(dxfName);
    return found == table().end() ? &kUnknown : &found->second;
}

void drawEntity(const Kind& kind, const Entity& entity, const Pen& pen) {
    if (kind.draw) kind.draw(entity, pen);
    if (!kind.trace) return;
    PenOutline outline(pen);
    kind.trace(entity, outline);
}

bool registerOutline(const char* dxfName, TraceFunction trace) {
    return table().emplace(dxfName, Kind{dxfName, nullptr, nullptr, trace}).second;
}

}  // namespace qrs::host::pick
