// Reading boxes around entities from their records.
#include "host/pick/boundsreader.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <optional>

#include "host/drawing/objecttags.h"
#include "host/drawing/spaces.h"
#include "host/dxf/classcodes.h"
#include "host/pick/entity.h"
#include "host/platform/plainreal.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

namespace {

// Polylines of more pieces have one box.
constexpr std::size_t kMostPieces = 8;

bool isAt(const Extent& point) {
    return point.lowX == point.highX && point.lowY == point.highY;
}

// Of a text in heights, at most.
double greatestWidth(std::string_view text) {
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    const bool isPlain = isAscii && text.find('\\') == std::string_view::npos;
    return static_cast<double>(text.size()) * (isPlain ? 0.75 : 1.0);
}

inline bool readNumber(std::string_view value, double& number) {
    if (platform::readPlainReal(value, number)) return true;
    const std::optional<double> read = finiteOf(value);
    number = read.value_or(0.0);
    return read.has_value();
}

// Tags of a text drawing, to be walked as stored ones are.
struct SweptTags {
    dxf::TagSweep& sweep;
    dxf::RawTag tag{};

    bool next() { return sweep.next(tag); }
    int code() const { return tag.code; }
    std::string_view value() const { return dxf::textOf(tag); }
};

// The texts of binary records, which the answer may need, lie in one place that two threads cannot share.
bool isInLayout(const dxf::Drawing& drawing, dxf::RecordId id) {
    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    return liesInLayout(drawing, id);
}

}  // namespace

const Bounds::Reader::Known* Bounds::Reader::knownOf(dxf::RecordId id) {
    const std::uint16_t type = drawing_.record(id).type;
    if (type == dxf::kTypeUncounted) return nullptr;
    if (type >= known_.size()) known_.resize(std::size_t{type} + 1);
    if (!std::exchange(known_[type].first, true)) {
        const auto found = std::find_if(std::begin(kRecipes), std::end(kRecipes),
                                        [&](const Recipe& recipe) { return drawing_.typeName(type) == recipe.name; });
        if (found != std::end(kRecipes)) known_[type].second.reset(new Known{*found, Steps(*found)});
    }
    return known_[type].second.get();
}

void Bounds::Reader::readRange(dxf::RecordId begin, dxf::RecordId end) {
    dxf::RecordId owner = dxf::kNoRecord;
    bool isWanted = false;
    dxf::RecordId main = dxf::kNoRecord;
    Whole whole;
    const auto finishMain = [&] {
        if (main != dxf::kNoRecord) finish(main, whole);
        main = dxf::kNoRecord;
        whole = {};
    };
    for (dxf::RecordId id = begin; id < end; ++id) {
        const dxf::Record& record = drawing_.record(id);
        if (record.kind != dxf::RecordKind::Entity) continue;
        if (record.flags & dxf::kSubEntity) {
            if (record.owner == main)
                add(id, whole);
            else if (record.flags & dxf::kNew)
                others_.push_back(record.owner);  // which stands elsewhere
            continue;
        }
        finishMain();
        if (std::exchange(owner, record.owner) != record.owner) isWanted = isInLayout(drawing_, id);
        if (!isWanted) continue;
        main = id;
        add(id, whole);
    }
    finishMain();
}

void Bounds::Reader::readMain(dxf::RecordId id) {
    Whole whole;
    add(id, whole);
    for (dxf::RecordId part = drawing_.next(id); part != dxf::kNoRecord; part = drawing_.next(part)) {
        if (!(drawing_.record(part).flags & dxf::kSubEntity) || drawing_.record(part).owner != id) break;
        add(part, whole);
    }
    finish(id, whole);
}

void Bounds::Reader::finish(dxf::RecordId id, const Whole& whole) {
    if (!whole.isSure) return others_.push_back(id);
    const Extent& extent = whole.extent;
    if (extent.isEmpty()) return;
    if (whole.isLine) return finishLine(id);
    Extent grown = extent;
    if (whole.width > 0.0 || whole.bulge > 0.0) {
        // An arc up to a semicircle lies within its height of the chord, a larger one within its diameter.
        const double chord = (extent.highX - extent.lowX) + (extent.highY - extent.lowY);
        const double bulge = whole.bulge <= 1.0 ? whole.bulge / 2 : whole.bulge;
        grown.add(extent, whole.width + bulge * chord);
    }
    items_[kWhole].push_back({flat(grown), id});
}

// An item for each piece between corners.
void Bounds::Reader::finishLine(dxf::RecordId id) {
    const std::size_t last = std::max<std::size_t>(corners_.size() - 1, 1);
    for (std::size_t i = 0; i < last; ++i) {
        const auto& [x, y] = corners_[i];
        const auto& [toX, toY] = corners_[std::min(i + 1, corners_.size() - 1)];
        const Extent piece{std::min(x, toX), std::min(y, toY), std::max(x, toX), std::max(y, toY)};
        items_[(x < toX) == (y < toY) ? kRising : kFalling].push_back({flat(piece), id});
    }
}

// Takes a record into the box of a main entity, itself or a part of it.
void Bounds::Reader::add(dxf::RecordId id, Whole& whole) {
    const Known* const known = knownOf(id);
    const bool isPart = (drawing_.record(id).flags & dxf::kSubEntity) != 0;
    if (isPart && drawing_.record(id).type == dxf::kTypeSeqend) return;
    Extent points[2];
    Numbers numbers;
    if (!known || (known->recipe.isOnlyPart && !isPart) || !read(id, *known, points, numbers)) {
        whole.isSure = false;
        return;
    }
    switch (known->recipe.reach) {
        case Reach::Line:
            whole.isLine = corners_.size() == 2;
            [[fallthrough]];
        case Reach::Points:
        case Reach::Spline:
            whole.extent.add(points[0], 0.0);
            whole.extent.add(points[1], 0.0);
            break;
        case Reach::Circle:
            whole.extent.add(points[0], numbers.greatest[0]);
            break;
        case Reach::Polyline:
            whole.extent.add(points[0], 0.0);
            whole.width = std::max({whole.width, numbers.greatest[0], numbers.greatest[1], numbers.greatest[3]});
            whole.bulge = std::max(whole.bulge, numbers.greatest[2]);
            if (numbers.isClosed && !corners_.empty()) corners_.push_back(corners_.front());
            whole.isLine = !isPart && whole.width == 0.0 && whole.bulge == 0.0 && corners_.size() <= kMostPieces;
            break;
        case Reach::Text: {
            const double height = numbers.greatest[0];
            const double width = numbers.width * height * (numbers.counts[1] > 0 ? numbers.greatest[1] : 1.0);
            if (points[0].isEmpty()) break;
            if (isAt(points[0]) && !numbers.isAligned && !numbers.isMirrored && numbers.rotations < 2) {
                Extent box;
                const Turned turned(numbers.rotation, points[0].lowX, points[0].lowY);
                for (const double x : {0.0, width})
                    for (const double y : {0.0, height})
                        turned.addTo(box, x, y);
                whole.extent.add(box, 0.0);
                break;
            }
            whole.extent.add(points[0], width + height);
            if (numbers.isAligned) whole.extent.add(points[1], width + height);
            break;
        }
        case Reach::Insert:
            place(id, points[0], numbers, whole);
            break;
        case Reach::Hatch:
            whole.isSure = false;
            break;
    }
}

void Bounds::Reader::place(dxf::RecordId id, const Extent& point, const Numbers& numbers, Whole& whole) {
    const auto isTwice = [](std::uint8_t count) { return count > 1; };
    const bool isArray = numbers.greatest[4] != 0.0 || numbers.greatest[5] != 0.0;
    if (isArray || !isAt(point) || numbers.rotations > 1 ||
        std::any_of(numbers.counts.begin(), numbers.counts.end(), isTwice)) {
        whole.isSure = false;
        return;
    }
    placed_.push_back({id, blocks_.internCopy(blockName_), point.lowX, point.lowY,
                       numbers.counts[1] > 0 ? numbers.last[1] : 1.0, numbers.counts[2] > 0 ? numbers.last[2] : 1.0,
                       numbers.rotation});
}

void Bounds::Reader::takeText(int code, std::string_view value, Numbers& numbers) {
    double number = 0.0;
    switch (code) {
        case codes::kText:
        case codes::text::kTag:
            numbers.width = std::max(numbers.width, greatestWidth(value));
            break;
        case codes::text::kGeneration:
            if (!readNumber(value, number) || number != 0.0) numbers.isMirrored = true;
            break;
        case codes::text::kHorizontal:
        case codes::text::kVertical:
        case codes::text::kAttributeVertical:
            if (!readNumber(value, number) || number != 0.0) numbers.isAligned = true;
            break;
        default:
            break;
    }
}

// The first of the codes for points goes to the first extent, the others to the second. False for what must be looked
// at in full: numbers that are none, points without a y, a plane that is not the drawing's.
template <typename Tags>
bool Bounds::Reader::readTags(Tags tags, const Known& known, Extent (&points)[2], Numbers& numbers) {
    constexpr int kNone = -1;
    const auto countUp = [](std::uint8_t& count) { count = static_cast<std::uint8_t>(count == 0 ? 1 : 2); };
    const Recipe& recipe = known.recipe;
    const bool isLine = recipe.reach == Reach::Line;
    int awaited = kNone;  // the code of a point's y, which comes next
    double number = 0.0;
    corners_.clear();
    blockName_ = {};
    while (tags.next()) {
        const int code = tags.code();
        if (awaited != kNone) {
            if (code != awaited || !readNumber(tags.value(), number)) return false;
            points[code == codes::yOf(codes::kPoint) ? 0 : 1].addY(number);
            corners_.back().second = number;
            awaited = kNone;
            if (isLine && !points[0].isEmpty() && !points[1].isEmpty()) break;
            continue;
        }
        const Step step = known.steps.of(code);
        if (step == Step::Pass) continue;
        if (step == Step::End) break;
        switch (step) {
            case Step::Point:
                if (!readNumber(tags.value(), number)) return false;
                points[code == codes::kPoint ? 0 : 1].addX(number);
                corners_.emplace_back(number, 0.0);
                awaited = codes::yOf(code);
                break;
            case Step::Number: {
                if (!readNumber(tags.value(), number)) return false;
                const auto place = static_cast<std::size_t>(code - kFirstNumber);
                numbers.greatest[place] = std::max(numbers.greatest[place], std::fabs(number));
                if (place < numbers.last.size()) numbers.last[place] = number;
                countUp(numbers.counts[place]);
                numbers.least = std::min(numbers.least, number);
                break;
            }
            case Step::Flat:
                if (!readNumber(tags.value(), number) || number != 0.0) return false;
                break;
            case Step::Upwards:
                if (!readNumber(tags.value(), number) || !(number > 0.0)) return false;
                break;
            case Step::Rotation:
                if (!readNumber(tags.value(), numbers.rotation)) return false;
                countUp(numbers.rotations);
                break;
            case Step::Closed:
                numbers.isClosed = !readNumber(tags.value(), number) || number != 0.0;
                break;
            case Step::Text:
                takeText(code, tags.value(), numbers);
                break;
            default:
                if (blockName_.empty()) blockName_ = tags.value();
        }
    }
    return awaited == kNone && (recipe.reach != Reach::Spline || numbers.least > 0.0);
}

bool Bounds::Reader::read(dxf::RecordId id, const Known& known, Extent (&points)[2], Numbers& numbers) {
    // Of binary records only the numbers that are asked for become text.
    if (drawing_.isBinary()) return readTags(drawing_.storedTags(id), known, points, numbers);
    sweep_.begin(drawing_.bytes(id));
    return readTags(SweptTags{sweep_}, known, points, numbers);
}

}  // namespace qrs::host::pick
