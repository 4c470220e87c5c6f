// Finds the blocks that show themselves.
#include "host/dxf/blocknesting.h"

#include <algorithm>

namespace qrs::dxf {

// Names of ASCII letters are the same in either case. In other code pages those letters may be halves of others.
std::size_t BlockNesting::numberOf(std::string name) {
    const bool isAscii = std::all_of(name.begin(), name.end(), [](char c) { return (c & 0x80) == 0; });
    std::string key = name;
    if (isAscii) {
        for (char& c : key)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    const auto [known, fresh] = numbers_.emplace(std::move(key), blocks_.size());
    if (fresh) blocks_.push_back({std::move(name), {}, false});
    return known->second;
}

void BlockNesting::beginBlock(std::string name) {
    open_ = numberOf(std::move(name));
    isCounted_ = !std::exchange(blocks_[open_].isDefined, true);
}

void BlockNesting::addShown(std::string name, RecordId by) {
    if (!isCounted_) return;
    const std::size_t block = numberOf(std::move(name));
    // The same one many times over is one.
    std::vector<Shown>& shows = blocks_[open_].shows;
    if (shows.empty() || shows.back().block != block) shows.push_back({block, by});
}

// Goes into each block once, without a call for each level: blocks may be nested as deep as the file is long.
std::vector<std::pair<RecordId, std::string>> BlockNesting::cycles() const {
    enum class Mark : unsigned char { New, Open, Done };
    std::vector<Mark> marks(blocks_.size(), Mark::New);
    std::vector<std::pair<std::size_t, std::size_t>> path;  // block, and how many of those it shows were looked at
    std::vector<std::pair<RecordId, std::string>> found;
    for (std::size_t first = 0; first < blocks_.size(); ++first) {
        if (marks[first] == Mark::New) path.emplace_back(first, 0);
        while (!path.empty()) {
            auto& [block, looked] = path.back();
            marks[block] = Mark::Open;
            if (looked == blocks_[block].shows.size()) {
                marks[block] = Mark::Done;
                path.pop_back();
                continue;
            }
            const Shown& shown = blocks_[block].shows[looked++];
            if (marks[shown.block] == Mark::Open) found.emplace_back(shown.by, blocks_[shown.block].name);
            if (marks[shown.block] == Mark::New) path.emplace_back(shown.block, 0);
        }
    }
    return found;
}

}  // namespace qrs::dxf
