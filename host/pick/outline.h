// How applications tell the shape of their own entities, so that they can be picked by point and window.
//
//     void tracePipe(const EntityTags& tags, Outline& outline) {
//         const auto start = tags.point(10), end = tags.point(11);
//         if (start && end) outline.segment(*start, *end);
//     }
//     const bool registered = registerOutline("QRS_PIPE", &tracePipe);
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/pick/geometry.h"
#include "host/platform/port.h"

namespace qrs::host::pick {

// The tags of an entity in the drawing, those of its groups (102) and its extended data left out. The first tag with a
// code counts. Numbers that are damaged or not finite count as not there.
class EntityTags {
  public:
    virtual double real(int code, double fallback) const = 0;
    virtual long integer(int code, long fallback) const = 0;
    // Coordinates from code, code + 10 and code + 20 (which may be missing: 0).
    virtual std::optional<Vec> point(int code) const = 0;
    virtual std::wstring text(int code) const = 0;
    // Drawing units per millimetre on paper, as the drawing says.
    virtual double paperScale() const = 0;

  protected:
    ~EntityTags() = default;
};

// A text of one line.
struct OutlineText {
    Vec at;  // where its baseline starts
    double degrees = 0.0;
    double height = 0.0;
    std::wstring text;
};
// How wide its characters are drawn, as usual in technical drawings.
constexpr double kOutlineWidthFactor = 0.7;
// How wide a text is taken to be, in heights.
QRS_HOST_PORT double textWidth(const std::wstring& text);

// Takes shapes in the coordinates of the drawing (of the block, for an entity in one).
class Outline {
  public:
    virtual void point(const Vec& at) = 0;
    virtual void segment(const Vec& start, const Vec& end) = 0;
    // bulge: the tangent of a quarter of the angle, positive counterclockwise seen from above.
    virtual void arc(const Vec& start, const Vec& end, double bulge) = 0;
    // Parallel to the XY plane.
    virtual void circle(const Vec& center, double radius) = 0;
    // Filled.
    virtual void polygon(const std::vector<Vec>& corners) = 0;
    virtual void text(const OutlineText& text) = 0;

  protected:
    ~Outline() = default;
};

using TraceFunction = void (*)(const EntityTags& tags, Outline& outline);

// For entities that drawing files call dxfName (upper case, a text that lives as long as the program). True; false,
// nothing registered, when the name is taken. Entities of names that nobody told of are picked by the picture
// they carry in the drawing file, if any.
QRS_HOST_PORT bool registerOutline(const char* dxfName, TraceFunction trace);

}  // namespace qrs::host::pick
