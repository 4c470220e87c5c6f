// The table of the numbers of entities.
#include "host/drawing/numberroles.h"

#include <algorithm>
#include <iterator>

#include "host/dxf/classcodes.h"

namespace qrs::host {

namespace codes = dxf::codes;
namespace columns = dxf::codes::mtextcolumns;
using namespace dxf::codes;

namespace {

using Role = NumberRole;

constexpr NumberRow kRows[] = {
    {"LINE", codes::kPoint, Role::WorldPoint},
    {"LINE", codes::kSecondPoint, Role::WorldPoint},
    {"LINE", codes::kThickness, Role::Thickness},
    {"POINT", codes::kPoint, Role::WorldPoint},
    {"POINT", codes::kThickness, Role::Thickness},
    {"POINT", codes::point::kAxisAngle, Role::Angle},
    {"RAY", codes::kPoint, Role::WorldPoint},
    {"RAY", ray::kDirection, Role::Direction},
    {"XLINE", codes::kPoint, Role::WorldPoint},
    {"XLINE", ray::kDirection, Role::Direction},
    {"3DFACE", face::kCorner, Role::WorldPoint},
    {"3DFACE", face::kSecondCorner, Role::WorldPoint},
    {"3DFACE", face::kThirdCorner, Role::WorldPoint},
    {"3DFACE", face::kFourthCorner, Role::WorldPoint},
    {"CIRCLE", codes::kPoint, Role::PlanePoint},
    {"CIRCLE", curve::kRadius, Role::Length},
    {"CIRCLE", codes::kThickness, Role::Thickness},
    {"ARC", codes::kPoint, Role::PlanePoint},
    {"ARC", curve::kRadius, Role::Length},
    {"ARC", codes::kThickness, Role::Thickness},
    {"ARC", curve::kStartAngle, Role::Angle},
    {"ARC", curve::kEndAngle, Role::Angle},
    {"ELLIPSE", codes::kPoint, Role::WorldPoint},
    {"ELLIPSE", ellipse::kMajorAxis, Role::Vector},
    {"SPLINE", spline::kControlPoint, Role::WorldPoint},
    {"SPLINE", spline::kFitPoint, Role::WorldPoint},
    {"SPLINE", spline::kStartTangent, Role::Direction},
    {"SPLINE", spline::kEndTangent, Role::Direction},
    {"LWPOLYLINE", codes::kElevation, Role::Elevation},
    {"LWPOLYLINE", codes::kPoint, Role::PlanePoint},
    {"LWPOLYLINE", codes::kThickness, Role::Thickness},
    {"LWPOLYLINE", polyline::kStartWidth, Role::Length},
    {"LWPOLYLINE", polyline::kEndWidth, Role::Length},
    {"LWPOLYLINE", polyline::kConstantWidth, Role::Length},
    {"POLYLINE", polyline::kElevation, Role::Elevation},
    {"POLYLINE", codes::kThickness, Role::Thickness},
    {"POLYLINE", polyline::kStartWidth, Role::Length},
    {"POLYLINE", polyline::kEndWidth, Role::Length},
    {"VERTEX", codes::kPoint, Role::PlanePoint},
    {"VERTEX", polyline::kStartWidth, Role::Length},
    {"VERTEX", polyline::kEndWidth, Role::Length},
    {"VERTEX", polyline::kTangent, Role::Angle},
    {"SOLID", face::kCorner, Role::PlanePoint},
    {"SOLID", face::kSecondCorner, Role::PlanePoint},
    {"SOLID", face::kThirdCorner, Role::PlanePoint},
    {"SOLID", face::kFourthCorner, Role::PlanePoint},
    {"SOLID", codes::kThickness, Role::Thickness},
    {"TRACE", face::kCorner, Role::PlanePoint},
    {"TRACE", face::kSecondCorner, Role::PlanePoint},
    {"TRACE", face::kThirdCorner, Role::PlanePoint},
    {"TRACE", face::kFourthCorner, Role::PlanePoint},
    {"TRACE", codes::kThickness, Role::Thickness},
    {"TEXT", codes::kPoint, Role::PlanePoint},
    {"TEXT", text::kAlignmentPoint, Role::PlanePoint},
    {"TEXT", text::kHeight, Role::Length},
    {"TEXT", codes::kThickness, Role::Thickness},
    {"TEXT", text::kRotation, Role::Angle, text::kHeight},
    {"ATTRIB", codes::kPoint, Role::PlanePoint},
    {"ATTRIB", text::kAlignmentPoint, Role::PlanePoint},
    {"ATTRIB", text::kHeight, Role::Length},
    {"ATTRIB", codes::kThickness, Role::Thickness},
    {"ATTRIB", text::kRotation, Role::Angle, text::kHeight},
    {"ATTDEF", codes::kPoint, Role::PlanePoint},
    {"ATTDEF", text::kAlignmentPoint, Role::PlanePoint},
    {"ATTDEF", text::kHeight, Role::Length},
    {"ATTDEF", codes::kThickness, Role::Thickness},
    {"ATTDEF", text::kRotation, Role::Angle, text::kHeight},
    {"SHAPE", codes::kPoint, Role::WorldPoint},
    {"SHAPE", text::kHeight, Role::Length},
    {"SHAPE", codes::kThickness, Role::Thickness},
    {"SHAPE", text::kRotation, Role::Angle, text::kHeight},
    {"MTEXT", codes::kPoint, Role::WorldPoint},
    {"MTEXT", mtext::kDirection, Role::Direction},
    {"MTEXT", mtext::kHeight, Role::Length},
    {"MTEXT", mtext::kReferenceWidth, Role::Length},
    {"MTEXT", mtext::kDefinedHeight, Role::Length},
    {"MTEXT", mtext::kColumnWidth, Role::Length},
    {"MTEXT", mtext::kColumnGutter, Role::Length},
    {"MTEXT", mtext::kRotation, Role::Angle, mtext::kHeight},
    {"INSERT", codes::kPoint, Role::PlanePoint},
    {"INSERT", insert::kScaleX, Role::Factor, codes::kPoint},
    {"INSERT", insert::kScaleY, Role::Factor, codes::kPoint},
    {"INSERT", insert::kScaleZ, Role::Factor, codes::kPoint},
    {"INSERT", insert::kColumnSpacing, Role::Length},
    {"INSERT", insert::kRowSpacing, Role::Length},
    {"INSERT", insert::kRotation, Role::Angle, codes::kPoint},
    {"LEADER", codes::kPoint, Role::WorldPoint},
    {"LEADER", leader::kDirection, Role::Direction},
    {"LEADER", leader::kBlockOffset, Role::Vector},
    {"LEADER", leader::kAnnotationOffset, Role::Vector},
    {"TOLERANCE", codes::kPoint, Role::WorldPoint},
    {"TOLERANCE", tolerance::kDirection, Role::Direction},
    {"IMAGE", codes::kPoint, Role::WorldPoint},
    {"IMAGE", image::kDotAcross, Role::Vector},
    {"IMAGE", image::kDotUp, Role::Vector},
    {"WIPEOUT", codes::kPoint, Role::WorldPoint},
    {"WIPEOUT", image::kDotAcross, Role::Vector},
    {"WIPEOUT", image::kDotUp, Role::Vector},
    {"DIMENSION", codes::kPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kTextPoint, Role::PlanePoint},
    {"DIMENSION", dimension::kShift, Role::Shift, dimension::kTextPoint},
    {"DIMENSION", dimension::kFirstPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kSecondPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kThirdPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kArcPoint, Role::PlanePoint},
    // What new drawings write after a text once more, for its columns.
    {kTextColumns, columns::kDirection, Role::Direction},
    {kTextColumns, columns::kPosition, Role::WorldPoint},
    {kTextColumns, columns::kReferenceWidth, Role::Length},
    {kTextColumns, columns::kDefinedHeight, Role::Length},
    {kTextColumns, columns::kWidth, Role::Length},
    {kTextColumns, columns::kHeight, Role::Length},
    {kTextColumns, columns::kColumnWidth, Role::Length},
    {kTextColumns, columns::kColumnGutter, Role::Length},
    {kTextColumns, columns::kColumnHeight, Role::Length},
};

}  // namespace

const std::vector<NumberRow>& numberRows() {
    static const std::vector<NumberRow> rows(std::begin(kRows), std::end(kRows));
    return rows;
}

const NumberRow* findNumber(std::string_view dxfName, int code) {
    for (const NumberRow& row : numberRows())
        if (row.code == code && dxfName == row.dxfName) return &row;
    return nullptr;
}

bool hasKnownNumbers(std::string_view dxfName) {
    const auto& rows = numberRows();
    return std::any_of(rows.begin(), rows.end(), [&](const NumberRow& row) { return dxfName == row.dxfName; });
}

}  // namespace qrs::host
