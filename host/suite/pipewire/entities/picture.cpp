// How pipes and what belongs to them draw themselves.
#include <cmath>
#include <limits>
#include <vector>

#include "acgi.h"
#include "entities/shapes.h"
#include "qrs_pipeentity.h"

using qrs::host::pick::OutlineText;
using qrs::host::pick::Vec;
using namespace qrs::suite;

namespace {

AcGePoint3d pointOf(const Vec& at) {
    return {at.x, at.y, at.z};
}
Vec vecOf(const AcGePoint3d& at) {
    return {at.x, at.y, at.z};
}

class WorldOutline final : public qrs::host::pick::Outline {
  public:
    explicit WorldOutline(AcGiWorldDraw& mode) : mode_(mode) {}

    void point(const Vec& at) override { line({pointOf(at)}); }
    void segment(const Vec& start, const Vec& end) override { line({pointOf(start), pointOf(end)}); }
    void arc(const Vec& start, const Vec& end, double bulge) override {
        if (start.x == end.x && start.y == end.y) return segment(start, end);
        const double sweep = 4.0 * std::atan(bulge);
        const AcGeVector3d chord = pointOf(end) - pointOf(start);
        const AcGeVector3d aside(-chord.y, chord.x, 0.0);
        const AcGePoint3d middle = pointOf(start) + chord * 0.5;
        AcGePoint3d center = middle + aside * ((1.0 / bulge - bulge) / 4.0);
        center.z = start.z;
        const AcGeVector3d out = pointOf(start) - center;
        const AcGeVector3d normal = bulge < 0.0 ? -AcGeVector3d::kZAxis : AcGeVector3d::kZAxis;
        mode_.geometry().circularArc(center, out.length(), normal, out.normal(), std::fabs(sweep));
    }
    void circle(const Vec& center, double radius) override {
        mode_.geometry().circle(pointOf(center), radius, AcGeVector3d::kZAxis);
    }
    void polygon(const std::vector<Vec>& corners) override {
        std::vector<AcGePoint3d> points;
        for (const Vec& corner : corners)
            points.push_back(pointOf(corner));
        mode_.subEntityTraits().setFillType(kAcGiFillAlways);
        mode_.geometry().polygon(static_cast<Adesk::UInt32>(points.size()), points.data());
    }
    void text(const OutlineText& text) override {
        const double angle = text.degrees * qrs::host::pick::kRadiansPerDegree;
        mode_.geometry().text(pointOf(text.at), AcGeVector3d::kZAxis, {std::cos(angle), std::sin(angle), 0.0},
                              text.height, qrs::host::pick::kOutlineWidthFactor, 0.0, text.text.c_str());
    }

  private:
    void line(const std::vector<AcGePoint3d>& points) {
        mode_.geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data());
    }

    AcGiWorldDraw& mode_;
};

// The widths that lines can have.
constexpr AcDb::LineWeight kWeights[] = {AcDb::kLnWt000, AcDb::kLnWt005, AcDb::kLnWt009, AcDb::kLnWt013, AcDb::kLnWt015,
                                         AcDb::kLnWt018, AcDb::kLnWt020, AcDb::kLnWt025, AcDb::kLnWt030, AcDb::kLnWt035,
                                         AcDb::kLnWt040, AcDb::kLnWt050, AcDb::kLnWt053, AcDb::kLnWt060, AcDb::kLnWt070,
                                         AcDb::kLnWt080, AcDb::kLnWt090, AcDb::kLnWt100, AcDb::kLnWt106, AcDb::kLnWt120,
                                         AcDb::kLnWt140, AcDb::kLnWt158, AcDb::kLnWt200, AcDb::kLnWt211};

AcDb::LineWeight nearestWeight(double millimetres) {
    AcDb::LineWeight nearest = AcDb::kLnWt000;
    double least = std::numeric_limits<double>::infinity();
    for (const AcDb::LineWeight weight : kWeights) {
        const double away = std::fabs(millimetres * 100.0 - static_cast<double>(weight));
        if (away < least) nearest = weight, least = away;
    }
    return nearest;
}

}  // namespace

double qrs::suite::paperScaleOf(const AcDbObject& object) {
    const AcDbDatabase* database = object.database();
    const double scale = database ? database->dimscale() : 1.0;
    return scale > 0.0 ? scale : 1.0;
}

// A pipe that the file holds without its start is nowhere.
Adesk::Boolean TDbPipe::subWorldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    if (!IsPlaced()) return Adesk::kTrue;
    if (GetLineWidth() > 0.0) mode->subEntityTraits().setLineWeight(nearestWeight(GetLineWidth()));
    const TPipeCurve curve = GetCurve();
    WorldOutline outline(*mode);
    drawPipe({curve.kind, vecOf(curve.start), vecOf(curve.end), curve.bulge, paperScaleOf(*this)}, outline);
    return Adesk::kTrue;
}

Adesk::Boolean TDbPipeNode::subWorldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    if (!IsPlaced()) return Adesk::kTrue;
    WorldOutline outline(*mode);
    drawNode({vecOf(GetPosition()), GetKind(), GetSize(), paperScaleOf(*this)}, outline);
    return Adesk::kTrue;
}

Adesk::Boolean TDbPipeAttachment::subWorldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    if (!IsPlaced()) return Adesk::kTrue;
    WorldOutline outline(*mode);
    drawAttachment({vecOf(GetPosition()), GetKind(), GetText(), GetSize(), GetRotation(), paperScaleOf(*this)},
                   outline);
    return Adesk::kTrue;
}
