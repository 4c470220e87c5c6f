// Windows, polygons and fences, as the user draws them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/pick/probe.h"

namespace qrs::host::ed {

class Session;

enum class RegionKind { Window, Crossing, Box, InPolygon, CrossingPolygon, Fence };

// A region and what entities must do to be selected by it.
struct Drawn {
    pick::Region region;
    pick::HitProbe::Mode mode;
};

// Asks for the points. Nothing, with cancelled telling which, when the user cancelled or drew nothing.
std::optional<Drawn> askRegion(Session& session, RegionKind what, bool& cancelled);
// The rectangle from a first corner that is known: towards the right what lies inside, towards the left also what
// crosses it.
std::optional<Drawn> askBox(Session& session, const pick::Vec& first, bool& cancelled);

// The rectangle between two corners; of a Box the direction decides.
Drawn drawnWindow(RegionKind what, const pick::Vec& first, const pick::Vec& second);
// A polygon or a fence; nothing when there are too few points.
std::optional<Drawn> drawnLine(RegionKind what, std::vector<pick::Vec> points);

}  // namespace qrs::host::ed
