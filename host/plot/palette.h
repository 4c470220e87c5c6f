// The colours of the editor's palette.
#pragma once

#include "host/plot/canvas.h"

namespace qrs::host::plot {

constexpr long kByBlock = 0;
constexpr long kWhite = 7;  // black on paper
constexpr long kByLayer = 256;

// As it is printed: of index 1 to 255; black for others.
Color paletteColor(long index);
// 0xRRGGBB.
Color trueColor(long value);

}  // namespace qrs::host::plot
