// Where entities that show blocks put them.
#include <algorithm>

#include "host/pick/kinds.h"

namespace qrs::host::pick {

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
    const std::optional<Vec> at = entity.point(10);
    if (!at) return false;
    placement.block = entity.text(2);
    const Transform plane = planeOf(entity.normal());
    const Transform turned = plane.after(turn(entity.real(50, 0.0) * (kPi / 180)));
    const Transform scale{{entity.real(41, 1.0), 0, 0}, {0, entity.real(42, 1.0), 0}, {0, 0, entity.real(43, 1.0)}, {}};
    placement.first = turned.after(scale);
    placement.first.offset = plane.point(*at);
    const double across = entity.real(44, 0.0);
    const double up = entity.real(45, 0.0);
    placement.columns = repeats(entity, 70, across);
    placement.rows = repeats(entity, 71, up);
    placement.columnStep = turned.vector({across, 0, 0});
    placement.rowStep = turned.vector({0, up, 0});
    return true;
}

// Tables carry a block with their picture; counts and scales in their tags are of the cells.
bool placeTable(const Entity& entity, Placement& placement) {
    const std::optional<Vec> at = entity.point(10);
    if (!at) return false;
    placement.block = entity.text(2);
    const Vec z = unit(entity.normal(), {0, 0, 1});
    const Vec x = unit(entity.point(11).value_or(Vec{1, 0, 0}), {1, 0, 0});
    placement.first = Transform{x, cross(z, x), z, *at};
    return true;
}

// The picture of a dimension stands where it belongs already; copies may be moved.
bool placeDimension(const Entity& entity, Placement& placement) {
    placement.block = entity.text(2);
    placement.first.offset = planeOf(entity.normal()).point(entity.point(12).value_or(Vec{}));
    placement.atBasePoint = false;
    return true;
}

}  // namespace qrs::host::pick
