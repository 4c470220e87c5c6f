// Counts what a drawing file holds.
#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/drawing/blocks.h"
#include "host/drawing/layouts.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/drawing.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/report/hostreport.h"

namespace qrs::host {

using dxf::Drawing;
using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
using platform::translated;
namespace codes = dxf::codes;

namespace {

constexpr std::int64_t kFrozenBit = 1;
constexpr std::int64_t kLockedBit = 4;
constexpr std::int64_t kExternalReferenceBit = 4;

class Description {
  public:
    Description(const Drawing& drawing, DrawingInfo& info) : drawing_(drawing), blocks_(drawing), info_(info) {}

    void make() {
        describeFile();
        readLayers();
        readClasses();
        readBlocks();
        readLayouts();
        countRecords();
        info_.types.reserve(types_.size());
        for (const auto& [name, count] : types_)
            info_.types.push_back({drawing_.decode(name), count});
    }

  private:
    std::wstring text(RecordId id, int code, int nth = 0) const {
        dxf::Tag tag;
        return drawing_.findTag(id, code, tag, nth) ? drawing_.decode(dxf::trimmed(tag.value)) : std::wstring();
    }
    std::int64_t integer(RecordId id, int code) const {
        dxf::Tag tag;
        return drawing_.findTag(id, code, tag) ? dxf::toInteger(tag.value) : 0;
    }
    template <typename Take>
    void forEach(RecordId head, RecordKind kind, Take&& take) const {
        if (head == kNoRecord) return;
        const RecordId end = drawing_.endOf(head);
        for (RecordId id = drawing_.next(head); id != end && id != kNoRecord; id = drawing_.next(id))
            if (drawing_.record(id).kind == kind) take(id);
    }

    void describeFile();
    void readLayers();
    void readClasses();
    void readBlocks();
    void readLayouts();
    void countRecords();
    void countEntity(const dxf::Record& record, bool inLayout);
    LayoutInfo* layoutOf(const dxf::Record& record, bool inEntities);

    const Drawing& drawing_;
    BlockIndex blocks_;
    DrawingInfo& info_;
    std::map<std::string, EntityCount, std::less<>> types_;
    std::unordered_map<std::wstring, std::size_t> layerByName_;   // folded
    std::unordered_map<dxf::NameId, std::size_t> layerByNameId_;  // as entities spell it
    std::unordered_map<std::string, std::size_t> classByName_;
    std::unordered_map<RecordId, std::size_t> layoutByHead_;
    std::size_t modelSpace_ = 0;
    std::size_t paperSpace_ = 0;
};

void Description::describeFile() {
    info_.version = drawing_.versionText();
    const std::string_view release = dxf::releaseOf(drawing_.version());
    info_.release.assign(release.begin(), release.end());
    info_.isBinary = drawing_.isBinary();
    info_.bytes = drawing_.fileSize();
    for (const dxf::Fault& fault : drawing_.faults())
        info_.faults.push_back(fault.message());
    info_.hasHandles = drawing_.hasHandles();
    info_.codePage = drawing_.codePage();
    const RecordId codePage = drawing_.findHeaderVariable("$DWGCODEPAGE");
    if (codePage != kNoRecord) info_.codePageName = text(codePage, codes::variable::kCodePage);
}

void Description::readLayers() {
    forEach(drawing_.findTable("LAYER"), RecordKind::TableRecord, [this](RecordId id) {
        LayerInfo layer;
        layer.name = text(id, codes::kName);
        layer.isDefined = true;
        layer.isOff = integer(id, codes::kColor) < 0;
        const std::int64_t flags = integer(id, codes::kFlags);
        layer.isFrozen = (flags & kFrozenBit) != 0;
        layer.isLocked = (flags & kLockedBit) != 0;
        layerByName_.emplace(platform::foldCase(layer.name), info_.layers.size());
        info_.layers.push_back(std::move(layer));
    });
}

void Description::readClasses() {
    forEach(drawing_.findSection("CLASSES"), RecordKind::Class, [this](RecordId id) {
        dxf::Tag name;
        if (!drawing_.findTag(id, codes::classes::kRecordName, name)) return;
        classByName_.emplace(dxf::trimmed(name.value), info_.classes.size());
        info_.classes.push_back({text(id, codes::classes::kRecordName), text(id, codes::classes::kClassName),
                                 text(id, codes::classes::kApplication), 0});
    });
}

void Description::readBlocks() {
    for (const Block& block : blocks_.blocks()) {
        if (block.head == kNoRecord) continue;
        const bool isLayout = block.space != Space::None ||
                              platform::foldCase(block.name).rfind(platform::foldCase(L"*Paper_Space"), 0) == 0;
        if (isLayout) {
            layoutByHead_.emplace(block.head, 0);
            continue;
        }
        ++info_.blocks;
        if ((integer(block.head, codes::kFlags) & kExternalReferenceBit) != 0)
            info_.externalReferences.push_back({block.name, text(block.head, codes::block::kPath)});
    }
}

void Description::readLayouts() {
    for (Layout& layout : layoutsOf(drawing_, blocks_)) {
        const Block& block = *layout.block;
        if (block.head != kNoRecord) layoutByHead_[block.head] = info_.layouts.size();
        if (block.space == Space::Model) modelSpace_ = info_.layouts.size();
        if (block.space == Space::Paper) paperSpace_ = info_.layouts.size();
        if (layout.name.empty()) layout.name = translated(L"Paper space");
        info_.layouts.push_back({std::move(layout.name), block.name, 0});
    }
}

LayoutInfo* Description::layoutOf(const dxf::Record& record, bool inEntities) {
    if (inEntities) {
        const std::size_t index = (record.flags & dxf::kPaperSpace) != 0 ? paperSpace_ : modelSpace_;
        return index < info_.layouts.size() ? &info_.layouts[index] : nullptr;
    }
    const auto found = layoutByHead_.find(record.owner);
    return found == layoutByHead_.end() || found->second >= info_.layouts.size() ? nullptr
                                                                                 : &info_.layouts[found->second];
}

void Description::countEntity(const dxf::Record& record, bool inLayout) {
    std::size_t& (*pick)(EntityCount&) = inLayout ? +[](EntityCount& count) -> std::size_t& { return count.inLayouts; }
                                                  : +[](EntityCount& count) -> std::size_t& { return count.inBlocks; };
    const auto known = layerByNameId_.find(record.layer);
    std::size_t layer = 0;
    if (known != layerByNameId_.end()) {
        layer = known->second;
    } else {
        std::wstring name = record.layer == dxf::kNoName ? L"0" : drawing_.decode(drawing_.name(record.layer));
        const auto [found, isNew] = layerByName_.emplace(platform::foldCase(name), info_.layers.size());
        if (isNew) {
            info_.layers.emplace_back();
            info_.layers.back().name = std::move(name);
        }
        layer = found->second;
        layerByNameId_.emplace(record.layer, layer);
    }
    ++pick(info_.layers[layer].entities);
}

void Description::countRecords() {
    const RecordId entities = drawing_.findSection("ENTITIES");
    for (RecordId id = drawing_.first(); id != kNoRecord; id = drawing_.next(id)) {
        const dxf::Record& record = drawing_.record(id);
        if (record.kind != RecordKind::Entity && record.kind != RecordKind::Object) continue;
        const std::string_view type = drawing_.typeNameOf(id);
        if (!classByName_.empty())
            if (const auto found = classByName_.find(std::string(type)); found != classByName_.end())
                ++info_.classes[found->second].instances;
        if (record.kind != RecordKind::Entity || (record.flags & dxf::kSubEntity) != 0) continue;
        LayoutInfo* layout = layoutOf(record, record.owner == entities);
        const bool inLayout = layout != nullptr || record.owner == entities;
        if (layout) ++layout->entities;
        auto place = types_.find(type);
        if (place == types_.end()) place = types_.emplace(type, EntityCount()).first;
        ++(inLayout ? place->second.inLayouts : place->second.inBlocks);
        countEntity(record, inLayout);
    }
}

}  // namespace

bool describeDrawing(const std::filesystem::path& native, DrawingInfo& info, platform::Error& error) {
    const std::unique_ptr<Drawing> drawing = Drawing::open(native, error);
    if (!drawing) return false;
    info = {};
    Description(*drawing, info).make();
    return true;
}

std::string dwgReleaseOf(const std::filesystem::path& native) {
    std::string start;
    platform::Error ignored;
    if (!platform::readFileStart(native, dxf::kDwgStartLength, start, ignored)) return {};
    const auto version = dxf::dwgVersionOf(start);
    if (!version) return {};
    const std::string_view release = dxf::releaseOf(dxf::versionOf(*version));
    return std::string(release.empty() ? *version : release);
}

}  // namespace qrs::host
