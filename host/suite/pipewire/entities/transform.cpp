// Pipes and what belongs to them, moved, turned, scaled and mirrored.
#include <cmath>

#include "entities/shapes.h"
#include "gemat3d.h"
#include "qrs_pipeentity.h"

using qrs::host::pick::kRadiansPerDegree;

namespace {

// Of the length of the directions that are compared.
constexpr double kUprightWithin = 1e-9;
constexpr double kSameWithin = 1e-9;
constexpr double kFullTurn = 360.0;

Acad::ErrorStatus check(const AcDbObject& object, const AcGeMatrix3d& transformation) {
    if (!object.isWriteEnabled()) return Acad::eNotOpenForWrite;
    return transformation.isUniScaledOrtho() ? Acad::eOk : Acad::eCannotScaleNonUniformly;
}

// Whether what is parallel to the XY plane stays so.
bool keepsUpright(const AcGeMatrix3d& transformation) {
    const AcGeVector3d up = transformation * AcGeVector3d::kZAxis;
    return std::hypot(up.x, up.y) <= kUprightWithin * up.length();
}

// Whether the XY plane, seen from above, is mirrored.
bool mirrorsPlan(const AcGeMatrix3d& transformation) {
    return transformation(0, 0) * transformation(1, 1) < transformation(0, 1) * transformation(1, 0);
}

// 1 for what only moves and turns, to the last digit.
double scaleOf(const AcGeMatrix3d& transformation) {
    const double scale = transformation.scale();
    return std::fabs(scale - 1.0) < kSameWithin ? 1.0 : scale;
}

// The angle told, unless the new direction is the same.
double turnedTo(double degrees, double direction) {
    return std::fabs(std::remainder(direction - degrees, kFullTurn)) < kSameWithin ? degrees : direction;
}

}  // namespace

Acad::ErrorStatus TDbPipe::transformBy(const AcGeMatrix3d& transformation) {
    if (const Acad::ErrorStatus status = check(*this, transformation); status != Acad::eOk) return status;
    TPipeCurve curve = GetCurve();
    // An arc that leans over could not be written.
    if (curve.kind == TPipeCurve::kArc && !keepsUpright(transformation)) return Acad::eNotApplicable;
    curve.start = transformation * curve.start;
    curve.end = transformation * curve.end;
    if (mirrorsPlan(transformation)) curve.bulge = -curve.bulge;
    return SetCurve(curve);
}

Acad::ErrorStatus TDbPipeNode::transformBy(const AcGeMatrix3d& transformation) {
    if (const Acad::ErrorStatus status = check(*this, transformation); status != Acad::eOk) return status;
    if (GetSize() > 0.0) SetSize(GetSize() * scaleOf(transformation));
    return SetPosition(transformation * GetPosition());
}

Acad::ErrorStatus TDbPipeAttachment::transformBy(const AcGeMatrix3d& transformation) {
    if (const Acad::ErrorStatus status = check(*this, transformation); status != Acad::eOk) return status;
    const double angle = GetRotation() * kRadiansPerDegree;
    const AcGeVector3d along = transformation * AcGeVector3d(std::cos(angle), std::sin(angle), 0.0);
    const bool isMirrored = mirrorsPlan(transformation);
    AcGePoint3d position = transformation * GetPosition();
    double rotation = turnedTo(GetRotation(), std::atan2(along.y, along.x) / kRadiansPerDegree);
    if (GetSize() > 0.0) SetSize(GetSize() * scaleOf(transformation));
    if (isMirrored && (GetKind() == kDimText || GetKind() == kRiserLabel)) {
        const double height = GetSize() > 0.0 ? GetSize() : qrs::suite::kSizeOnPaper * qrs::suite::paperScaleOf(*this);
        const AcGeVector3d right = along.normal();
        const AcGeVector3d up(right.y, -right.x, 0.0);  // as the mirror image has it
        const bool isBackwards = !qrs::suite::isReadable(rotation);
        if (isBackwards) rotation = std::remainder(rotation + 180.0, kFullTurn);
        // A label hangs on its riser; a text alone takes the place of its image.
        if (GetKind() == kDimText)
            position =
                position + (isBackwards ? right * (height * qrs::host::pick::textWidth(GetText())) : up * height);
    }
    SetRotation(rotation);
    return SetPosition(position);
}
