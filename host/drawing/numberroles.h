// What the numbers of each kind of entity mean: which are points, lengths, angles.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace qrs::host {

// What a number, or the coordinates from a code on (10 codes apart), say.
enum class NumberRole : std::uint8_t {
    WorldPoint,
    PlanePoint,  // in the entity's own plane
    Vector,      // turned and scaled
    Direction,   // turned
    Length,
    Thickness,  // along the normal
    Angle,      // in the entity's own plane, degrees
    Factor,     // of a size that does not change
    Elevation,  // of the plane above the origin
    Shift,      // how far the picture of a dimension lies from where its block draws it
};

struct NumberRow {
    const char* dxfName;
    int code;
    NumberRole role;
    int anchor = 0;  // a missing tag is put after the first of this code; 0: a missing one means nothing
};

// After 101, texts carry the values of a text of several lines: MTEXT those of its columns, attributes a whole one.
constexpr const char* kTextColumns = "MTEXT 101";

// All kinds but hatches: their codes mean other things from place to place.
const std::vector<NumberRow>& numberRows();
// Null for what no transformation changes, and for an unknown kind.
const NumberRow* findNumber(std::string_view dxfName, int code);
bool hasKnownNumbers(std::string_view dxfName);

}  // namespace qrs::host
