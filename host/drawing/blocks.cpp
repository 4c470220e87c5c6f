// Gathers the blocks of a drawing from the table or the section, and finds them by name, id, head and space.
#include "host/drawing/blocks.h"

#include "host/drawing/objecttags.h"
#include "host/dxf/groupcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

constexpr const wchar_t* kModelSpaceName = L"*Model_Space";
constexpr const wchar_t* kPaperSpaceName = L"*Paper_Space";

// Old files that newer programs wrote name the spaces with a dollar sign.
Space spaceOf(const std::wstring& name) {
    static const std::pair<std::wstring, Space> names[] = {
        {platform::foldCase(kModelSpaceName), Space::Model},
        {platform::foldCase(kPaperSpaceName), Space::Paper},
        {platform::foldCase(L"$MODEL_SPACE"), Space::Model},
        {platform::foldCase(L"$PAPER_SPACE"), Space::Paper},
    };
    const std::wstring folded = platform::foldCase(name);
    for (const auto& [known, space] : names)
        if (folded == known) return space;
    return Space::None;
}

std::wstring nameIn(const dxf::Drawing& drawing, RecordId record) {
    dxf::Tag tag;
    return drawing.findTag(record, dxf::codes::kName, tag) ? readText(drawing, tag.value) : std::wstring();
}

}  // namespace

void BlockIndex::addBlock(std::uint32_t id, RecordId head, std::wstring name) const {
    Space space = spaceOf(name);
    for (const Block& block : blocks_)
        if (space != Space::None && block.space == space) space = Space::None;
    if (space != Space::None) name = space == Space::Model ? kModelSpaceName : kPaperSpaceName;
    const std::size_t index = blocks_.size();
    byName_.emplace(platform::foldCase(name), index);
    byId_.emplace(id, index);
    if (head != kNoRecord) byHead_.emplace(head, index);
    blocks_.push_back({id, head, std::move(name), space});
}

void BlockIndex::build() const {
    built_ = true;
    blocks_.clear();
    byName_.clear();
    byId_.clear();
    byHead_.clear();

    std::vector<std::pair<RecordId, std::wstring>> heads;
    std::unordered_map<std::wstring, RecordId> headByName;
    bool hasSpace[3] = {};
    if (const RecordId section = drawing_.findSection("BLOCKS"); section != kNoRecord) {
        const RecordId end = drawing_.endOf(section);
        for (RecordId id = drawing_.next(section); id != end && id != kNoRecord; id = drawing_.next(id)) {
            if (drawing_.record(id).kind != RecordKind::Block) continue;
            heads.emplace_back(id, nameIn(drawing_, id));
            headByName.emplace(platform::foldCase(heads.back().second), id);
        }
    }
    std::vector<std::pair<RecordId, std::wstring>> records;
    if (const RecordId table = drawing_.findTable("BLOCK_RECORD"); table != kNoRecord) {
        for (RecordId id = drawing_.next(table); id != kNoRecord && drawing_.record(id).kind == RecordKind::TableRecord;
             id = drawing_.next(id))
            records.emplace_back(id, nameIn(drawing_, id));
    }
    for (const auto* list : {&records, &heads})
        for (const auto& [id, name] : *list)
            hasSpace[static_cast<std::size_t>(spaceOf(name))] = true;
    if (!hasSpace[static_cast<std::size_t>(Space::Model)]) addBlock(kUnnamedModelSpace, kNoRecord, kModelSpaceName);
    if (!hasSpace[static_cast<std::size_t>(Space::Paper)]) addBlock(kUnnamedPaperSpace, kNoRecord, kPaperSpaceName);
    for (const auto& [id, name] : records) {
        const auto found = headByName.find(platform::foldCase(name));
        const RecordId head = found == headByName.end() ? kNoRecord : found->second;
        addBlock(id, head != kNoRecord && byHead_.count(head) == 0 ? head : kNoRecord, name);
    }
    for (const auto& [id, name] : heads)
        if (byHead_.count(id) == 0) addBlock(id, id, name);
}

const std::vector<Block>& BlockIndex::blocks() const {
    if (!built_) build();
    return blocks_;
}

const Block* BlockIndex::find(std::wstring_view name) const {
    if (!built_) build();
    const auto found = byName_.find(platform::foldCase(name));
    return found == byName_.end() ? nullptr : &blocks_[found->second];
}

const Block* BlockIndex::byId(std::uint32_t id) const {
    if (!built_) build();
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &blocks_[found->second];
}

const Block* BlockIndex::byHead(RecordId head) const {
    if (!built_) build();
    const auto found = byHead_.find(head);
    return found == byHead_.end() ? nullptr : &blocks_[found->second];
}

const Block* BlockIndex::bySpace(Space space) const {
    if (!built_) build();
    for (const Block& block : blocks_)
        if (block.space == space) return &block;
    return nullptr;
}

}  // namespace qrs::host
