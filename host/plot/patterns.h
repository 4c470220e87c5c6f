// The lines of a hatch pattern, cut at the edges of what they fill.
#pragma once

#include "host/pick/picture.h"
#include "host/plot/canvas.h"

namespace qrs::host::plot {

// False: so fine a pattern that it was drawn as an area.
bool fillWithPattern(Canvas& canvas, const pick::Filling& filling, const pick::Transform& toPage, const Stroke& stroke);

}  // namespace qrs::host::plot
