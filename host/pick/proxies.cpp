// The shapes of entities that nobody knows, as the pictures tell them that they carry in the drawing file.
#include <algorithm>
#include <limits>

#include "host/drawing/proxygraphics.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace {

Vec vecOf(const ProxyPoint& point) {
    return {point.x, point.y, point.z};
}

Transform transformOf(const ProxyMatrix& m) {
    return {{m[0], m[4], m[8]}, {m[1], m[5], m[9]}, {m[2], m[6], m[10]}, {m[3], m[7], m[11]}};
}

void drawCorners(const ProxyShape& shape, const Pen& pen) {
    std::vector<Vec> corners;
    for (const ProxyPoint& point : shape.points)
        corners.push_back(vecOf(point));
    const bool isClosed = shape.kind == ProxyShape::Kind::Polygon;
    if (isClosed && shape.traits.isFilled) return pen.filled(corners);
    if (corners.size() == 1) return pen.point(corners.front());
    for (std::size_t i = 1; i < corners.size(); ++i)
        pen.segment(corners[i - 1], corners[i]);
    if (isClosed) pen.segment(corners.back(), corners.front());
}

void drawTurn(const ProxyShape& shape, const Pen& pen) {
    const bool isArc = shape.kind == ProxyShape::Kind::Arc;
    const Vec normal = unit(vecOf(shape.normal), {0, 0, 1});
    const Vec start = isArc ? vecOf(shape.direction) : planeOf(normal).x;
    const Vec u = unit(start, {1, 0, 0}) * shape.radius;
    const double sweep = isArc ? std::clamp(shape.sweep, -2.0 * kPi, 2.0 * kPi) : 2.0 * kPi;
    pen.arc(vecOf(shape.points.front()), u, cross(normal, u), std::min(0.0, sweep), std::max(0.0, sweep));
}

void drawText(const ProxyShape& shape, const Pen& pen) {
    const Vec x = unit(vecOf(shape.direction), {1, 0, 0});
    const Vec y = cross(unit(vecOf(shape.normal), {0, 0, 1}), x);
    const Vec at = vecOf(shape.points.front());
    if (Picture* const picture = pen.picture()) {
        TextLine line;
        line.text = shape.text;
        line.height = shape.height;
        line.widthFactor = shape.widthFactor;
        line.isBackwards = shape.isBackwards;
        line.isUpsideDown = shape.isUpsideDown;
        return picture->textLine(line, pen.in(Transform{x, y, cross(x, y), at}).toWorld());
    }
    const Vec along = x * (textWidth(shape.text) * shape.height * shape.widthFactor * (shape.isBackwards ? -1.0 : 1.0));
    const Vec up = y * (shape.isUpsideDown ? -shape.height : shape.height);
    pen.filled({at, at + along, at + along + up, at + up});
}

void drawShape(const ProxyShape& shape, const Pen& pen) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    switch (shape.kind) {
        case ProxyShape::Kind::Polyline:
        case ProxyShape::Kind::Polygon:
            return drawCorners(shape, pen);
        case ProxyShape::Kind::Circle:
        case ProxyShape::Kind::Arc:
            return drawTurn(shape, pen);
        case ProxyShape::Kind::Text:
            return drawText(shape, pen);
        case ProxyShape::Kind::Line:
        case ProxyShape::Kind::Ray: {
            const Vec from = vecOf(shape.points.front());
            return pen.line(from, vecOf(shape.points.back()) - from, shape.kind == ProxyShape::Kind::Ray ? 0.0 : -kFar,
                            kFar);
        }
    }
}

}  // namespace

void drawProxy(const Entity& entity, const Pen& pen) {
    const dxf::Drawing& drawing = entity.drawing();
    readProxyGraphics(drawing, proxyGraphicsOf(drawing, entity.id()), [&pen](const ProxyShape& shape) {
        const ProxyTraits& traits = shape.traits;
        if (Picture* const picture = pen.picture()) picture->traits(traits.rgb, traits.colorIndex, traits.lineWeight);
        drawShape(shape, pen.in(transformOf(shape.toEntity)));
        return !pen.isDone();
    });
}

}  // namespace qrs::host::pick
