// Pipes and what belongs to them, moved, turned, scaled and mirrored.
#include <cmath>

#include "gemat3d.h"
#include "qrs_pipeentity.h"

namespace {

// Of the length of the directions that are compared.
constexpr double kUprightWithin = 1e-9;

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
    const Acad::ErrorStatus status = check(*this, transformation);
    return status == Acad::eOk ? SetPosition(transformation * GetPosition()) : status;
}

Acad::ErrorStatus TDbPipeAttachment::transformBy(const AcGeMatrix3d& transformation) {
    const Acad::ErrorStatus status = check(*this, transformation);
    return status == Acad::eOk ? SetPosition(transformation * GetPosition()) : status;
}
