// Stand-in for the suite's closed public library: drawing, and the sizes that depend on the plot scale.
//
//     XText text(L"12", position, 3.5 * DocGetPScale(), 0.8, layer, style);
//     if (QdDraw(text, kTextBottomLeft).isNull()) ...
#pragma once

#include "afx.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "host/platform/port.h"

// The drawing's plot scale: drawing units per millimetre on paper, 100 at 1:100 when drawn in millimetres. Taken from
// the drawing's DIMSCALE; 1 when that is no positive number, and without a drawing.
QRS_HOST_PORT double DocGetPScale();

// How large a well is drawn, millimetres on paper.
extern QRS_HOST_PORT int g_nWellRadius;

// Which point of a text lies at its position, row by row.
enum TTextAlign : int {
    kTextTopLeft = 1,
    kTextTopCenter = 2,
    kTextTopRight = 3,
    kTextMiddleLeft = 4,
    kTextMiddleCenter = 5,
    kTextMiddleRight = 6,
    kTextBottomLeft = 7,
    kTextBottomCenter = 8,
    kTextBottomRight = 9,
};

// A text to be drawn: height in drawing units, widthScale is width divided by height.
struct XText {
    CString text;
    AcGePoint3d position;
    double height = 0.0;
    double widthScale = 1.0;
    CString layer;
    CString style;

    XText(CString itsText, const AcGePoint3d& itsPosition, double itsHeight, double itsWidthScale, CString itsLayer,
          CString itsStyle)
        : text(std::move(itsText)),
          position(itsPosition),
          height(itsHeight),
          widthScale(itsWidthScale),
          layer(std::move(itsLayer)),
          style(std::move(itsStyle)) {}
};

// Puts the text into the working database's model space. A layer or style that the drawing lacks, and an empty name,
// leave the text with those of a new one. The null id when there is no drawing, when it does not take the text, and for
// an unknown alignment.
QRS_HOST_PORT AcDbObjectId QdDraw(const XText& text, int align);
