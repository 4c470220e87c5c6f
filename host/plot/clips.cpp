// Finds the filters of block references: each lies in a dictionary of a dictionary of its reference.
#include "host/plot/clips.h"

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

std::vector<Vec> Clips::edgeOf(const pick::Entity& reference) {
    const auto found = filters_.find(reference.id());
    pick::Placement placement;
    if (found == filters_.end() || !pick::placeInsert(reference, placement)) return {};
    pick::Entity tags;
    tags.read(drawing_, found->second);
    std::vector<Vec> edge;
    for (std::size_t i = 1; i < tags.fields().size(); ++i) {
        const pick::Entity::Field& y = tags.fields()[i];
        const pick::Entity::Field& x = tags.fields()[i - 1];
        if (x.code == codes::kPoint && y.code == codes::yOf(codes::kPoint))
            edge.push_back({pick::finiteOf(x.value).value_or(0.0), pick::finiteOf(y.value).value_or(0.0), 0});
    }
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
    return edge;
}

}  // namespace qrs::host::plot
