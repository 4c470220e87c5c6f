// The kinds of entities that have a shape here, and how each is drawn.
#pragma once

#include <string_view>

#include "host/pick/entity.h"
#include "host/pick/pen.h"

namespace qrs::host::pick {

// Where an entity puts a block.
struct Placement {
    std::wstring block;
    Transform first;  // from the block's coordinates, its base point at the origin
    Vec columnStep;
    Vec rowStep;
    int columns = 1;
    int rows = 1;
    bool atBasePoint = true;  // false: the block's coordinates are those of the drawing
};

struct Kind {
    const char* name;                          // in drawing files
    void (*draw)(const Entity&, const Pen&);   // null for one that shows nothing but a block
    bool (*place)(const Entity&, Placement&);  // false when the entity is damaged, or shows no block
    TraceFunction trace;                       // of an application; then the others are null
};

// Entities that nobody knows are shown by the picture they carry, if any.
const Kind* findKind(std::string_view dxfName);
void drawEntity(const Kind& kind, const Entity& entity, const Pen& pen);

// Damaged entities draw nothing, or what of them can be told.
void drawLine(const Entity& entity, const Pen& pen);
void drawCircle(const Entity& entity, const Pen& pen);
void drawArc(const Entity& entity, const Pen& pen);
void drawEllipse(const Entity& entity, const Pen& pen);
void drawMesh(const Entity& entity, const Pen& pen);
void drawPoint(const Entity& entity, const Pen& pen);
void drawRay(const Entity& entity, const Pen& pen);
void drawEndlessLine(const Entity& entity, const Pen& pen);
void drawLeader(const Entity& entity, const Pen& pen);
void drawMultileader(const Entity& entity, const Pen& pen);
void drawMultiline(const Entity& entity, const Pen& pen);
void drawSpline(const Entity& entity, const Pen& pen);
void drawLightPolyline(const Entity& entity, const Pen& pen);
void drawPolyline(const Entity& entity, const Pen& pen);
void drawHatch(const Entity& entity, const Pen& pen);
void drawText(const Entity& entity, const Pen& pen);
void drawAttribute(const Entity& entity, const Pen& pen);
void drawAttributeDefinition(const Entity& entity, const Pen& pen);
// In the place of a definition's, the text that somebody gave to the attribute.
void drawAttributeText(const Entity& definition, const std::wstring& text, const Pen& pen);
void drawParagraphs(const Entity& entity, const Pen& pen);
void drawSolid(const Entity& entity, const Pen& pen);
void drawFace(const Entity& entity, const Pen& pen);
void drawViewport(const Entity& entity, const Pen& pen);
void drawImage(const Entity& entity, const Pen& pen);
void drawObjectFrame(const Entity& entity, const Pen& pen);
void drawProxy(const Entity& entity, const Pen& pen);
void drawTolerance(const Entity& entity, const Pen& pen);

bool placeInsert(const Entity& entity, Placement& placement);
bool placeTable(const Entity& entity, Placement& placement);
bool placeDimension(const Entity& entity, Placement& placement);
bool placeMultileader(const Entity& entity, Placement& placement);

// A spline by its control points; weights may be empty (all 1). Splines whose numbers do not fit draw nothing. Curves
// are cut into straight pieces that keep as close to them as the probe asks for, but not into more than 4096 between
// two knots; otherwise closer than 1/500 of the extents of the control points there.
struct SplineData {
    int degree = 0;
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<Vec> controls;
};
void drawSplineCurve(const SplineData& spline, const Pen& pen);
// Points along it, for areas.
void appendSplinePoints(const SplineData& spline, std::vector<Vec>& points);

}  // namespace qrs::host::pick
