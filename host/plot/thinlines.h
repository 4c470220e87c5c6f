// Thin lines straight into the dots of an image: most of what a drawing has, for which the library's way is long.
#pragma once

#include <cairo.h>

#include <cstdint>

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
    // A colour ready to be mixed: two channels at once, and the third.
    struct Ink {
        explicit Ink(const Color& color)
            : redAndBlue(static_cast<std::uint32_t>(color.red) << 16 | color.blue),
              green(static_cast<std::uint32_t>(color.green) << 8) {}
        std::uint32_t redAndBlue;
        std::uint32_t green;
    };
    // A line seen along the axis it keeps closer to.
    struct Course {
        double main;  // where it begins
        double side;
        double mainAlong;  // of its direction
        double sideAlong;
        double length;
        double half;   // its width
        double reach;  // along the other axis
        bool isSteep;
    };

    static void blend(unsigned char* place, const Ink& ink, std::uint32_t weight);
    void ends(const Course& course, int first, int last, const Ink& ink);
    void middle(const Course& course, int first, int last, const Ink& ink);

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
