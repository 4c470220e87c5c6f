// Linetypes with text, made anew with other gaps beside their texts and other text sizes.
#pragma once

#include "afx.h"
#include "dbid.h"

namespace qrs::tools {

// What is asked of the texts in a linetype.
struct TextSpacing {
    double gap = 0.0;    // left and right of a text, drawing units at linetype scale 1; 0 or more
    double scale = 1.0;  // of the text's height, against the linetype it comes from; above 0
};

enum class SpacingResult {
    kSpaced,   // there is one
    kPlain,    // the linetype has no text in a gap of its own
    kTooLong,  // it would have more dashes than a linetype may have
    kRefused,  // it cannot be opened, or the drawing does not take the new one
};

// The linetype of the drawing that draws as linetype does, its texts scaled, with the gap left and right of each; made
// when missing. Its name is the linetype's with what was asked after it ("J$1.5$2": gap 1.5, scale 2; rounded to
// three decimals, as they are then drawn); one of that name is taken as it is. A linetype that was made so counts as
// the one it was made from, so that sizes do not add up. Dashes keep their length, and so do gaps with several texts or
// none. spaced: the null id unless kSpaced.
SpacingResult spacedLinetype(AcDbObjectId linetype, const TextSpacing& spacing, AcDbObjectId& spaced);

}  // namespace qrs::tools
