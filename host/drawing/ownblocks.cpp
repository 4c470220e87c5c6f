// Blocks that belong to the entity that shows them.
#include "host/drawing/ownblocks.h"

#include <string>
#include <unordered_map>

#include "host/drawing/entityformat.h"
#include "host/dxf/references.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

// Blocks that may have been abandoned; those that turn out to be in use leave.
class Candidates {
  public:
    explicit Candidates(const Contents& contents) : drawing_(contents.drawing()), blocks_(contents.blocks()) {}

    void add(RecordId erased);
    void keepShown();
    void keepPointedTo();
    std::vector<OwnBlock> left() const;

  private:
    struct Candidate {
        OwnBlock own;
        RecordId head;
        bool isUsed;
    };

    // The block without a name of its own that an entity names; null when it names none.
    const Block* blockOf(RecordId entity, const NamingTag& naming) const;
    const NamingTag* blockNaming(RecordId entity);
    void keep(std::uint32_t block, RecordId user);
    bool isInside(RecordId record, const Candidate& candidate) const;

    const dxf::Drawing& drawing_;
    const BlockIndex& blocks_;
    std::unordered_map<std::uint32_t, Candidate> all_;  // by id of the block
    std::unordered_map<std::uint64_t, std::uint32_t> byHandle_;
    std::vector<std::pair<bool, const NamingTag*>> namings_;  // by type: whether it was looked up, and what was found
};

const NamingTag* Candidates::blockNaming(RecordId entity) {
    const std::size_t type = drawing_.record(entity).type;
    if (type >= namings_.size()) namings_.resize(type + 1);
    auto& [isKnown, naming] = namings_[type];
    if (!isKnown) {
        naming = namingTag(drawing_.typeNameOf(entity), dxf::codes::kName);
        if (naming && naming->table != TableKind::Block) naming = nullptr;
        isKnown = true;
    }
    return naming;
}

const Block* Candidates::blockOf(RecordId entity, const NamingTag& naming) const {
    dxf::Tag name;
    if (!drawing_.findTag(entity, naming.code, name) || dxf::trimmed(name.value).substr(0, 1) != "*") return nullptr;
    return blocks_.find(readText(drawing_, name.value));
}

void Candidates::add(RecordId erased) {
    if (drawing_.record(erased).kind != RecordKind::Entity) return;
    const NamingTag* naming = blockNaming(erased);
    const Block* block = naming && naming->isOwner ? blockOf(erased, *naming) : nullptr;
    if (!block || block->space != Space::None) return;
    all_.emplace(block->id, Candidate{{block->id, erased}, block->head, false});
    if (const std::uint64_t handle = drawing_.record(block->id).handle; handle != 0)
        byHandle_.emplace(handle, block->id);
}

bool Candidates::isInside(RecordId record, const Candidate& candidate) const {
    if (record == candidate.own.block || record == candidate.head) return true;
    RecordId owner = drawing_.record(record).owner;
    if (owner != kNoRecord && (drawing_.record(record).flags & dxf::kSubEntity) != 0)
        owner = drawing_.record(owner).owner;
    return owner == candidate.head && owner != kNoRecord;
}

void Candidates::keep(std::uint32_t block, RecordId user) {
    const auto found = all_.find(block);
    if (found != all_.end() && !isInside(user, found->second)) found->second.isUsed = true;
}

void Candidates::keepShown() {
    for (RecordId id = 0; id < drawing_.recordCount() && !all_.empty(); ++id) {
        if (drawing_.record(id).kind != RecordKind::Entity || drawing_.isErased(id)) continue;
        const NamingTag* naming = blockNaming(id);
        const Block* block = naming ? blockOf(id, *naming) : nullptr;
        if (block) keep(block->id, id);
    }
}

// Its own entities name it as their owner, and what speaks of it alone does not keep it.
void Candidates::keepPointedTo() {
    for (RecordId id = 0; id < drawing_.recordCount() && !byHandle_.empty(); ++id) {
        if (drawing_.isErased(id) || !drawing_.mayRefer(id)) continue;
        dxf::ReferencePlace place(drawing_.typeNameOf(id));
        dxf::Tag tag;
        for (dxf::TagCursor cursor = drawing_.tags(id); cursor.next(tag);) {
            const dxf::ReferenceRule* rule = place.pass(tag.code, tag.value);
            if (!rule || rule->isLayerName || rule->loss == dxf::Loss::Record || rule->group == "ACAD_REACTORS")
                continue;
            const auto found = byHandle_.find(dxf::toHandle(tag.value));
            if (found != byHandle_.end()) keep(found->second, id);
        }
    }
}

std::vector<OwnBlock> Candidates::left() const {
    std::vector<OwnBlock> left;
    for (const auto& [id, candidate] : all_)
        if (!candidate.isUsed) left.push_back(candidate.own);
    return left;
}

}  // namespace

std::vector<OwnBlock> abandonedBlocks(const Contents& contents, const std::vector<RecordId>& erased) {
    Candidates candidates(contents);
    for (const RecordId id : erased)
        candidates.add(id);
    candidates.keepShown();
    candidates.keepPointedTo();
    return candidates.left();
}

}  // namespace qrs::host
