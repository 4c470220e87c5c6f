// The shapes of polylines of both kinds, with their widths, and of meshes.
#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

struct Vertex {
    Vec at;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
};

enum PolylineFlag { kClosed = 1, kSpace = 8, kMesh = 16, kClosedAcross = 32, kFaces = 64 };
enum VertexFlag { kFrame = 16, kFaceCorner = 64, kFacePart = 128 };

// A wide piece, as strips of at most 1/32 of a circle.
void drawWide(const Vertex& from, const Vertex& to, const Pen& pen) {
    const Vec chord = to.at - from.at;
    if (!(std::hypot(chord.x, chord.y) > 0.0)) return;
    const bool isArc = std::fabs(from.bulge) > 1e-9;
    const BulgeCircle circle = isArc ? circleOf(from.at, to.at, from.bulge) : BulgeCircle{};
    const int strips = isArc ? piecesOfTurn(circle.turn, circle.radius, pen) : 1;
    const Vec normal = unit({-chord.y, chord.x, 0.0}, {0, 1, 0});
    Vec left;
    Vec right;
    for (int i = 0; i <= strips; ++i) {
        const double share = static_cast<double>(i) / strips;
        const double half = (from.startWidth + (from.endWidth - from.startWidth) * share) / 2;
        const double angle = circle.start + circle.turn * share;
        const Vec outwards = isArc ? Vec{std::cos(angle), std::sin(angle), 0} : normal;
        const Vec middle = isArc ? circle.center + outwards * circle.radius : from.at + chord * share;
        const Vec nextLeft = middle + outwards * half;
        const Vec nextRight = middle - outwards * half;
        if (i > 0) pen.filled({left, nextLeft, nextRight, right});
        left = nextLeft;
        right = nextRight;
    }
}

bool isOfOneWidth(const std::vector<Vertex>& vertices) {
    const double width = vertices.front().startWidth;
    return width > 0.0 && std::all_of(vertices.begin(), vertices.end(), [width](const Vertex& vertex) {
               return vertex.startWidth == width && vertex.endWidth == width;
           });
}

// In a picture corners are mitred where the width is one all along.
void drawBand(const std::vector<Vertex>& vertices, bool closed, const Pen& pen) {
    std::vector<Vec> points;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const Vertex& from = vertices[i];
        const Vertex& to = vertices[(i + 1) % vertices.size()];
        points.push_back(pen.toWorld().point(from.at));
        const bool isLast = i + 1 == vertices.size();
        if ((isLast && !closed) || !(std::fabs(from.bulge) > 1e-9) || (from.at.x == to.at.x && from.at.y == to.at.y))
            continue;
        const BulgeCircle circle = circleOf(from.at, to.at, from.bulge);
        const int pieces = piecesOfTurn(circle.turn, circle.radius, pen);
        for (int k = 1; k < pieces; ++k) {
            const double angle = circle.start + circle.turn * k / pieces;
            const Vec outwards{circle.radius * std::cos(angle), circle.radius * std::sin(angle), 0};
            points.push_back(pen.toWorld().point(circle.center + outwards));
        }
    }
    pen.picture()->band(points, vertices.front().startWidth * scaleOf(pen.toWorld()), closed);
}

void drawVertices(const std::vector<Vertex>& vertices, bool closed, const Pen& pen) {
    if (vertices.size() == 1) pen.point(vertices[0].at);
    if (pen.picture() && vertices.size() > 1 && isOfOneWidth(vertices)) return drawBand(vertices, closed, pen);
    for (std::size_t i = 0; i < vertices.size() && !pen.isDone(); ++i) {
        const std::size_t next = (i + 1) % vertices.size();
        if (next == 0 && !closed) break;
        const Vertex& from = vertices[i];
        if (from.startWidth > 0.0 || from.endWidth > 0.0)
            drawWide(from, vertices[next], pen);
        else
            pen.bulge(from.at, vertices[next].at, from.bulge);
    }
}

// A value of a vertex; damaged ones leave what was there.
void take(double& value, const Entity::Field& field) {
    value = finiteOf(field.value).value_or(value);
}

// Rows of a mesh: lines along and across it.
void drawMesh(const Entity& entity, const std::vector<Vec>& points, const Pen& pen) {
    const long flags = entity.integer(codes::kFlags, 0);
    const long rows = std::max(entity.integer(polyline::kRows, 0), 0L);
    const long columns = std::max(entity.integer(polyline::kColumns, 0), 0L);
    if (rows < 2 || columns < 2 || rows > static_cast<long>(points.size()) / columns) return;
    const auto at = [&](long row, long column) {
        return points[static_cast<std::size_t>((row % rows) * columns + column % columns)];
    };
    for (long row = 0; row < rows; ++row)
        for (long column = 0; column < columns && !pen.isDone(); ++column) {
            if (row + 1 < rows || (flags & kClosed)) pen.segment(at(row, column), at(row + 1, column));
            if (column + 1 < columns || (flags & kClosedAcross)) pen.segment(at(row, column), at(row, column + 1));
        }
}

// Faces name their corners by number, from 1; the edge after a negative one is not shown.
void drawFaceEdges(const Entity& face, const std::vector<Vec>& points, const Pen& pen) {
    long corners[4];
    int count = 0;
    for (int code = polyline::kFirstFaceVertex; code <= polyline::kLastFaceVertex; ++code) {
        const long corner = face.integer(code, 0);
        if (corner == 0 || std::labs(corner) > static_cast<long>(points.size())) break;
        corners[count++] = corner;
    }
    for (int i = 0; i < count; ++i) {
        const long next = corners[(i + 1) % count];
        if (corners[i] > 0)
            pen.segment(points[static_cast<std::size_t>(corners[i] - 1)],
                        points[static_cast<std::size_t>(std::labs(next) - 1)]);
    }
}

}  // namespace

void drawLightPolyline(const Entity& entity, const Pen& pen) {
    const double width = entity.real(polyline::kConstantWidth, 0.0);
    const double elevation = entity.real(codes::kElevation, 0.0);
    std::vector<Vertex> vertices;
    for (const Entity::Field& field : entity.fields()) {
        if (field.code == codes::kPoint) {
            const std::optional<double> x = finiteOf(field.value);
            if (!x) return;
            vertices.push_back(Vertex{{*x, 0, elevation}, 0.0, width, width});
        }
        if (vertices.empty()) continue;
        Vertex& vertex = vertices.back();
        if (field.code == codes::yOf(codes::kPoint)) take(vertex.at.y, field);
        if (field.code == polyline::kBulge) take(vertex.bulge, field);
        if (field.code == polyline::kStartWidth) take(vertex.startWidth, field);
        if (field.code == polyline::kEndWidth) take(vertex.endWidth, field);
    }
    drawVertices(vertices, (entity.integer(codes::kFlags, 0) & 1) != 0, pen.in(planeOf(entity.normal())));
}

void drawPolyline(const Entity& entity, const Pen& pen) {
    const long flags = entity.integer(codes::kFlags, 0);
    const bool inSpace = (flags & (kSpace | kMesh | kFaces)) != 0;
    const double elevation = entity.point(codes::kPoint).value_or(Vec{}).z;
    const Vertex usual{{}, 0.0, entity.real(polyline::kStartWidth, 0.0), entity.real(polyline::kEndWidth, 0.0)};
    std::vector<Vertex> vertices;
    std::vector<Vec> points;
    std::vector<dxf::RecordId> faces;
    Entity part;
    for (const dxf::RecordId id : entity.parts()) {
        part.read(entity.drawing(), id);
        const long role = part.integer(codes::kFlags, 0);
        const std::optional<Vec> at = part.point(codes::kPoint);
        if ((role & kFacePart) && !(role & kFaceCorner)) faces.push_back(id);
        // The frame of a curve that was fitted is not shown.
        if (!at || (role & kFrame) || ((role & kFacePart) && !(role & kFaceCorner))) continue;
        points.push_back(*at);
        vertices.push_back(Vertex{inSpace ? *at : Vec{at->x, at->y, elevation},
                                  inSpace ? 0.0 : part.real(polyline::kBulge, 0.0),
                                  inSpace ? 0.0 : part.real(polyline::kStartWidth, usual.startWidth),
                                  inSpace ? 0.0 : part.real(polyline::kEndWidth, usual.endWidth)});
    }
    if (flags & kMesh) return drawMesh(entity, points, pen);
    for (const dxf::RecordId id : faces) {
        part.read(entity.drawing(), id);
        drawFaceEdges(part, points, pen);
    }
    if (!(flags & kFaces))
        drawVertices(vertices, (flags & kClosed) != 0, inSpace ? pen : pen.in(planeOf(entity.normal())));
}

}  // namespace qrs::host::pick
