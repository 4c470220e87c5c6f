// Symbols of pipes after the plan symbols of the trade's drawing standard, as strokes.
#include "entities/shapes.h"

#include <cmath>
#include <vector>

#include "qrs_pipeentity.h"

namespace qrs::suite {

using host::pick::Outline;
using host::pick::OutlineText;
using host::pick::Vec;

namespace {

// On paper, millimetres.
constexpr double kRiserRadius = 1.0;
constexpr double kWellDiameter = 7.0;
constexpr double kEquipmentSide = 8.0;

enum class Stroke { Line, Circle, Arc, Triangle, Dot };

// A stroke of a symbol of size 1 with its middle at the origin; the pipe runs along x, water to its positive side.
struct SymbolStroke {
    int kind;  // of the attachment
    Stroke stroke;
    // Line: two points; Arc: two points and the bulge; Circle and Dot (a filled circle): middle and radius; Triangle
    // (filled): three points.
    double numbers[6];
};

using Attachment = TDbPipeAttachment;

constexpr SymbolStroke kStrokes[] = {
    {Attachment::kOther, Stroke::Line, {-0.35, -0.35, 0.35, 0.35}},
    {Attachment::kOther, Stroke::Line, {-0.35, 0.35, 0.35, -0.35}},
    {Attachment::kArrow, Stroke::Triangle, {0.5, 0.0, -0.5, 0.2, -0.5, -0.2}},
    // Two triangles, tip to tip, with a slide between them.
    {Attachment::kGateValve, Stroke::Line, {-0.5, -0.25, -0.5, 0.25}},
    {Attachment::kGateValve, Stroke::Line, {-0.5, 0.25, 0.5, -0.25}},
    {Attachment::kGateValve, Stroke::Line, {0.5, -0.25, 0.5, 0.25}},
    {Attachment::kGateValve, Stroke::Line, {0.5, 0.25, -0.5, -0.25}},
    {Attachment::kGateValve, Stroke::Line, {0.0, -0.25, 0.0, 0.25}},
    // A flap between two seats, and which way it lets pass.
    {Attachment::kCheckValve, Stroke::Line, {-0.5, -0.25, -0.5, 0.25}},
    {Attachment::kCheckValve, Stroke::Line, {-0.5, 0.25, 0.5, -0.25}},
    {Attachment::kCheckValve, Stroke::Line, {0.5, -0.25, 0.5, 0.25}},
    {Attachment::kCheckValve, Stroke::Triangle, {0.5, -0.25, 0.15, -0.18, 0.24, 0.02}},
    {Attachment::kStopValve, Stroke::Line, {-0.5, -0.25, -0.5, 0.25}},
    {Attachment::kStopValve, Stroke::Line, {-0.5, 0.25, 0.5, -0.25}},
    {Attachment::kStopValve, Stroke::Line, {0.5, -0.25, 0.5, 0.25}},
    {Attachment::kStopValve, Stroke::Line, {0.5, 0.25, -0.5, -0.25}},
    {Attachment::kStopValve, Stroke::Dot, {0.0, 0.0, 0.12}},
    {Attachment::kWaterMeter, Stroke::Line, {-0.5, -0.3, 0.5, -0.3}},
    {Attachment::kWaterMeter, Stroke::Line, {0.5, -0.3, 0.5, 0.3}},
    {Attachment::kWaterMeter, Stroke::Line, {0.5, 0.3, -0.5, 0.3}},
    {Attachment::kWaterMeter, Stroke::Line, {-0.5, 0.3, -0.5, -0.3}},
    {Attachment::kWaterMeter, Stroke::Triangle, {0.5, 0.0, -0.1, 0.3, -0.1, -0.3}},
    {Attachment::kFloorDrain, Stroke::Circle, {0.0, 0.0, 0.5}},
    {Attachment::kFloorDrain, Stroke::Line, {-0.354, -0.354, 0.354, 0.354}},
    {Attachment::kFloorDrain, Stroke::Line, {-0.483, -0.129, 0.129, 0.483}},
    {Attachment::kFloorDrain, Stroke::Line, {-0.129, -0.483, 0.483, 0.129}},
    {Attachment::kCleanout, Stroke::Circle, {0.0, 0.0, 0.5}},
    {Attachment::kCleanout, Stroke::Line, {-0.5, 0.0, 0.5, 0.0}},
    {Attachment::kCleanout, Stroke::Line, {0.0, -0.5, 0.0, 0.5}},
    {Attachment::kInspectionOpening, Stroke::Line, {-0.5, -0.3, -0.5, 0.3}},
    {Attachment::kInspectionOpening, Stroke::Line, {-0.5, 0.0, 0.5, 0.0}},
    {Attachment::kInspectionOpening, Stroke::Line, {0.5, -0.3, 0.5, 0.3}},
    {Attachment::kTrap, Stroke::Arc, {-0.5, 0.0, 0.0, 0.0, 1.0}},
    {Attachment::kTrap, Stroke::Arc, {0.0, 0.0, 0.5, 0.0, -1.0}},
    {Attachment::kTap, Stroke::Line, {-0.5, 0.0, 0.3, 0.0}},
    {Attachment::kTap, Stroke::Line, {0.3, -0.25, 0.3, 0.25}},
    {Attachment::kVentCap, Stroke::Arc, {-0.5, 0.0, 0.5, 0.0, -1.0}},
    {Attachment::kVentCap, Stroke::Line, {-0.5, 0.0, 0.5, 0.0}},
    {Attachment::kVentCap, Stroke::Line, {0.0, 0.0, 0.0, -0.5}},
    {Attachment::kSprinklerHead, Stroke::Circle, {0.0, 0.0, 0.5}},
    {Attachment::kSprinklerHead, Stroke::Dot, {0.0, 0.0, 0.15}},
    {Attachment::kFireHydrant, Stroke::Line, {-0.5, -0.25, 0.5, -0.25}},
    {Attachment::kFireHydrant, Stroke::Line, {0.5, -0.25, 0.5, 0.25}},
    {Attachment::kFireHydrant, Stroke::Line, {0.5, 0.25, -0.5, 0.25}},
    {Attachment::kFireHydrant, Stroke::Line, {-0.5, 0.25, -0.5, -0.25}},
    {Attachment::kFireHydrant, Stroke::Triangle, {-0.5, -0.25, 0.5, -0.25, 0.5, 0.25}},
    {Attachment::kRoofOutlet, Stroke::Circle, {0.0, 0.0, 0.5}},
    {Attachment::kRoofOutlet, Stroke::Circle, {0.0, 0.0, 0.25}},
    {Attachment::kRoofOutlet, Stroke::Line, {0.0, -0.5, 0.0, 0.5}},
};

// Where a symbol stands, how large and how turned.
class Frame {
  public:
    Frame(const Vec& origin, double size, double degrees)
        : origin_(origin),
          across_{size * std::cos(degrees * host::pick::kRadiansPerDegree),
                  size * std::sin(degrees * host::pick::kRadiansPerDegree), 0.0},
          size_(size) {}

    Vec at(double x, double y) const { return origin_ + across_ * x + Vec{-across_.y, across_.x, 0.0} * y; }
    double size() const { return size_; }
    void segment(Outline& outline, double x1, double y1, double x2, double y2) const {
        outline.segment(at(x1, y1), at(x2, y2));
    }

  private:
    Vec origin_;
    Vec across_;
    double size_;
};

void drawDot(const Vec& middle, double radius, Outline& outline) {
    constexpr int kCorners = 12;
    std::vector<Vec> corners;
    for (int i = 0; i < kCorners; ++i) {
        const double angle = 2.0 * host::pick::kPi * i / kCorners;
        corners.push_back(middle + Vec{radius * std::cos(angle), radius * std::sin(angle), 0.0});
    }
    outline.polygon(corners);
}

void drawStroke(const SymbolStroke& stroke, const Frame& frame, Outline& outline) {
    const double(&n)[6] = stroke.numbers;
    switch (stroke.stroke) {
        case Stroke::Line:
            return outline.segment(frame.at(n[0], n[1]), frame.at(n[2], n[3]));
        case Stroke::Arc:
            return outline.arc(frame.at(n[0], n[1]), frame.at(n[2], n[3]), n[4]);
        case Stroke::Circle:
            return outline.circle(frame.at(n[0], n[1]), n[2] * frame.size());
        case Stroke::Dot:
            return drawDot(frame.at(n[0], n[1]), n[2] * frame.size(), outline);
        case Stroke::Triangle:
            return outline.polygon({frame.at(n[0], n[1]), frame.at(n[2], n[3]), frame.at(n[4], n[5])});
    }
}

double sizeOf(double size, double onPaper, double paperScale) {
    return size > 0.0 ? size : onPaper * paperScale;
}

// The arrow below a slope's text points downhill; the text reads from the left or from below all the same.
void drawSlope(const Frame& frame, const AttachmentLook& slope, Outline& outline) {
    constexpr double kNoText = 3.0;  // lengths in heights of the text
    constexpr double kBelow = 0.4;
    constexpr double kHead = 1.0;
    const double width = slope.text.empty() ? kNoText : host::pick::textWidth(slope.text);
    const bool isTurned = !isReadable(slope.rotation);
    const double y = isTurned ? kBelow : -kBelow;
    frame.segment(outline, 0.0, y, width, y);
    outline.polygon({frame.at(width, y), frame.at(width - kHead, y + 0.2), frame.at(width - kHead, y - 0.2)});
    if (slope.text.empty()) return;
    const double angle = isTurned ? slope.rotation + 180.0 : slope.rotation;
    outline.text({isTurned ? frame.at(width, 0.0) : frame.at(0.0, 0.0), angle, frame.size(), slope.text});
}

// From the riser up to a line that the text stands on.
void drawLabel(const Frame& frame, const AttachmentLook& label, Outline& outline) {
    constexpr double kElbowX = 1.0;  // in heights of the text
    constexpr double kElbowY = 2.0;
    constexpr double kMargin = 0.3;
    frame.segment(outline, 0.0, 0.0, kElbowX, kElbowY);
    const double width = host::pick::textWidth(label.text) + 2.0 * kMargin;
    frame.segment(outline, kElbowX, kElbowY, kElbowX + width, kElbowY);
    if (!label.text.empty())
        outline.text({frame.at(kElbowX + kMargin, kElbowY + kMargin), label.rotation, frame.size(), label.text});
}

}  // namespace

bool isReadable(double degrees) {
    constexpr double kAlmost = 1e-6;
    const double angle = std::remainder(degrees, 360.0);
    return angle > -90.0 + kAlmost && angle <= 90.0 + kAlmost;
}

// A path of a kind that is not known is shown by its ends.
void drawPipe(const PipeLook& pipe, Outline& outline) {
    TPipeCurve curve =
        TPipeCurve::Line({pipe.start.x, pipe.start.y, pipe.start.z}, {pipe.end.x, pipe.end.y, pipe.end.z});
    curve.kind = pipe.kind;
    if (curve.kind == TPipeCurve::kArc && pipe.bulge != 0.0) {
        outline.arc(pipe.start, pipe.end, pipe.bulge);
    } else if (curve.IsLine() || curve.kind == TPipeCurve::kArc) {
        outline.segment(pipe.start, pipe.end);
    } else {
        outline.point(pipe.start);
        outline.point(pipe.end);
    }
    // A pipe of no length stands nowhere.
    if (curve.IsVertical() && curve.start.z != curve.end.z) outline.circle(pipe.start, kRiserRadius * pipe.paperScale);
}

void drawNode(const NodeLook& node, Outline& outline) {
    if (node.kind == TDbPipeNode::kWell)
        return outline.circle(node.position, sizeOf(node.size, kWellDiameter, node.paperScale) / 2.0);
    if (node.kind == TDbPipeNode::kEquipment) {
        const Frame frame(node.position, sizeOf(node.size, kEquipmentSide, node.paperScale) / 2.0, 0.0);
        frame.segment(outline, -1.0, -1.0, 1.0, -1.0);
        frame.segment(outline, 1.0, -1.0, 1.0, 1.0);
        frame.segment(outline, 1.0, 1.0, -1.0, 1.0);
        frame.segment(outline, -1.0, 1.0, -1.0, -1.0);
        return frame.segment(outline, -1.0, -1.0, 1.0, 1.0);
    }
    if (node.size > 0.0) return drawDot(node.position, node.size / 2.0, outline);
    outline.point(node.position);
}

void drawAttachment(const AttachmentLook& attachment, Outline& outline) {
    const Frame frame(attachment.position, sizeOf(attachment.size, kSizeOnPaper, attachment.paperScale),
                      attachment.rotation);
    if (attachment.kind == Attachment::kSlope) return drawSlope(frame, attachment, outline);
    if (attachment.kind == Attachment::kRiserLabel) return drawLabel(frame, attachment, outline);
    if (attachment.kind == Attachment::kDimText && !attachment.text.empty())
        return outline.text({attachment.position, attachment.rotation, frame.size(), attachment.text});
    bool isDrawn = false;
    for (const SymbolStroke& stroke : kStrokes) {
        if (stroke.kind != attachment.kind) continue;
        drawStroke(stroke, frame, outline);
        isDrawn = true;
    }
    if (!isDrawn) outline.point(attachment.position);
}

}  // namespace qrs::suite
