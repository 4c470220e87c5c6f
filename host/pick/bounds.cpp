// Reading boxes around entities from their records.
#include "host/pick/bounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "host/drawing/objecttags.h"
#include "host/drawing/spaces.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/interner.h"
#include "host/pick/recipes.h"
#include "host/pick/scene.h"
#include "host/platform/beside.h"
#include "host/platform/plainreal.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

namespace {

// Polylines of more pieces have one box.
constexpr std::size_t kMostPieces = 8;
constexpr double kFar = std::numeric_limits<double>::infinity();
constexpr FlatBox kEverywhere{-std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};

struct Extent {
    double lowX = kFar;
    double lowY = kFar;
    double highX = -kFar;
    double highY = -kFar;

    bool isEmpty() const { return !(lowX <= highX); }
    void addX(double x) {
        lowX = std::min(lowX, x);
        highX = std::max(highX, x);
    }
    void addY(double y) {
        lowY = std::min(lowY, y);
        highY = std::max(highY, y);
    }
    void add(const Extent& other, double grownBy) {
        if (other.isEmpty()) return;
        addX(other.lowX - grownBy), addX(other.highX + grownBy);
        addY(other.lowY - grownBy), addY(other.highY + grownBy);
    }
};

// Turns points around the origin by degrees, and then moves them.
class Turned {
  public:
    Turned(double degrees, double byX, double byY) : byX_(byX), byY_(byY) {
        if (degrees == 0.0) return;
        cos_ = std::cos(degrees * kRadiansPerDegree);
        sin_ = std::sin(degrees * kRadiansPerDegree);
    }
    void addTo(Extent& extent, double x, double y) const {
        // Large numbers that nearly cancel leave an error of their own size.
        const double margin = 1e-12 * (std::fabs(x) + std::fabs(y) + std::fabs(byX_) + std::fabs(byY_));
        const double turnedX = x * cos_ - y * sin_ + byX_;
        const double turnedY = x * sin_ + y * cos_ + byY_;
        extent.add({turnedX, turnedY, turnedX, turnedY}, margin);
    }

  private:
    double byX_;
    double byY_;
    double cos_ = 1.0;
    double sin_ = 0.0;
};

bool isAt(const Extent& point) {
    return point.lowX == point.highX && point.lowY == point.highY;
}

// Of a text in heights, at most.
double greatestWidth(std::string_view text) {
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    const bool isPlain = isAscii && text.find('\\') == std::string_view::npos;
    return static_cast<double>(text.size()) * (isPlain ? 0.75 : 1.0);
}

// Wider than the numbers by more than rounding can make of them.
FlatBox flat(const Extent& extent) {
    if (extent.isEmpty()) return {};
    const double greatest =
        std::max({std::fabs(extent.lowX), std::fabs(extent.lowY), std::fabs(extent.highX), std::fabs(extent.highY)});
    if (!(greatest < 1e30)) return kEverywhere;
    const double margin = greatest * 4e-7 + 1e-30;
    return {static_cast<float>(extent.lowX - margin), static_cast<float>(extent.lowY - margin),
            static_cast<float>(extent.highX + margin), static_cast<float>(extent.highY + margin)};
}

FlatBox flat(const Box& box) {
    if (box.isEmpty()) return {};
    if (!std::isfinite(box.low.x + box.low.y + box.high.x + box.high.y)) return kEverywhere;
    return flat(Extent{box.low.x, box.low.y, box.high.x, box.high.y});
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

// Looks at what a reader has left.
void Bounds::settle(Reader& reader) {
    const LayerStates layers(*drawing_);
    Scene scene(*drawing_, layers);
    std::vector<Item>& boxes = reader.items()[kWhole];
    const auto isCurved = [&](dxf::RecordId id) {
        const std::string_view type = drawing_->typeNameOf(id);
        dxf::Tag tag;
        return type == "SPLINE" ||
               ((type == "HATCH" || type == "MPOLYGON") && drawing_->findTag(id, codes::hatch::kDegree, tag));
    };
    std::vector<std::pair<bool, Box>> blocks;  // measured already, and the box
    for (const Reader::Placed& placed : reader.placed()) {
        if (placed.block >= blocks.size()) blocks.resize(std::size_t{placed.block} + 1);
        auto& [isKnown, box] = blocks[placed.block];
        if (!std::exchange(isKnown, true)) box = scene.boxOf(readText(*drawing_, reader.blockName(placed.block)));
        if (box.isEmpty()) continue;
        if (!box.isBounded()) {
            boxes.push_back({kEverywhere, placed.id});
            continue;
        }
        Extent extent;
        const Turned turned(placed.rotation, placed.x, placed.y);
        for (const double x : {box.low.x, box.high.x})
            for (const double y : {box.low.y, box.high.y})
                turned.addTo(extent, x * placed.scaleX, y * placed.scaleY);
        boxes.push_back({flat(extent), placed.id});
    }
    for (const dxf::RecordId id : reader.others())
        boxes.push_back({isCurved(id) ? kEverywhere : flat(scene.extents(id)), id});
    items_.push_back(std::move(reader.items()));
}

// Reads so many records below those read already, and those that belong to the first of them.
void Bounds::readDown(dxf::RecordId count) {
    const dxf::RecordId end = lowest_;
    dxf::RecordId begin = end - std::min(count, end);
    const auto isPart = [&](dxf::RecordId id) { return (drawing_->record(id).flags & dxf::kSubEntity) != 0; };
    while (begin > 0 && isPart(begin))
        --begin;
    constexpr dxf::RecordId kWorthSharing = 20000;
    const bool isShared = end - begin >= kWorthSharing && platform::processorCount() > 1;
    dxf::RecordId middle = isShared ? begin + (end - begin) / 2 : end;
    while (middle < end && isPart(middle))
        ++middle;
    Reader first(*drawing_);
    Reader second(*drawing_);
    bool isDone = false;
    if (middle < end) {
        platform::Beside beside([&] {
            try {
                second.readRange(middle, end);
                isDone = true;
            } catch (const std::exception&) {
                // Read again below, where the reason is met too.
            }
        });
        first.readRange(begin, middle);
        if (beside.hasBegun()) beside.wait();
    } else {
        first.readRange(begin, middle);
    }
    if (!isDone) first.readRange(middle, end);
    settle(first);
    if (isDone) settle(second);
    lowest_ = begin;
}

// False when what has changed may tell on many boxes.
bool Bounds::readAgain(std::vector<dxf::RecordId> changed) {
    std::vector<bool> isChanged(drawing_->recordCount(), false);
    for (dxf::RecordId& id : changed) {
        const dxf::Record& record = drawing_->record(id);
        if (record.kind == dxf::RecordKind::Entity) {
            if (record.flags & dxf::kSubEntity) id = record.owner;
            if (!liesInLayout(*drawing_, id)) return false;
            isChanged[id] = true;
        } else if (record.kind == dxf::RecordKind::Block || record.kind == dxf::RecordKind::Other ||
                   drawing_->typeNameOf(id) == "$DIMSCALE") {
            return false;
        }
    }
    for (Items& items : items_)
        for (std::vector<Item>& row : items)
            for (Item& item : row)
                if (isChanged[item.id]) item.box = {};
    Reader reader(*drawing_);
    for (dxf::RecordId id = 0; id < isChanged.size(); ++id)
        if (isChanged[id]) reader.readMain(id);
    settle(reader);
    return true;
}

void Bounds::follow(const dxf::Drawing& drawing) {
    const dxf::ChangeLog& changes = drawing.changes();
    if (drawing_ == &drawing && mark_ == changes.mark()) return;
    std::vector<dxf::RecordId> changed;
    const bool isKnown = std::exchange(drawing_, &drawing) == &drawing && changes.since(mark_, changed);
    // Many small steps are taken together again from time to time.
    constexpr std::size_t kMostSteps = 64;
    if (!isKnown || items_.size() > kMostSteps || !readAgain(std::move(changed))) {
        items_.clear();
        lowest_ = static_cast<dxf::RecordId>(drawing.recordCount());
    }
    mark_ = changes.mark();
}

bool Bounds::isNear(const Item& item, Form form, const FlatBox& wanted) {
    const FlatBox& box = item.box;
    // Without branches: what the next item does cannot be guessed.
    const bool meets = (box.lowX <= wanted.highX) & (box.highX >= wanted.lowX) & (box.lowY <= wanted.highY) &
                       (box.highY >= wanted.lowY);
    if (!meets) return false;
    if (form == kWhole) return true;
    // Both boxes are wider than what they hold by less than this.
    const float greatest =
        std::max({std::fabs(box.lowX), std::fabs(box.lowY), std::fabs(box.highX), std::fabs(box.highY),
                  std::fabs(wanted.lowX), std::fabs(wanted.highX), std::fabs(wanted.lowY), std::fabs(wanted.highY)});
    const double margin = 4e-6 * static_cast<double>(greatest) + 1e-28;
    const double across = static_cast<double>(box.highX) - static_cast<double>(box.lowX);
    const double up = static_cast<double>(box.highY) - static_cast<double>(box.lowY);
    const double halfX = (static_cast<double>(wanted.highX) - static_cast<double>(wanted.lowX)) / 2;
    const double halfY = (static_cast<double>(wanted.highY) - static_cast<double>(wanted.lowY)) / 2;
    const double x = static_cast<double>(wanted.lowX) + halfX - static_cast<double>(box.lowX);
    const double y =
        static_cast<double>(wanted.lowY) + halfY - static_cast<double>(form == kRising ? box.lowY : box.highY);
    const double off = form == kRising ? across * y - up * x : across * y + up * x;
    return !(std::fabs(off) > across * (halfY + margin) + up * (halfX + margin));
}

bool Bounds::begin(const dxf::Drawing& drawing, const Region& region, FlatBox& wanted) {
    const Box& box = region.bounds();
    if (box.isEmpty() || !std::isfinite(box.low.x + box.low.y + box.high.x + box.high.y)) return false;
    follow(drawing);
    wanted = flat(box);
    return true;
}

// Of the records that have been read, those below an end.
void Bounds::gather(const FlatBox& wanted, dxf::RecordId end, std::vector<dxf::RecordId>& candidates) const {
    candidates.clear();
    for (const Items& items : items_)
        for (const Form form : {kWhole, kRising, kFalling})
            for (const Item& item : items[form])
                if (isNear(item, form, wanted) && item.id >= lowest_ && item.id < end) candidates.push_back(item.id);
    std::sort(candidates.begin(), candidates.end());
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
}

bool Bounds::find(const dxf::Drawing& drawing, const Region& region, std::vector<dxf::RecordId>& candidates) {
    candidates.clear();
    FlatBox wanted;
    if (!begin(drawing, region, wanted)) return false;
    if (lowest_ > 0) readDown(lowest_);
    gather(wanted, dxf::kNoRecord, candidates);
    return true;
}

bool Bounds::findLast(const dxf::Drawing& drawing, const Region& region,
                      const std::function<bool(dxf::RecordId)>& passes, dxf::RecordId& last) {
    last = dxf::kNoRecord;
    FlatBox wanted;
    if (!begin(drawing, region, wanted)) return false;
    // As many again each time, so that no record is the reason for many walks.
    constexpr dxf::RecordId kFirstStep = 16384;
    const auto count = static_cast<dxf::RecordId>(drawing.recordCount());
    std::vector<dxf::RecordId> candidates;
    for (dxf::RecordId end = count;;) {
        gather(wanted, end, candidates);
        const auto found = std::find_if(candidates.rbegin(), candidates.rend(), passes);
        if (found != candidates.rend()) last = *found;
        if (last != dxf::kNoRecord || lowest_ == 0) return true;
        end = lowest_;
        readDown(std::max(kFirstStep, count - lowest_));
    }
}

}  // namespace qrs::host::pick
