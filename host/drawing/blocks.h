// The blocks of one drawing, and model and paper space among them.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

// Ids of the two spaces where nothing names them.
constexpr std::uint32_t kUnnamedModelSpace = 0xFFFFFF40u;
constexpr std::uint32_t kUnnamedPaperSpace = 0xFFFFFF41u;

enum class Space : std::uint8_t { None, Model, Paper };

struct Block {
    std::uint32_t id;    // BLOCK_RECORD; the BLOCK itself where files have no such table; or an unnamed space
    dxf::RecordId head;  // BLOCK; kNoRecord when there is none
    std::wstring name;
    Space space;  // whose entities lie in the ENTITIES section
};

// Blocks come from the BLOCK_RECORD table where there is one, else from the BLOCKS section.
class BlockIndex {
  public:
    explicit BlockIndex(const dxf::Drawing& drawing) : drawing_(drawing) {}

    const std::vector<Block>& blocks() const;
    // Null when there is none.
    const Block* find(std::wstring_view name) const;
    const Block* byId(std::uint32_t id) const;
    const Block* byHead(dxf::RecordId head) const;
    const Block* bySpace(Space space) const;
    // After blocks were erased, brought back or renamed.
    void changed() { built_ = false; }

  private:
    void build() const;
    void addBlock(std::uint32_t id, dxf::RecordId head, std::wstring name) const;

    const dxf::Drawing& drawing_;
    mutable bool built_ = false;
    mutable std::vector<Block> blocks_;
    mutable std::unordered_map<std::wstring, std::size_t> byName_;
    mutable std::unordered_map<std::uint32_t, std::size_t> byId_;
    mutable std::unordered_map<dxf::RecordId, std::size_t> byHead_;
};

}  // namespace qrs::host
