// The colours that layers had before they were painted, kept in the drawing.
#pragma once

#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace qrs::layers {

struct LayerColor {
    std::wstring layer;
    int index = 0;  // 1 to 255; of a true colour the one that the drawing has beside it
};

// Nothing when the drawing has no record. Pairs that are none are left out.
std::optional<std::vector<LayerColor>> readColorRecord(AcDbDatabase* database);

// Replaces an earlier record. False when the drawing cannot keep one: drawings of R12 have nowhere to put it.
bool writeColorRecord(AcDbDatabase* database, const std::vector<LayerColor>& colors);

void eraseColorRecord(AcDbDatabase* database);

}  // namespace qrs::layers
