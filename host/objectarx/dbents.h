// Entities that have more to tell than what all entities share.
//
//     auto* text = new AcDbText(AcGePoint3d(10.0, 5.0, 0.0), L"XL-1", style, 3.5);
//     if (space->appendAcDbEntity(text) == Acad::eOk) text->close();
//     else delete text;
//
// Points are those of the world, also of flat entities (texts, circles, block references) that lie in another plane;
// rotations count in that plane. Angles are radians, lengths drawing units. Setters give eInvalidInput for numbers that
// are none.
#pragma once

#include <memory>

#include "dbmain.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec3d.h"

class QRS_HOST_PORT AcDbLine : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbLine)
    AcDbLine();
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);

    AcGePoint3d startPoint() const;
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    AcGePoint3d endPoint() const;
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
};

class QRS_HOST_PORT AcDbCircle : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbCircle)
    // Of radius 1.
    AcDbCircle();
    AcDbCircle(const AcGePoint3d& center, double radius);

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& point);
    double radius() const;
    // eInvalidInput unless positive.
    Acad::ErrorStatus setRadius(double radius);
};

class QRS_HOST_PORT AcDbBlockReference : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference)
    // Of no block; appending it then gives eKeyNotFound.
    AcDbBlockReference();
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block);

    // The block it shows; null when the drawing does not define it.
    AcDbObjectId blockTableRecord() const;
    // eNullObjectId; eWrongDatabase; eWrongObjectType for what is no block.
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    // Of the plane it lies in, of length 1.
    AcGeVector3d normal() const;
    AcGeScale3d scaleFactors() const;
    // eInvalidInput when one of them is 0.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& factors);
};

class QRS_HOST_PORT AcDbText : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbText)
    // Empty, of height 2.5, in the style "Standard", left on its base line.
    AcDbText();
    // A null style is "Standard"; a height of 0 becomes 2.5.
    AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId(), double height = 0.0,
             double rotation = 0.0);

    // Where the text begins on its base line.
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    // The point a text lies by that is not left on its base line; the origin when it has none.
    AcGePoint3d alignmentPoint() const;
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    AcDb::TextHorzMode horizontalMode() const;
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const;
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    double height() const;
    // eInvalidInput unless positive.
    Acad::ErrorStatus setHeight(double height);
    double widthFactor() const;
    Acad::ErrorStatus setWidthFactor(double factor);
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    // Null when the drawing does not define the style.
    AcDbObjectId textStyle() const;
    // eNullObjectId; eWrongDatabase; eWrongObjectType for what is no text style.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    // Released with acutDelString.
    ACHAR* textString() const;
    // eInvalidInput for null.
    Acad::ErrorStatus setTextString(const ACHAR* text);
};

// A viewport of a paper space. Which layers it freezes is written by handle from AC1015 on, and by name in the
// viewport's extended data in older drawings.
class QRS_HOST_PORT AcDbViewport : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(AcDbViewport)
    AcDbViewport() = default;

    // Number within its layout; 1 is the paper itself, -1 when it is not shown.
    Adesk::Int16 number() const;

    bool isLayerFrozenInViewport(AcDbObjectId layer) const;
    // Layers frozen already stay so; the others are put after them. eInvalidLayer, nothing changed, when an id is no
    // layer of this drawing; eNotApplicable in a drawing that has no place for it.
    Acad::ErrorStatus freezeLayersInViewport(const AcDbObjectIdArray& layers);
    Acad::ErrorStatus thawLayersInViewport(const AcDbObjectIdArray& layers);
    // The frozen layers of the drawing, in the order of the file; what names no layer is left out.
    Acad::ErrorStatus getFrozenLayerList(AcDbObjectIdArray& layers) const;

  private:
    Acad::ErrorStatus checkLayers(const AcDbObjectIdArray& layers) const;
};
