// The shapes of pipes and of what belongs to them: one place for what can be picked, what is plotted and what the
// drawing file shows to other programs.
#pragma once

#include <string>

#include "host/pick/outline.h"

class AcDbObject;

namespace qrs::suite {

// Of symbols and texts that do not tell, in millimetres on paper.
constexpr double kSizeOnPaper = 3.0;
// Drawing units per millimetre on paper, as the object's drawing says.
double paperScaleOf(const AcDbObject& object);

// paperScale: drawing units per millimetre on paper. Sizes of 0 are those that symbols have on paper.

struct PipeLook {
    int kind = 0;  // of the path
    host::pick::Vec start;
    host::pick::Vec end;
    double bulge = 0.0;
    double paperScale = 1.0;
};

struct NodeLook {
    host::pick::Vec position;
    int kind = 0;
    double size = 0.0;
    double paperScale = 1.0;
};

struct AttachmentLook {
    host::pick::Vec position;
    int kind = 0;
    std::wstring text;
    double size = 0.0;
    double rotation = 0.0;  // degrees
    double paperScale = 1.0;
};

// Whether a text at this angle reads from the left or from below.
bool isReadable(double degrees);

void drawPipe(const PipeLook& pipe, host::pick::Outline& outline);
void drawNode(const NodeLook& node, host::pick::Outline& outline);
void drawAttachment(const AttachmentLook& attachment, host::pick::Outline& outline);

}  // namespace qrs::suite
