// Reading and changing the list of frozen layers in either form.
#include "host/drawing/frozenlayers.h"

#include <algorithm>
#include <unordered_set>

#include "host/drawing/entityformat.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
namespace codes = dxf::codes;
namespace viewport = dxf::codes::viewport;

namespace {

constexpr dxf::Version kFirstByHandle = dxf::Version::R2000;

}  // namespace

FrozenLayers::FrozenLayers(dxf::Drawing& drawing, const SymbolTables& tables, RecordId viewport)
    : drawing_(drawing), tables_(tables), viewport_(viewport) {
    const bool hasHandles = drawing.version() >= kFirstByHandle;
    code_ = hasHandles ? viewport::kFrozenLayer : codes::kXdataLayer;
    if (hasHandles)
        readHandles();
    else
        readNames();
}

void FrozenLayers::readNames() {
    dxf::TagCursor cursor = drawing_.tags(viewport_);
    dxf::Tag tag;
    bool isView = false;
    int depth = 0;
    while (!hasPlace_ && cursor.next(tag)) {
        if (tag.code == codes::kXdataApplication) isView = false;
        if (tag.code == codes::kXdataText && dxf::trimmed(tag.value) == "MVIEW") isView = true;
        if (!isView) continue;
        if (tag.code == codes::kXdataBracket) {
            const bool opens = dxf::trimmed(tag.value) == "{";
            if (!opens && depth == 2) {
                hasPlace_ = true;
                place_ = tag.begin;
            }
            depth += opens ? 1 : -1;
        } else if (tag.code == codes::kXdataLayer && depth == 2) {
            entries_.push_back({tables_.find(TableKind::Layer, readText(drawing_, tag.value)), tag});
        }
    }
}

void FrozenLayers::readHandles() {
    const RecordFormat& format = entityFormatOf("VIEWPORT");
    const int rank = format.rankOf(viewport::kFrozenLayer);
    dxf::RecordWalk walk(drawing_.tags(viewport_));
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;) {
        if (!walk.isOwn()) continue;
        // Some programs write no marks.
        const bool isViewport = walk.sections() == 0 || walk.section() == "AcDbViewport";
        hasPlace_ = isViewport || (hasPlace_ && !entries_.empty());
        if (!isViewport || tag.code == codes::kType) continue;
        if (tag.code == viewport::kFrozenLayer || tag.code == viewport::kHardFrozenLayer) {
            TableKind kind = TableKind::Block;
            const RecordId named = drawing_.findHandle(dxf::toHandle(tag.value));
            const bool isLayer = named != kNoRecord && tables_.kindOf(named, kind) && kind == TableKind::Layer;
            entries_.push_back({isLayer ? named : kNoRecord, tag});
            code_ = tag.code;
            place_ = tag.end;
        } else if (entries_.empty() &&
                   (tag.code == codes::kSubclass || (tag.code != viewport::kSheetName &&
                                                     format.rankOf(tag.code) < rank && format.rankOf(tag.code) >= 0))) {
            place_ = tag.end;
        }
    }
}

std::vector<RecordId> FrozenLayers::layers() const {
    std::vector<RecordId> layers;
    for (const Entry& entry : entries_)
        layers.push_back(entry.layer);
    return layers;
}

bool FrozenLayers::hold(RecordId layer) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.layer == layer; });
}

bool FrozenLayers::add(const std::vector<RecordId>& layers) {
    if (!hasPlace_) return false;
    std::vector<dxf::NewTag> tags;
    std::unordered_set<RecordId> frozen;
    for (const Entry& entry : entries_)
        frozen.insert(entry.layer);
    for (const RecordId layer : layers) {
        if (!frozen.insert(layer).second) continue;
        const std::uint64_t handle = drawing_.record(layer).handle;
        if (code_ == codes::kXdataLayer)
            tags.push_back({code_, writeText(drawing_, tables_.nameOf(layer))});
        else if (handle != 0)
            tags.push_back({code_, dxf::handleText(handle)});
        else
            return false;
    }
    drawing_.insertTags(viewport_, place_, tags);
    return true;
}

void FrozenLayers::remove(const std::vector<RecordId>& layers) {
    const std::unordered_set<RecordId> thawed(layers.begin(), layers.end());
    std::vector<dxf::TagEdit> edits;
    for (const Entry& entry : entries_) {
        if (thawed.count(entry.layer) == 0) continue;
        edits.emplace_back().tag = entry.tag;
        edits.back().isGone = true;
    }
    if (!edits.empty()) drawing_.editTags(viewport_, edits);
}

}  // namespace qrs::host
