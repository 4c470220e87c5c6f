// Which blocks show which, while a file is read.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

class BlockNesting {
  public:
    // A block definition; of several of one name the first counts.
    void beginBlock(std::string name);
    // A record of that block shows another one.
    void addShown(std::string name, RecordId by);
    // The records that show a block within itself, with its name.
    std::vector<std::pair<RecordId, std::string>> cycles() const;

  private:
    struct Shown {
        std::size_t block;
        RecordId by;
    };
    struct Block {
        std::string name;
        std::vector<Shown> shows;
        bool isDefined = false;
    };

    std::size_t numberOf(std::string name);

    std::vector<Block> blocks_;
    std::unordered_map<std::string, std::size_t> numbers_;
    std::size_t open_ = 0;
    bool isCounted_ = false;
};

}  // namespace qrs::dxf
