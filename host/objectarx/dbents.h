// Entities that have more to tell than what all entities share.
#pragma once

#include "dbmain.h"
#include "gepnt3d.h"

class QRS_HOST_PORT AcDbBlockReference : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference)
    AcDbBlockReference() = default;

    // The block it shows; null when the drawing does not define it.
    AcDbObjectId blockTableRecord() const;
    AcGePoint3d position() const;
    // Radians.
    double rotation() const;
};

class QRS_HOST_PORT AcDbText : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbText)
    AcDbText() = default;

    AcGePoint3d position() const;
    // Drawing units.
    double height() const;
    // Released with acutDelString.
    ACHAR* textString() const;
    // eInvalidInput for null.
    Acad::ErrorStatus setTextString(const ACHAR* text);
};

// A viewport of a paper space.
class QRS_HOST_PORT AcDbViewport : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbViewport)
    AcDbViewport() = default;

    // Number within its layout; 1 is the paper itself, -1 when it is not shown.
    Adesk::Int16 number() const;
    AcGePoint3d centerPoint() const;
    // Drawing units.
    double width() const;
    double height() const;
};
