// Finds the filters of block references: each lies in a dictionary of a dictionary of its reference.
#include "host/plot/clips.h"

#include <string_view>
#include <utility>

#include "host/drawing/dictionaries.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/pick/kinds.h"

namespace qrs::host::plot {

namespace {

namespace codes = dxf::codes;
using pick::Transform;
using pick::Vec;

namespace filter {
constexpr int kMatrix = 40;
constexpr int kIsOn = 71;
}  // namespace filter

dxf::RecordId ownerOf(const dxf::Drawing& drawing, dxf::RecordId id) {
    dxf::RecordWalk walk(drawing.tags(id));
    for (dxf::Tag tag; walk.next(tag);)
        if (walk.isOwn() && tag.code == codes::kOwner) return drawing.findHandle(dxf::toHandle(tag.value));
    return dxf::kNoRecord;
}

// The two transformations of a filter, each of three rows: back from where the reference lay when it was cut to its
// block, and from there to the coordinates of the edge.
bool readTransforms(const pick::Entity& tags, Transform& toBlock, Transform& toEdge) {
    constexpr std::size_t kNumbers = 24;
    std::vector<double> numbers;
    for (const pick::Entity::Field& field : tags.fields())
        if (field.code == filter::kMatrix) numbers.push_back(pick::finiteOf(field.value).value_or(0.0));
    if (numbers.size() < kNumbers) return false;
    // A distance of the clipping in depth may come before.
    const double* m = numbers.data() + (numbers.size() - kNumbers);
    for (Transform* each : {&toBlock, &toEdge}) {
        *each = {{m[0], m[4], m[8]}, {m[1], m[5], m[9]}, {m[2], m[6], m[10]}, {m[3], m[7], m[11]}};
        m += kNumbers / 2;
    }
    return true;
}

// Nothing for one that makes all flat.
std::optional<Transform> inverseOf(const Transform& t) {
    const Vec yz = pick::cross(t.y, t.z);
    const Vec zx = pick::cross(t.z, t.x);
    const Vec xy = pick::cross(t.x, t.y);
    const double volume = t.x.x * yz.x + t.x.y * yz.y + t.x.z * yz.z;
    if (!(std::fabs(volume) > 1e-30)) return std::nullopt;
    const double share = 1.0 / volume;
    Transform back{Vec{yz.x, zx.x, xy.x} * share, Vec{yz.y, zx.y, xy.y} * share, Vec{yz.z, zx.z, xy.z} * share, {}};
    back.offset = back.vector(t.offset) * -1.0;
    return back;
}

constexpr std::string_view kHole = "ACAD_INVERTEDCLIP_ROUNDTRIP";

// The points of an edge; of a hole's, those after its name.
std::vector<Vec> pointsOf(dxf::TagCursor cursor, bool isHole) {
    std::vector<Vec> points;
    bool isMeant = !isHole;
    for (dxf::Tag tag; cursor.next(tag);) {
        if (isHole && tag.code == codes::kGroup) isMeant = dxf::trimmed(tag.value) == kHole;
        const double number = pick::finiteOf(tag.value).value_or(0.0);
        if (isMeant && tag.code == codes::kPoint) points.push_back({number, 0, 0});
        if (isMeant && tag.code == codes::yOf(codes::kPoint) && !points.empty()) points.back().y = number;
    }
    return points;
}

// The edge of what is cut out of a block, where the filter keeps the rest: it stands in a record of the filter's
// dictionary. The filter's own edge stands for it only roughly.
std::vector<Vec> holeOf(const dxf::Drawing& drawing, dxf::RecordId filter) {
    const dxf::RecordId dictionary = extensionDictionary(drawing, filter);
    if (dictionary == dxf::kNoRecord) return {};
    for (const DictionaryEntry& entry : dictionaryEntries(drawing, dictionary)) {
        if (entry.object == dxf::kNoRecord || drawing.typeNameOf(entry.object) != "XRECORD") continue;
        std::vector<Vec> points = pointsOf(drawing.tags(entry.object), true);
        if (!points.empty()) return points;
    }
    return {};
}

}  // namespace

Clips::Clips(const dxf::Drawing& drawing) : drawing_(drawing) {
    const dxf::RecordId objects = drawing.findSection("OBJECTS");
    if (objects == dxf::kNoRecord) return;
    for (dxf::RecordId id = drawing.next(objects); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::Object) break;
        if (drawing.typeNameOf(id) != "SPATIAL_FILTER") continue;
        dxf::RecordId reference = id;
        for (int up = 0; up < 3 && reference != dxf::kNoRecord; ++up)
            reference = ownerOf(drawing, reference);
        if (reference != dxf::kNoRecord) filters_[reference] = id;
    }
    if (!filters_.empty()) blocks_.emplace(drawing);
}

Clip Clips::clipOf(const pick::Entity& reference) {
    const auto found = filters_.find(reference.id());
    pick::Placement placement;
    if (found == filters_.end() || !pick::placeInsert(reference, placement)) return {};
    pick::Entity tags;
    tags.read(drawing_, found->second);
    std::vector<Vec> edge = holeOf(drawing_, found->second);
    const bool isHole = edge.size() > 1;
    if (!isHole) edge = pointsOf(drawing_.tags(found->second), false);
    // Two points are corners of a rectangle.
    if (edge.size() == 2) edge = {edge[0], {edge[1].x, edge[0].y, 0}, edge[1], {edge[0].x, edge[1].y, 0}};
    Transform toBlock;
    Transform toEdge;
    if (edge.size() < 3 || tags.integer(filter::kIsOn, 1) == 0 || !readTransforms(tags, toBlock, toEdge)) return {};
    const std::optional<Transform> fromEdge = inverseOf(toEdge);
    if (!fromEdge) return {};
    Vec base;
    const Block* const block = blocks_->find(placement.block);
    if (block && block->head != dxf::kNoRecord) {
        pick::Entity head;
        head.read(drawing_, block->head);
        base = head.point(codes::kPoint).value_or(Vec{});
    }
    for (Vec& corner : edge)
        corner = placement.first.point(toBlock.point(fromEdge->point(corner)) - base);
    return {std::move(edge), isHole};
}

}  // namespace qrs::host::plot
