// What entities draw themselves on.
//
//     Adesk::Boolean TMarker::subWorldDraw(AcGiWorldDraw* mode) {
//         mode->subEntityTraits().setLineWeight(AcDb::kLnWt050);
//         mode->geometry().circle(center_, radius_, AcGeVector3d::kZAxis);
//         return Adesk::kTrue;
//     }
//
// Traits that are not set are the entity's own: its layer, colour, linetype and lineweight.
#pragma once

#include "acdb.h"
#include "adesk.h"
#include "gepnt3d.h"
#include "gevec3d.h"

enum AcGiArcType { kAcGiArcSimple = 0 };
enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };

// How the shapes look that are drawn from then on.
class AcGiSubEntityTraits {
  public:
    virtual ~AcGiSubEntityTraits() = default;
    // 0 by block, 1 to 255 palette, 256 by layer.
    virtual void setColor(const Adesk::UInt16 color) = 0;
    virtual void setLineWeight(const AcDb::LineWeight weight) = 0;
    // Whether polygons are filled.
    virtual void setFillType(const AcGiFillType type) = 0;
};

// Shapes, in the coordinates of the block that the entity lies in. True: drawing is to be ended.
class AcGiGeometry {
  public:
    virtual ~AcGiGeometry() = default;
    virtual Adesk::Boolean circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const = 0;
    // sweepAngle: radians around the normal, from startVector on.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                                       const AcGeVector3d& startVector, const double sweepAngle,
                                       const AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* vertices) const = 0;
    // Closed.
    virtual Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* vertices) const = 0;
    // One line; position: where its baseline starts; width: factor; oblique: radians.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                                const double height, const double width, const double oblique,
                                const ACHAR* message) const = 0;
};

class AcGiWorldGeometry : public AcGiGeometry {};

class AcGiWorldDraw {
  public:
    virtual ~AcGiWorldDraw() = default;
    virtual AcGiWorldGeometry& geometry() const = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
};
