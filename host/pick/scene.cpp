// Walking through entities and the blocks they show.
#include "host/pick/scene.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/picture.h"
#include "host/pick/textcolumns.h"
#include "host/platform/codepage.h"

namespace qrs::host::pick {

namespace {

// Blocks in blocks deeper than this, and more cells than this for one entity, come from damaged or hostile drawings:
// such an entity is not hit, and a picture in which all of them together are more ends there.
constexpr int kDeepest = 64;
constexpr std::size_t kMostSteps = 8000000;
constexpr std::size_t kMostShown = 3000000;  // in a picture

enum BlockFlag { kExternal = 4, kOverlay = 8 };

Vec headerPoint(const dxf::Drawing& drawing, std::string_view name) {
    const dxf::RecordId id = drawing.findHeaderVariable(name);
    if (id == dxf::kNoRecord) return {};
    Entity variable;
    variable.read(drawing, id);
    return variable.point(dxf::codes::kPoint).value_or(Vec{});
}

}  // namespace

// What a block shows.
struct Scene::Content {
    Source* source = nullptr;             // whose entities
    dxf::RecordId head = dxf::kNoRecord;  // they come after it
    bool isSpace = false;                 // model space of a whole drawing
    Vec base;
    bool isMeasured = false;
    Box box;
};

// One drawing in a role: the scene's own, or a reference under a name.
struct Scene::Source {
    Source(const dxf::Drawing& itsDrawing, std::wstring itsPrefix, std::wstring itsFolder)
        : drawing(itsDrawing),
          prefix(std::move(itsPrefix)),
          folder(std::move(itsFolder)),
          blocks(itsDrawing),
          ownLayers(itsDrawing) {}

    const dxf::Drawing& drawing;
    std::wstring prefix;  // of its layers' names in the scene's drawing; empty for that itself
    std::wstring folder;
    BlockIndex blocks;
    LayerStates ownLayers;
    std::unordered_map<dxf::NameId, int> layerStates;
    std::unordered_map<std::wstring, Content> contents;  // by block name
    std::vector<std::pair<bool, const Kind*>> kinds;     // by type number: asked for already, and the answer

    std::optional<std::unordered_set<dxf::RecordId>> furtherColumns;

    bool isFurtherColumn(dxf::RecordId id) {
        const Kind* const kind = kindOf(id);
        if (!kind || kind->draw != &drawParagraphs) return false;
        if (!furtherColumns) furtherColumns = pick::furtherColumns(drawing);
        return furtherColumns->count(id) > 0;
    }

    const Kind* kindOf(dxf::RecordId id) {
        const std::uint16_t type = drawing.record(id).type;
        if (type == dxf::kTypeUncounted) return findKind(drawing.typeNameOf(id));
        if (type >= kinds.size()) kinds.resize(std::size_t{type} + 1, {false, nullptr});
        if (!std::exchange(kinds[type].first, true)) kinds[type].second = findKind(drawing.typeName(type));
        return kinds[type].second;
    }

    std::wstring layerOf(dxf::RecordId id) const {
        const std::wstring name = layerName(drawing, drawing.record(id).layer);
        return prefix.empty() || name == L"0" ? name : prefix + L"|" + name;
    }

    int stateOf(dxf::RecordId id, const LayerStates& layers) {
        if (prefix.empty()) return layers.of(id);
        const auto [known, fresh] = layerStates.emplace(drawing.record(id).layer, 0);
        if (fresh) {
            // The drawing that shows the reference decides; a layer it has not heard of is as the reference has it.
            const int state = layers.find(layerOf(id));
            known->second = state >= 0 ? state : ownLayers.of(id);
        }
        return known->second;
    }

    template <typename Use>
    void forEachEntity(const Content& content, Use&& use) const {
        for (dxf::RecordId id = drawing.next(content.head); id != dxf::kNoRecord; id = drawing.next(id)) {
            const dxf::Record& record = drawing.record(id);
            if (record.kind != dxf::RecordKind::Entity) break;
            if (record.flags & dxf::kSubEntity) continue;
            if (content.isSpace && (record.flags & dxf::kPaperSpace)) continue;
            if (!use(id)) break;
        }
    }
};

// What is seen of an entity, and the kind it is of.
struct Scene::Looking {
    const Kind* kind = nullptr;
    int state = 0;
};

// Definitions of attributes stand in blocks as patterns, of which nothing is seen (null); constant ones are texts that
// every reference shows.
static const Kind* kindWithin(const Kind* kind, const Entity& entity, int depth) {
    constexpr long kConstant = 2;
    static const Kind* const text = findKind("ATTRIB");
    if (depth == 0 || kind->draw != &drawAttributeDefinition) return kind;
    return entity.integer(dxf::codes::kFlags, 0) & kConstant ? text : nullptr;
}

Scene::Scene(const dxf::Drawing& drawing, const LayerStates& layers, References& references, References::Locate locate)
    : layers_(layers),
      references_(&references),
      locate_(std::move(locate)),
      main_(&sourceOf(drawing, std::wstring(), std::wstring())) {}

Scene::Scene(const dxf::Drawing& drawing, const LayerStates& layers)
    : layers_(layers), references_(nullptr), main_(&sourceOf(drawing, std::wstring(), std::wstring())) {}

Scene::~Scene() = default;

Scene::Source& Scene::sourceOf(const dxf::Drawing& drawing, const std::wstring& prefix, const std::wstring& folder) {
    std::unique_ptr<Source>& source = sources_[{&drawing, prefix}];
    if (!source) source = std::make_unique<Source>(drawing, prefix, folder);
    return *source;
}

Entity& Scene::scratch(int depth) {
    while (scratch_.size() <= static_cast<std::size_t>(depth))
        scratch_.emplace_back();
    return scratch_[static_cast<std::size_t>(depth)];
}

Scene::Content Scene::findContent(Source& source, const std::wstring& block) {
    Content content;
    const Block* found = source.blocks.find(block);
    if (!found || found->head == dxf::kNoRecord) return content;
    Entity head;
    head.read(source.drawing, found->head);
    const long flags = head.integer(dxf::codes::kFlags, 0);
    if (flags & kExternal) {
        // What overlays a drawing is not seen where that drawing is referred to.
        if ((flags & kOverlay) && &source != main_) return content;
        if (!references_) {
            content.source = &source;
            content.head = found->head;
            content.isMeasured = true;
            content.box.addAll();
            return content;
        }
        const References::File* file = references_->find(head.text(dxf::codes::block::kPath), source.folder, locate_);
        if (file) {
            content.source = &sourceOf(*file->drawing, found->name, file->folder);
            content.head = file->drawing->findSection("ENTITIES");
            content.isSpace = true;
            content.base = headerPoint(*file->drawing, "$INSBASE");
            return content;
        }
    }
    content.source = &source;
    content.head = found->head;
    content.base = head.point(dxf::codes::kPoint).value_or(Vec{});
    return content;
}

// Null for a block that is not defined.
const Scene::Content* Scene::contentOf(Source& source, const std::wstring& block) {
    const std::wstring name = platform::foldCase(block);
    auto known = source.contents.find(name);
    if (known == source.contents.end()) known = source.contents.emplace(name, findContent(source, block)).first;
    return known->second.head == dxf::kNoRecord ? nullptr : &known->second;
}

const Box& Scene::boxOf(const Content& content) {
    auto& kept = const_cast<Content&>(content);  // the scene's own, measured when first needed
    if (kept.isMeasured) return kept.box;
    kept.isMeasured = true;  // while it is measured it counts as empty, so that cycles end
    const auto depth = static_cast<int>(active_.size());
    if (depth >= kDeepest) return kept.box;
    active_.push_back(&content);
    BoxProbe probe;
    content.source->forEachEntity(content, [&](dxf::RecordId id) {
        measure(*content.source, id, probe, depth + 1);
        return true;
    });
    active_.pop_back();
    kept.box = probe.box();
    return kept.box;
}

void Scene::measure(Source& source, dxf::RecordId id, BoxProbe& probe, int depth) {
    const Kind* kind = source.kindOf(id);
    if (!kind) return;
    Entity entity;
    entity.read(source.drawing, id);
    kind = kindWithin(kind, entity, depth);
    if (!kind) return;
    drawEntity(*kind, entity, Pen(probe, Transform{}));
    Placement placement;
    if (!kind->place) return;
    const bool isPlaced = kind->place(entity, placement);
    const auto addToCorners = [&](const Box& box) {
        if (box.isEmpty()) return;
        for (const int column : {0, placement.columns - 1})
            for (const int row : {0, placement.rows - 1}) {
                const Vec step = placement.columnStep * column + placement.rowStep * row;
                Box moved;
                moved.low = box.low + step;
                moved.high = box.high + step;
                probe.add(moved);
            }
    };
    addToCorners(boxOfParts(source, entity.parts(), depth));
    const Content* content = isPlaced ? contentOf(source, placement.block) : nullptr;
    if (!content) return;
    Transform first = placement.first;
    if (placement.atBasePoint) first = first.after(Transform{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, content->base * -1.0});
    addToCorners(boxOf(*content).transformed(first));
}

// Of what comes with a block reference: its attributes.
Box Scene::boxOfParts(Source& source, const std::vector<dxf::RecordId>& parts, int depth) {
    BoxProbe probe;
    for (const dxf::RecordId part : parts)
        measure(source, part, probe, depth + 1);
    return probe.box();
}

// From the block's coordinates to world ones, in the first cell.
static Transform firstCell(const Placement& placement, const Transform& toWorld, const Vec& basePoint) {
    const Transform base{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, placement.atBasePoint ? basePoint * -1.0 : Vec{}};
    return toWorld.after(placement.first).after(base);
}

// Calls use(the first cell's transform moved to the cell) for the cells of an array, until it says false.
template <typename Use>
void Scene::forEachCell(const Placement& placement, const Transform& toWorld, const Transform& first, Use&& use) {
    const Vec columnStep = toWorld.vector(placement.columnStep);
    const Vec rowStep = toWorld.vector(placement.rowStep);
    for (int row = 0; row < placement.rows; ++row)
        for (int column = 0; column < placement.columns; ++column) {
            if (++steps_ > kMostSteps) return;
            Transform cell = first;
            cell.offset = cell.offset + columnStep * column + rowStep * row;
            if (!use(cell)) return;
        }
}

bool Scene::isOff(const Looking& looking) {
    return (looking.state & kOffLayer) != 0;
}

// False for what is not drawn at all. Layer "0" in a block is the block reference's layer.
bool Scene::isSeen(Source& source, dxf::RecordId id, int inherited, int depth, Looking& looking) {
    looking.kind = source.kindOf(id);
    if (!looking.kind || (source.drawing.record(id).flags & dxf::kInvisible)) return false;
    looking.state = source.stateOf(id, layers_);
    if ((looking.state & kLayerZero) && depth > 0) looking.state = inherited;
    if (looking.state & kFrozenLayer) return false;
    // What lies in a block reference has layers of its own, so that one that is off hides only part of it.
    return looking.kind->place || !isOff(looking);
}

namespace {

// What a picture is told before and after an entity.
class Entered {
  public:
    Entered(Picture* picture, const Shown& shown)
        : picture_(picture), isWanted_(picture == nullptr || picture->enter(shown)) {}
    ~Entered() {
        if (picture_) picture_->leave();
    }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;
    bool isWanted() const { return isWanted_; }

  private:
    Picture* picture_;
    bool isWanted_;
};

}  // namespace

void Scene::draw(Source& source, dxf::RecordId id, const Transform& toWorld, int inherited, Probe& probe, int depth) {
    Looking looking;
    if (!isSeen(source, id, inherited, depth, looking)) return;
    if (probe.picture() && source.isFurtherColumn(id)) return;
    Entity& entity = scratch(depth);
    entity.read(source.drawing, id);
    looking.kind = kindWithin(looking.kind, entity, depth);
    if (!looking.kind) return;
    Placement placement;
    const bool isPlaced = looking.kind->place && looking.kind->place(entity, placement);
    const bool showsBlock = isPlaced || (looking.kind->place && !looking.kind->draw);
    if (!showsBlock && isOff(looking)) return;
    const Entered entered(probe.picture(), Shown{entity, source.prefix, toWorld, depth, showsBlock});
    if (!isOff(looking) && entered.isWanted()) drawEntity(*looking.kind, entity, Pen(probe, toWorld));
    if (!showsBlock) return;
    if (const std::vector<dxf::RecordId> parts = entity.parts(); !parts.empty()) {
        const bool isArray = placement.columns > 1 || placement.rows > 1;
        const Box box = isArray ? boxOfParts(source, parts, depth) : Box{};
        forEachCell(placement, toWorld, toWorld, [&](const Transform& cell) {
            if (isArray && !probe.wants(box.transformed(cell))) return !probe.isDone();
            for (const dxf::RecordId part : parts)
                draw(source, part, cell, looking.state, probe, depth + 1);
            return !probe.isDone();
        });
    }
    const Content* content = isPlaced ? contentOf(source, placement.block) : nullptr;
    if (!content || depth >= kDeepest || std::find(active_.begin(), active_.end(), content) != active_.end()) return;
    const Box box = boxOf(*content);
    active_.push_back(content);
    forEachCell(placement, toWorld, firstCell(placement, toWorld, content->base), [&](const Transform& cell) {
        if (!probe.wants(box.transformed(cell))) return !probe.isDone();
        content->source->forEachEntity(*content, [&](dxf::RecordId inner) {
            draw(*content->source, inner, cell, looking.state, probe, depth + 1);
            return !probe.isDone() && ++steps_ <= kMostSteps;
        });
        return !probe.isDone();
    });
    active_.pop_back();
}

bool Scene::nestedInCells(Source& source, const Placement& placement, const Transform& toWorld, int state,
                          const Region& region, int depth, Nested& found) {
    const Content* content = contentOf(source, placement.block);
    if (!content || depth >= kDeepest || std::find(active_.begin(), active_.end(), content) != active_.end())
        return false;
    const Box box = boxOf(*content);
    bool isFound = false;
    active_.push_back(content);
    forEachCell(placement, toWorld, firstCell(placement, toWorld, content->base), [&](const Transform& cell) {
        const Box placed = box.transformed(cell);
        if (placed.isEmpty() || !region.mayMeet(placed)) return true;
        std::vector<dxf::RecordId> entities;
        content->source->forEachEntity(*content, [&](dxf::RecordId inner) {
            entities.push_back(inner);
            return true;
        });
        for (auto inner = entities.rbegin(); inner != entities.rend() && !isFound && ++steps_ <= kMostSteps; ++inner)
            isFound = nested(*content->source, *inner, cell, state, region, depth + 1, found);
        return !isFound;
    });
    active_.pop_back();
    return isFound;
}

bool Scene::nested(Source& source, dxf::RecordId id, const Transform& toWorld, int inherited, const Region& region,
                   int depth, Nested& found) {
    Looking looking;
    if (!isSeen(source, id, inherited, depth, looking)) return false;
    Entity& entity = scratch(depth);
    entity.read(source.drawing, id);
    looking.kind = kindWithin(looking.kind, entity, depth);
    if (!looking.kind) return false;
    HitProbe probe(region, HitProbe::Mode::Touch);
    if (!isOff(looking)) drawEntity(*looking.kind, entity, Pen(probe, toWorld));
    if (probe.isHit()) {
        found.drawing = &source.drawing;
        found.entity = id;
        found.isExternal = &source != main_;
        found.layer = source.layerOf(id);
        found.toWorld = toWorld;
        return true;
    }
    if (!looking.kind->place) return false;
    Placement placement;
    const bool isPlaced = looking.kind->place(entity, placement);
    const std::vector<dxf::RecordId> parts = entity.parts();
    bool isFound = false;
    const Box box = boxOfParts(source, parts, depth);
    if (!parts.empty())
        forEachCell(placement, toWorld, toWorld, [&](const Transform& cell) {
            if (!region.mayMeet(box.transformed(cell))) return true;
            for (auto part = parts.rbegin(); part != parts.rend() && !isFound; ++part)
                isFound = nested(source, *part, cell, looking.state, region, depth + 1, found);
            return !isFound;
        });
    if (!isFound && isPlaced) isFound = nestedInCells(source, placement, toWorld, looking.state, region, depth, found);
    if (isFound && &source == main_) found.containers.push_back(id);
    return isFound;
}

bool Scene::hits(dxf::RecordId id, HitProbe& probe) {
    steps_ = 0;
    probe.reset();
    draw(*main_, id, Transform{}, 0, probe, 0);
    return probe.isHit() && steps_ <= kMostSteps;
}

bool Scene::show(dxf::RecordId id, Probe& probe, const Transform& toWorld) {
    if (shown_ > kMostShown) return false;
    steps_ = kMostSteps - kMostShown + shown_;
    draw(*main_, id, toWorld, 0, probe, 0);
    shown_ = steps_ + kMostShown - kMostSteps;
    return shown_ <= kMostShown && !probe.isDone();
}

bool Scene::isFurtherColumn(dxf::RecordId id) {
    return main_->isFurtherColumn(id);
}

bool Scene::findNested(dxf::RecordId id, const Region& region, Nested& found) {
    steps_ = 0;
    found = Nested{};
    return nested(*main_, id, Transform{}, 0, region, 0, found) && steps_ <= kMostSteps;
}

Box Scene::extents(dxf::RecordId id) {
    BoxProbe probe;
    measure(*main_, id, probe, 0);
    return probe.box();
}

Box Scene::boxOf(const std::wstring& block) {
    const Content* content = contentOf(*main_, block);
    return content ? boxOf(*content).transformed(Transform{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, content->base * -1.0})
                   : Box();
}

}  // namespace qrs::host::pick
