// Thin lines straight into the dots of an image: most of what a drawing has, for which the library's way is long.
#pragma once

#include <cairo.h>

#include "host/plot/canvas.h"

namespace qrs::host::plot {

class ThinLines {
  public:
    // Of a surface; one that is no image cannot be drawn into so.
    explicit ThinLines(cairo_surface_t* surface);

    bool canDraw() const { return dots_ != nullptr; }
    // Only within this part of the image, dots.
    void setClip(const Box& clip);
    // Blended at their edges as the library does it. The surface must have been flushed.
    void line(const Vec& from, const Vec& to, const Color& color, double width);

  private:
    void blend(int x, int y, const Color& color, double share);

    unsigned char* dots_ = nullptr;
    int stride_ = 0;
    int width_ = 0;
    int height_ = 0;
    int left_ = 0;
    int top_ = 0;
    int right_ = 0;  // one further
    int bottom_ = 0;
};

}  // namespace qrs::host::plot
