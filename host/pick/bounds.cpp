// Keeping boxes around entities, and looking for them.
#include "host/pick/bounds.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <string_view>
#include <utility>

#include "host/drawing/objecttags.h"
#include "host/drawing/spaces.h"
#include "host/dxf/classcodes.h"
#include "host/pick/boundsreader.h"
#include "host/pick/scene.h"
#include "host/platform/beside.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

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
