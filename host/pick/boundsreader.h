// Reads the boxes around main entities one after the other.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/dxf/interner.h"
#include "host/pick/bounds.h"
#include "host/pick/extent.h"
#include "host/pick/recipes.h"

namespace qrs::host::pick {

// Reads records one after the other; it knows no scene, so that two can read side by side.
class Bounds::Reader {
  public:
    // A block reference whose block is to be measured.
    struct Placed {
        dxf::RecordId id;
        std::uint32_t block;
        double x;
        double y;
        double scaleX;
        double scaleY;
        double rotation;  // degrees
    };

    explicit Reader(const dxf::Drawing& drawing) : drawing_(drawing), sweep_(drawing.beginSweep()) {}

    // Main entities in [begin, end) of the records; what belongs to one of them must lie there too.
    void readRange(dxf::RecordId begin, dxf::RecordId end);
    void readMain(dxf::RecordId id);

    const std::vector<Placed>& placed() const { return placed_; }
    // Those that must be looked at in full.
    const std::vector<dxf::RecordId>& others() const { return others_; }
    std::string_view blockName(std::uint32_t block) const { return blocks_[block]; }
    Items& items() { return items_; }

  private:
    struct Numbers {
        std::array<double, 6> greatest{};  // by code, from kFirstNumber on
        std::array<double, 3> last{};
        std::array<std::uint8_t, 6> counts{};  // up to two
        std::uint8_t rotations = 0;            // likewise
        double least = 1.0;
        double rotation = 0.0;
        double width = 0.0;  // of the longest text, in heights
        bool isAligned = false;
        bool isMirrored = false;
        bool isClosed = false;
    };
    struct Whole {
        Extent extent;
        double bulge = 0.0;
        double width = 0.0;
        bool isLine = false;  // its corners are known, and what it draws runs straight from one to the next
        bool isSure = true;
    };

    // A recipe and its steps.
    struct Known {
        const Recipe& recipe;
        Steps steps;
    };

    const Known* knownOf(dxf::RecordId id);
    void add(dxf::RecordId id, Whole& whole);
    bool read(dxf::RecordId id, const Known& known, Extent (&points)[2], Numbers& numbers);
    template <typename Tags>
    bool readTags(Tags tags, const Known& known, Extent (&points)[2], Numbers& numbers);
    static void takeText(int code, std::string_view value, Numbers& numbers);
    void place(dxf::RecordId id, const Extent& point, const Numbers& numbers, Whole& whole);
    void finish(dxf::RecordId id, const Whole& whole);
    void finishLine(dxf::RecordId id);

    const dxf::Drawing& drawing_;
    dxf::TagSweep sweep_;
    Items items_;
    std::vector<std::pair<double, double>> corners_;  // of the record looked at
    dxf::Interner blocks_;
    std::string_view blockName_;
    std::vector<Placed> placed_;
    std::vector<dxf::RecordId> others_;
    std::vector<std::pair<bool, std::unique_ptr<const Known>>> known_;  // by type number: asked for already, the answer
};

}  // namespace qrs::host::pick
