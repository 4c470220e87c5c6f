// What a picture takes besides lines, arcs and areas: what is more than its lines when it is looked at.
//
// A probe that is a picture gives itself out as one (Probe::picture()); the shapes of entities then tell it texts,
// patterns and the like in place of the boxes and outlines that picking needs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/pick/entity.h"
#include "host/pick/geometry.h"

namespace qrs::host::pick {

// An entity that comes next, and where it lies.
struct Shown {
    const Entity& entity;
    const std::wstring& prefix;  // of its drawing's layers in the scene's drawing; empty for that itself
    const Transform& toWorld;
    int depth;        // blocks it lies in; attributes count one more than their reference
    bool showsBlock;  // what comes up to leave() lies in it
};

enum class TextAcross { Left, Center, Right, Aligned, Middle, Fit };
enum class TextUp { Baseline, Bottom, Half, Top };

// A text of one line, in coordinates of its own: its anchor at the origin, its baseline along x.
struct TextLine {
    std::wstring text;   // with its %% codes
    std::wstring style;  // name; empty: the usual one
    double height = 0.0;
    double widthFactor = 1.0;
    double oblique = 0.0;  // radians
    TextAcross across = TextAcross::Left;
    TextUp up = TextUp::Baseline;
    double length = 0.0;  // of what is aligned or fitted
    bool isBackwards = false;
    bool isUpsideDown = false;
};

// What lies under a text.
struct TextGround {
    double border = 0.0;   // around the text, in its heights
    bool isFilled = true;  // what was drawn before is covered
    bool isFramed = false;
    std::optional<long> rgb;    // of the filling, 0xRRGGBB
    std::optional<long> index;  // or of the palette; neither: the colour of the paper
    std::uint8_t opacity = 255;
};

// A text of several lines, likewise.
struct Paragraphs {
    std::wstring text;  // with its codes
    std::wstring style;
    double height = 0.0;
    double width = 0.0;  // lines are broken at it; 0: they are not
    double lineSpacing = 1.0;
    int column = 0;               // of the anchor: 0 left, 1 middle, 2 right
    int row = 0;                  // 0 top, 1 middle, 2 bottom
    std::vector<double> columns;  // heights of columns of that width, 0 without end; none: one column
    double gutter = 0.0;
    std::optional<TextGround> ground;
};

// Parallel lines of a hatch, in the plane's coordinates.
struct PatternLines {
    double angle = 0.0;  // radians
    Vec base;
    Vec offset;                  // to the next line
    std::vector<double> dashes;  // negative: gaps; none: a line without gaps
};

struct Filling {
    std::vector<std::vector<Vec>> loops;
    bool isSolid = false;
    std::vector<long> gradient;  // colours, 0xRRGGBB; none: the entity's own
    std::vector<PatternLines> lines;
};

class Picture {
  public:
    // Before and after what an entity shows. False: nothing of it but what lies in its block is wanted.
    virtual bool enter(const Shown& shown) = 0;
    virtual void leave() = 0;

    // toWorld: from the coordinates the shape is told in.
    virtual void textLine(const TextLine& text, const Transform& toWorld) = 0;
    virtual void paragraphs(const Paragraphs& text, const Transform& toWorld) = 0;
    virtual void filling(const Filling& filling, const Transform& toWorld) = 0;
    // The rest is told in world coordinates.
    // A line of a width; points on a curve lie close enough to each other.
    virtual void band(const std::vector<Vec>& points, double width, bool isClosed) = 0;
    // A point, in the shape that the drawing gives to points.
    virtual void mark(const Vec& at) = 0;
    // The head of a leader, coming from a point; in the shape of a dimension style.
    virtual void head(const Vec& tip, const Vec& from, const std::wstring& style, double scale) = 0;
    // What shapes within an entity look like from then on, where they say so: 0xRRGGBB or an index; hundredths of a
    // millimetre.
    virtual void traits(std::optional<long> rgb, std::optional<long> index, std::optional<long> weight) = 0;
    // Covers what was drawn before.
    virtual void cover(const std::vector<Vec>& corners) = 0;

  protected:
    ~Picture() = default;
};

}  // namespace qrs::host::pick
