// Where entities that show blocks put them.
#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

constexpr long kMostRepeats = 32767;

Transform turn(double angle) {
    const Vec x{std::cos(angle), std::sin(angle), 0};
    return {x, {-x.y, x.x, 0}, {0, 0, 1}, {}};
}

// Copies on one place count once.
int repeats(const Entity& entity, int code, double spacing) {
    return spacing == 0.0 ? 1 : static_cast<int>(std::clamp(entity.integer(code, 1), 1L, kMostRepeats));
}

}  // namespace

bool placeInsert(const Entity& entity, Placement& placement) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    if (!at) return false;
    placement.block = entity.text(codes::kName);
    const Transform plane = planeOf(entity.normal());
    const Transform turned = plane.after(turn(entity.real(insert::kRotation, 0.0) * kRadiansPerDegree));
    const Transform scale{{entity.real(insert::kScaleX, 1.0), 0, 0},
                          {0, entity.real(insert::kScaleY, 1.0), 0},
                          {0, 0, entity.real(insert::kScaleZ, 1.0)},
                          {}};
    placement.first = turned.after(scale);
    placement.first.offset = plane.point(*at);
    const double across = entity.real(insert::kColumnSpacing, 0.0);
    const double up = entity.real(insert::kRowSpacing, 0.0);
    placement.columns = repeats(entity, insert::kColumnCount, across);
    placement.rows = repeats(entity, insert::kRowCount, up);
    placement.columnStep = turned.vector({across, 0, 0});
    placement.rowStep = turned.vector({0, up, 0});
    return true;
}

// Tables carry a block with their picture; counts and scales in their tags are of the cells.
bool placeTable(const Entity& entity, Placement& placement) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    if (!at) return false;
    placement.block = entity.text(codes::kName);
    const Vec z = unit(entity.normal(), {0, 0, 1});
    const Vec x = unit(entity.point(table::kDirection).value_or(Vec{1, 0, 0}), {1, 0, 0});
    placement.first = Transform{x, cross(z, x), z, *at};
    return true;
}

// The picture of a dimension stands where it belongs already; copies may be moved.
bool placeDimension(const Entity& entity, Placement& placement) {
    placement.block = entity.text(codes::kName);
    placement.first.offset = planeOf(entity.normal()).point(entity.point(dimension::kShift).value_or(Vec{}));
    placement.atBasePoint = false;
    return true;
}

}  // namespace qrs::host::pick
