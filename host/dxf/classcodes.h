// Group codes whose meaning depends on the record they stand in, by the class of it. What a class has in common with
// most others bears the names of groupcodes.h.
#pragma once

#include "host/dxf/groupcodes.h"

namespace qrs::dxf::codes {

// --- entities

namespace curve {  // circles and arcs
constexpr int kRadius = 40;
constexpr int kStartAngle = 50;  // degrees
constexpr int kEndAngle = 51;
}  // namespace curve

namespace ellipse {
constexpr int kMajorAxis = 11;
constexpr int kRatio = 40;           // of the minor axis to the major one
constexpr int kStartParameter = 41;  // radians
constexpr int kEndParameter = 42;
}  // namespace ellipse

namespace ray {  // and lines without ends
constexpr int kDirection = 11;
}

namespace point {
constexpr int kAxisAngle = 50;
}

namespace spline {
constexpr int kControlPoint = 10;
constexpr int kFitPoint = 11;
constexpr int kStartTangent = 12;
constexpr int kEndTangent = 13;
constexpr int kKnot = 40;
constexpr int kWeight = 41;
constexpr int kDegree = 71;
}  // namespace spline

namespace polyline {  // both kinds, their vertices, meshes
constexpr int kElevation = 30;
constexpr int kStartWidth = 40;
constexpr int kEndWidth = 41;
constexpr int kBulge = 42;
constexpr int kConstantWidth = 43;  // of one in one record
constexpr int kTangent = 50;
constexpr int kRows = 71;  // of a mesh
constexpr int kColumns = 72;
constexpr int kFirstFaceVertex = 71;  // of a face
constexpr int kLastFaceVertex = 74;
}  // namespace polyline

namespace mline {
constexpr int kVertex = 11;
constexpr int kMiter = 13;
constexpr int kElementParameter = 41;
constexpr int kParameterCount = 74;
constexpr int kFlags = 71;
}  // namespace mline

namespace face {  // also solids and traces
constexpr int kCorner = 10;
constexpr int kSecondCorner = 11;
constexpr int kThirdCorner = 12;
constexpr int kFourthCorner = 13;
constexpr int kHiddenEdges = 70;
}  // namespace face

namespace text {  // also attributes and shapes
constexpr int kAlignmentPoint = 11;
constexpr int kTag = 2;  // of attributes
constexpr int kHeight = 40;
constexpr int kWidthFactor = 41;
constexpr int kRotation = 50;
constexpr int kOblique = 51;
constexpr int kGeneration = 71;
constexpr int kHorizontal = 72;
constexpr int kVertical = 73;
constexpr int kAttributeVertical = 74;
}  // namespace text

namespace mtext {
constexpr int kDirection = 11;
constexpr int kHeight = 40;
constexpr int kReferenceWidth = 41;
constexpr int kWidth = 42;
constexpr int kTotalHeight = 43;
constexpr int kLineSpacing = 44;
constexpr int kDefinedHeight = 46;
constexpr int kColumnWidth = 48;
constexpr int kColumnGutter = 49;
constexpr int kRotation = 50;
constexpr int kAttachment = 71;
constexpr int kMask = 90;
constexpr int kMaskScale = 45;
constexpr int kMaskColor = 63;
constexpr int kMaskTrueColor = 421;
constexpr int kMaskTransparency = 441;
}  // namespace mtext

namespace mtextcolumns {  // what new drawings write after a text of several lines, in an embedded object
constexpr int kDirection = 10;
constexpr int kPosition = 11;
constexpr int kReferenceWidth = 40;
constexpr int kDefinedHeight = 41;
constexpr int kWidth = 42;
constexpr int kHeight = 43;
constexpr int kColumnWidth = 44;
constexpr int kColumnGutter = 45;
constexpr int kColumnHeight = 46;
}  // namespace mtextcolumns

namespace insert {
constexpr int kScaleX = 41;
constexpr int kScaleY = 42;
constexpr int kScaleZ = 43;
constexpr int kColumnSpacing = 44;
constexpr int kRowSpacing = 45;
constexpr int kRotation = 50;
constexpr int kAttributesFollow = 66;
constexpr int kColumnCount = 70;
constexpr int kRowCount = 71;
}  // namespace insert

namespace table {
constexpr int kDirection = 11;
}

namespace dimension {  // also leaders and tolerances
constexpr int kStyle = 3;
constexpr int kTextPoint = 11;
constexpr int kShift = 12;
constexpr int kFirstPoint = 13;
constexpr int kSecondPoint = 14;
constexpr int kThirdPoint = 15;
constexpr int kArcPoint = 16;
// A list in the editor's extended data: what a dimension has instead of its style's, each value after the group code
// that the style has it under.
constexpr const char* kOverrides = "DSTYLE";
constexpr int kTextStyle = 340;  // of the style
}  // namespace dimension

namespace leader {
constexpr int kHasHead = 71;
constexpr int kDirection = 211;
constexpr int kBlockOffset = 212;
constexpr int kAnnotationOffset = 213;
constexpr int kAnnotationKind = 73;
constexpr int kNoAnnotation = 3;  // a value of it
constexpr int kAnnotation = 340;
}  // namespace leader

namespace mleader {
constexpr int kAttribute = 330;
constexpr int kAttributeNumber = 177;
constexpr int kAttributeWidth = 44;
constexpr int kAttributeText = 302;
constexpr int kContent = 172;
constexpr int kIsText = 2;     // a value of it
constexpr int kStyle = 343;    // of its texts
constexpr int kHasFeet = 291;  // outside of the brackets
// Fields in brackets, one in the other: what it shows, each foot, and the lines that lead to it.
constexpr int kContext = 300;
constexpr int kContextEnd = 301;
constexpr int kLeader = 302;
constexpr int kLeaderEnd = 303;
constexpr int kLine = 304;
constexpr int kLineEnd = 305;
constexpr int kText = 304;
constexpr int kTextPoint = 12;
constexpr int kTextDirection = 13;
constexpr int kTextHeight = 41;
constexpr int kTextWidth = 43;
constexpr int kArrowSize = 140;
constexpr int kTextColumn = 171;
constexpr int kHasText = 290;
constexpr int kTextStyle = 340;
constexpr int kFootDirection = 11;
constexpr int kFootLength = 40;
constexpr int kHasBlock = 296;
constexpr int kBlock = 341;
constexpr int kBlockNormal = 14;
constexpr int kBlockPoint = 15;
constexpr int kBlockScale = 16;
constexpr int kBlockRotation = 46;  // radians
}  // namespace mleader

namespace mesh {
constexpr int kFaceListSize = 93;
constexpr int kEdgeCount = 94;
constexpr int kListItem = 90;
}  // namespace mesh

namespace tolerance {
constexpr int kDirection = 11;
}

namespace image {
constexpr int kDotAcross = 11;
constexpr int kDotUp = 12;
constexpr int kSize = 13;
constexpr int kClipCorner = 14;
}  // namespace image

namespace hatch {
constexpr int kElevation = 30;
constexpr int kIsSolid = 70;
constexpr int kIsAssociative = 71;
constexpr int kPathCount = 91;
constexpr int kPathFlags = 92;
constexpr int kHasBulge = 72;  // of a path that is a polyline
constexpr int kIsClosed = 73;
constexpr int kBulge = 42;
constexpr int kEdgeCount = 93;  // or of the polyline's corners
constexpr int kEdgeType = 72;
constexpr int kMajorAxis = 11;  // of an edge that is an ellipse
constexpr int kRatio = 40;
constexpr int kRadius = 40;
constexpr int kStartAngle = 50;
constexpr int kEndAngle = 51;
constexpr int kIsCounterclockwise = 73;
constexpr int kDegree = 94;  // of an edge that is a spline
constexpr int kIsRational = 73;
constexpr int kIsPeriodic = 74;
constexpr int kKnotCount = 95;
constexpr int kControlCount = 96;
constexpr int kFitCount = 97;
constexpr int kKnot = 40;
constexpr int kWeight = 42;
constexpr int kFitPoint = 11;
constexpr int kStartTangent = 12;
constexpr int kEndTangent = 13;
constexpr int kStyle = 75;
constexpr int kPatternScale = 41;
constexpr int kPatternAngle = 52;
constexpr int kPatternLineCount = 78;
constexpr int kLineAngle = 53;
constexpr int kLineBaseX = 43;
constexpr int kLineBaseY = 44;
constexpr int kLineOffsetX = 45;
constexpr int kLineOffsetY = 46;
constexpr int kDash = 49;
constexpr int kSeedCount = 98;
constexpr int kIsGradient = 450;
constexpr int kGradientColor = 421;
constexpr int kBoundaryCount = 97;  // of a path, after its edges
constexpr int kBoundary = 330;
}  // namespace hatch

namespace viewport {
constexpr int kSheetName = 1;  // of its plot style
constexpr int kWidth = 40;
constexpr int kHeight = 41;
constexpr int kStack = 68;   // place among the viewports that are on; 1 takes the input
constexpr int kNumber = 69;  // 1 is the sheet itself
constexpr int kViewCenter = 12;
constexpr int kSnapBase = 13;
constexpr int kSnapSpacing = 14;
constexpr int kGridSpacing = 15;
constexpr int kViewDirection = 16;
constexpr int kViewTarget = 17;
constexpr int kLensLength = 42;
constexpr int kFrontClip = 43;
constexpr int kBackClip = 44;
constexpr int kViewHeight = 45;
constexpr int kSnapAngle = 50;
constexpr int kViewTwist = 51;
constexpr int kCircleZoom = 72;
constexpr int kStatus = 90;
constexpr int kIsClipped = 0x10000;    // a bit of it
constexpr int kFrozenLayer = 331;      // a soft pointer
constexpr int kHardFrozenLayer = 341;  // as some programs write it
constexpr int kOutline = 340;
}  // namespace viewport

// --- tables

namespace vport {
constexpr int kViewCenter = 12;
constexpr int kViewTarget = 17;
constexpr int kViewHeight = 40;
constexpr int kViewTwist = 51;
}  // namespace vport

namespace layer {
constexpr int kMaterial = 347;
constexpr int kVisualStyle = 348;
constexpr int kOverriddenIn = 335;  // the viewport in which a property is another one
}  // namespace layer

namespace dimstyle {
constexpr int kScale = 40;
constexpr int kArrowSize = 41;
}  // namespace dimstyle

namespace dimstyles {  // the head of the table
constexpr int kStyleCount = 71;
constexpr int kStyle = 340;
}  // namespace dimstyles

namespace linetype {
constexpr int kDescription = 3;
constexpr int kAlignment = 72;
constexpr int kDashCount = 73;
constexpr int kPatternLength = 40;
// Of one dash; all but the length are there only where the drawing can hold shapes.
constexpr int kDash = 49;
constexpr int kCarried = 74;
constexpr int kShapeNumber = 75;
constexpr int kStyle = 340;
constexpr int kScale = 46;
constexpr int kRotation = 50;  // degrees
constexpr int kOffsetX = 44;
constexpr int kOffsetY = 45;
constexpr int kText = 9;
}  // namespace linetype

namespace textstyle {
constexpr int kFont = 3;
constexpr int kBigFont = 4;
constexpr int kHeight = 40;
constexpr int kWidthFactor = 41;
constexpr int kLastHeight = 42;
constexpr int kOblique = 50;  // degrees
constexpr int kGeneration = 71;
}  // namespace textstyle

namespace blockrecord {
constexpr int kUnits = 70;
constexpr int kIsExplodable = 280;
constexpr int kScalesUniformly = 281;
constexpr int kLayout = 340;
constexpr int kBlockReference = 331;  // in the group BLKREFS
}  // namespace blockrecord

namespace block {  // the head of a definition
constexpr int kPath = 1;
constexpr int kSecondName = 3;
}  // namespace block

// --- classes and objects

namespace classes {
constexpr int kRecordName = 1;
constexpr int kClassName = 2;
constexpr int kApplication = 3;
constexpr int kProxyFlags = 90;
constexpr int kCount = 91;
constexpr int kWasProxy = 280;
constexpr int kIsEntity = 281;
}  // namespace classes

namespace dictionary {
constexpr int kIsHardOwner = 280;
constexpr int kCloning = 281;  // how doubled names are dealt with when drawings are put together
}  // namespace dictionary

namespace xrecord {
constexpr int kCloning = 280;
}

namespace layout {
constexpr int kPlotFlags = 70;  // of the plot settings before it
constexpr int kTab = 71;
constexpr int kBlock = 330;
constexpr int kLastViewport = 331;
}  // namespace layout

namespace plotsettings {  // of a layout; lengths in millimetres
constexpr int kLeftMargin = 40;
constexpr int kBottomMargin = 41;
constexpr int kRightMargin = 42;
constexpr int kTopMargin = 43;
constexpr int kPaperWidth = 44;
constexpr int kPaperHeight = 45;
constexpr int kWindowLeft = 48;
constexpr int kWindowBottom = 49;
constexpr int kWindowRight = 140;
constexpr int kWindowTop = 141;
constexpr int kPaperUnits = 142;  // so many of them are
constexpr int kDrawingUnits = 143;
constexpr int kUnits = 72;     // 0 inches, 1 millimetres, 2 dots
constexpr int kRotation = 73;  // quarter turns
constexpr int kArea = 74;
constexpr int kStandardScale = 75;
}  // namespace plotsettings

namespace idset {
constexpr int kCount = 90;
constexpr int kEntity = 330;
}  // namespace idset

namespace field {
constexpr int kChildCount = 90;
constexpr int kChild = 360;
}  // namespace field

namespace layerindex {
constexpr int kEntities = 360;
constexpr int kEntityCount = 90;
}  // namespace layerindex

namespace blockaction {
constexpr int kEntityCount = 71;
constexpr int kEntity = 330;
}  // namespace blockaction

namespace blockvisibility {
constexpr int kEntityCount = 93;
constexpr int kEntity = 331;
constexpr int kStateEntityCount = 94;  // of one state
constexpr int kStateEntity = 332;
constexpr int kStateParameterCount = 95;
constexpr int kStateParameter = 333;
}  // namespace blockvisibility

namespace sortents {
constexpr int kSpace = 330;
constexpr int kEntity = 331;
constexpr int kSortHandle = 5;
}  // namespace sortents

// --- variables of the header

namespace variable {
constexpr int kVersion = 1;
constexpr int kCodePage = 3;
constexpr int kReal = 40;
constexpr int kAngle = 50;
constexpr int kInteger = 70;
constexpr int kBoolean = 290;
}  // namespace variable

}  // namespace qrs::dxf::codes
