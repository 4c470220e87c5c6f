// Which elements of two sequences belong together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qrs::host {

// Pairs of positions, both ascending, of equal elements: a long such row, in time n log n. Elements that both sequences
// hold once are met first; between those that are in order the others follow.
std::vector<std::pair<std::size_t, std::size_t>> matchSequences(const std::vector<std::uint64_t>& first,
                                                                const std::vector<std::uint64_t>& second);

}  // namespace qrs::host
