// The shapes of solids and faces, and of what shows a frame: viewports, images, foreign objects.
#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

// Three corners or four; a fourth that is missing is the third.
bool cornersOf(const Entity& entity, Vec (&corners)[4]) {
    for (int i = 0; i < 4; ++i) {
        const std::optional<Vec> corner = entity.point(face::kCorner + i);
        if (!corner && i < 3) return false;
        corners[i] = corner.value_or(corners[i > 0 ? i - 1 : 0]);
    }
    return true;
}

void drawRectangle(const Vec& low, const Vec& high, const Pen& pen) {
    const Vec corners[] = {
        {low.x, low.y, low.z}, {high.x, low.y, low.z}, {high.x, high.y, low.z}, {low.x, high.y, low.z}};
    for (int i = 0; i < 4; ++i)
        pen.segment(corners[i], corners[(i + 1) % 4]);
}

// The corners an image is cut to, in dots from its left edge and from above.
std::vector<Vec> clipOf(const Entity& entity) {
    std::vector<Vec> corners;
    for (const Entity::Field& field : entity.fields()) {
        const std::optional<double> number = finiteOf(field.value);
        if (field.code == image::kClipCorner && number) corners.push_back({*number, 0, 0});
        if (field.code == codes::yOf(image::kClipCorner) && number && !corners.empty()) corners.back().y = *number;
    }
    if (corners.size() == 2) {
        const Vec low = corners[0];
        const Vec high = corners[1];
        corners = {low, {high.x, low.y, 0}, high, {low.x, high.y, 0}};
    }
    return corners;
}

}  // namespace

// The third and the fourth corner stand crosswise.
void drawSolid(const Entity& entity, const Pen& pen) {
    Vec corners[4];
    if (!cornersOf(entity, corners)) return;
    pen.in(planeOf(entity.normal())).filled({corners[0], corners[1], corners[3], corners[2]});
}

void drawFace(const Entity& entity, const Pen& pen) {
    Vec corners[4];
    if (!cornersOf(entity, corners)) return;
    const long hidden = entity.integer(face::kHiddenEdges, 0);
    for (int i = 0; i < 4; ++i)
        if (!(hidden & (1 << i))) pen.segment(corners[i], corners[(i + 1) % 4]);
}

void drawViewport(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(codes::kPoint);
    const Vec half{entity.real(viewport::kWidth, 0.0) / 2, entity.real(viewport::kHeight, 0.0) / 2, 0};
    if (center && half.x > 0.0 && half.y > 0.0) drawRectangle(*center - half, *center + half, pen);
}

void drawImage(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    const std::optional<Vec> dotAcross = entity.point(image::kDotAcross);
    const std::optional<Vec> dotUp = entity.point(image::kDotUp);
    const std::optional<Vec> size = entity.point(image::kSize);
    if (!at || !dotAcross || !dotUp || !size) return;
    std::vector<Vec> corners = clipOf(entity);
    // Dots are counted from the middle of the first one.
    if (corners.size() < 3)
        corners = {
            {-0.5, -0.5, 0}, {size->x - 0.5, -0.5, 0}, {size->x - 0.5, size->y - 0.5, 0}, {-0.5, size->y - 0.5, 0}};
    for (Vec& corner : corners)
        corner = *at + *dotAcross * (corner.x + 0.5) + *dotUp * (size->y - corner.y - 0.5);
    Picture* const picture = pen.picture();
    if (picture && entity.drawing().typeNameOf(entity.id()) == "WIPEOUT") {
        for (Vec& corner : corners)
            corner = pen.toWorld().point(corner);
        return picture->cover(corners);
    }
    for (std::size_t i = 0; i < corners.size(); ++i)
        pen.segment(corners[i], corners[(i + 1) % corners.size()]);
}

void drawObjectFrame(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> corner = entity.point(codes::kPoint);
    const std::optional<Vec> opposite = entity.point(codes::kSecondPoint);
    if (corner && opposite) drawRectangle(*corner, *opposite, pen);
}

}  // namespace qrs::host::pick
