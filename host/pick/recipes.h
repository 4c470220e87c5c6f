// What is read of a record for the box around it, by its type.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/dxf/classcodes.h"
#include "host/dxf/groupcodes.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

// What a record's numbers say of how far it reaches from its points.
enum class Reach : std::uint8_t {
    Points,    // not beyond them
    Line,      // likewise, and there are no others after its two
    Circle,    // the radius
    Polyline,  // bulges and widths; those of its vertices too
    Text,      // no farther than all its bytes as ideographs
    Insert,    // what its block does
    Spline,    // not beyond the control points, where no weight is negative
    Hatch,     // looked at in full; curves in it may be drawn finer than they are measured
};

struct Recipe {
    const char* name;
    Reach reach;
    bool isPlanar;            // its points lie in a plane that need not be that of the drawing
    std::uint16_t points;     // a bit for each of the codes from 10 on that stand for a point
    std::uint16_t numbers;    // likewise for those from 40 on
    bool isOnlyPart = false;  // of a main entity
};

constexpr int kFirstNumber = 40;

constexpr std::uint16_t bit(int n) {
    return static_cast<std::uint16_t>(1u << n);
}

inline constexpr Recipe kRecipes[] = {
    {"LINE", Reach::Line, false, bit(0) | bit(1), 0},
    {"POINT", Reach::Points, false, bit(0), 0},
    {"3DFACE", Reach::Points, false, bit(0) | bit(1) | bit(2) | bit(3), 0},
    {"SOLID", Reach::Points, true, bit(0) | bit(1) | bit(2) | bit(3), 0},
    {"TRACE", Reach::Points, true, bit(0) | bit(1) | bit(2) | bit(3), 0},
    {"CIRCLE", Reach::Circle, true, bit(0), bit(0)},
    {"ARC", Reach::Circle, true, bit(0), bit(0)},
    {"LWPOLYLINE", Reach::Polyline, true, bit(0), bit(0) | bit(1) | bit(2) | bit(3)},
    {"POLYLINE", Reach::Polyline, true, 0, bit(0) | bit(1)},
    {"VERTEX", Reach::Polyline, false, bit(0), bit(0) | bit(1) | bit(2), true},
    {"TEXT", Reach::Text, true, bit(0) | bit(1), bit(0) | bit(1)},
    {"ATTDEF", Reach::Text, true, bit(0) | bit(1), bit(0) | bit(1)},
    {"ATTRIB", Reach::Text, true, bit(0) | bit(1), bit(0) | bit(1)},
    {"INSERT", Reach::Insert, true, bit(0), bit(1) | bit(2) | bit(4) | bit(5)},
    {"SPLINE", Reach::Spline, false, bit(0) | bit(1), bit(1)},
    {"HATCH", Reach::Hatch, true, 0, 0},
    {"MPOLYGON", Reach::Hatch, true, 0, 0},
};

// What is to be done with a tag.
enum class Step : std::uint8_t { Pass, Point, Number, Flat, Upwards, Rotation, Closed, Text, Block, End };

// By group code, so that the many tags that say nothing of a place cost no questions.
struct Steps {
    static constexpr unsigned kCodes = 256;
    std::array<Step, kCodes> byCode{};

    explicit Steps(const Recipe& recipe) {
        const auto set = [this](int code, Step step) { byCode[static_cast<std::size_t>(code)] = step; };
        set(codes::kEmbedded, Step::End);
        for (int i = 0; i < 10; ++i) {
            if ((recipe.points >> i & 1) != 0) set(codes::kPoint + i, Step::Point);
            if ((recipe.numbers >> i & 1) != 0) set(kFirstNumber + i, Step::Number);
        }
        if (recipe.isPlanar) {
            set(codes::kNormal, Step::Flat);
            set(codes::yOf(codes::kNormal), Step::Flat);
            set(codes::zOf(codes::kNormal), Step::Upwards);
        }
        if (recipe.reach == Reach::Text || recipe.reach == Reach::Insert) set(codes::text::kRotation, Step::Rotation);
        if (recipe.reach == Reach::Polyline) set(codes::kFlags, Step::Closed);
        if (recipe.reach == Reach::Insert) set(codes::kName, Step::Block);
        if (recipe.reach != Reach::Text) return;
        for (const int code : {codes::kText, codes::text::kTag, codes::text::kGeneration, codes::text::kHorizontal,
                               codes::text::kVertical, codes::text::kAttributeVertical})
            set(code, Step::Text);
    }
    Step of(int code) const {
        const auto place = static_cast<unsigned>(code);
        if (place < kCodes) return byCode[place];
        return code == codes::kXdataApplication ? Step::End : Step::Pass;
    }
};

}  // namespace qrs::host::pick
