// A drawing as it can be picked from: its entities with the blocks and external references they show.
//
//     Scene scene(drawing, layers, references, locate);
//     HitProbe probe(Region::around(point, halfSize), HitProbe::Mode::Touch);
//     if (scene.hits(entity, probe)) ...
//
// It holds for one selection: the drawing must not change meanwhile.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/drawing/blocks.h"
#include "host/dxf/drawing.h"
#include "host/pick/kinds.h"
#include "host/pick/layerstates.h"
#include "host/pick/references.h"

namespace qrs::host::pick {

// An entity found inside others.
struct Nested {
    const dxf::Drawing* drawing = nullptr;  // that holds it
    dxf::RecordId entity = dxf::kNoRecord;
    bool isExternal = false;  // of a drawing that is referred to
    std::wstring layer;       // in the names of the drawing the scene shows: "reference|layer"
    Transform toWorld;
    std::vector<dxf::RecordId> containers;  // of the drawing the scene shows, the innermost first
};

class Scene {
  public:
    // layers: of the drawing, as they are seen.
    Scene(const dxf::Drawing& drawing, const LayerStates& layers, References& references, References::Locate locate);
    // Whose external references are not looked for; what they show may lie everywhere.
    Scene(const dxf::Drawing& drawing, const LayerStates& layers);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Whether the probe meets (or holds) what can be seen of an entity that lies in no block.
    bool hits(dxf::RecordId id, HitProbe& probe);
    // Draws what can be seen of such an entity, from a drawing that is moved. False, the rest not drawn, once there is
    // more in blocks than can be meant, or the probe is done.
    bool show(dxf::RecordId id, Probe& probe, const Transform& toWorld);
    // A text that another one goes on with in its next column: pictures show it there.
    bool isFurtherColumn(dxf::RecordId id);
    // The innermost entity that lies in a region, of those that can be seen the one drawn last.
    bool findNested(dxf::RecordId id, const Region& region, Nested& found);
    // The box around an entity, whether it can be seen or not; empty for one without a shape.
    Box extents(dxf::RecordId id);
    // The box around what a block shows when its base point is at the origin.
    Box boxOf(const std::wstring& block);

  private:
    struct Source;
    struct Content;
    struct Cell;
    struct Looking;

    Source& sourceOf(const dxf::Drawing& drawing, const std::wstring& prefix, const std::wstring& folder);
    const Content* contentOf(Source& source, const std::wstring& block);
    Content findContent(Source& source, const std::wstring& block);
    const Box& boxOf(const Content& content);
    void measure(Source& source, dxf::RecordId id, BoxProbe& probe, int depth);
    static bool isOff(const Looking& looking);
    bool isSeen(Source& source, dxf::RecordId id, int inherited, int depth, Looking& looking);
    void draw(Source& source, dxf::RecordId id, const Transform& toWorld, int inherited, Probe& probe, int depth);
    bool nested(Source& source, dxf::RecordId id, const Transform& toWorld, int inherited, const Region& region,
                int depth, Nested& found);
    bool nestedInCells(Source& source, const Placement& placement, const Transform& toWorld, int state,
                       const Region& region, int depth, Nested& found);
    template <typename Use>
    void forEachCell(const Placement& placement, const Transform& toWorld, const Transform& first, Use&& use);
    Box boxOfParts(Source& source, const std::vector<dxf::RecordId>& parts, int depth);
    Entity& scratch(int depth);

    const LayerStates& layers_;
    References* references_;
    References::Locate locate_;
    std::map<std::pair<const dxf::Drawing*, std::wstring>, std::unique_ptr<Source>> sources_;
    Source* main_;
    std::deque<Entity> scratch_;          // by depth
    std::vector<const Content*> active_;  // those being walked, so that cycles end
    std::size_t steps_ = 0;               // cells looked at and blocks entered for one entity
    std::size_t shown_ = 0;               // the same for all that were shown
};

}  // namespace qrs::host::pick
