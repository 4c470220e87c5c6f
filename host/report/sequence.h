// Which elements of two sequences belong together.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace qrs::host {

constexpr std::size_t kNoPartner = static_cast<std::size_t>(-1);

// Pairs of positions, both ascending, of equal elements: a longest such row where the sequences differ in no more than
// maximum places, otherwise the equal elements at both ends alone.
std::vector<std::pair<std::size_t, std::size_t>> matchSequences(
    std::size_t firstCount, std::size_t secondCount, const std::function<bool(std::size_t, std::size_t)>& areEqual,
    std::size_t maximum);

}  // namespace qrs::host
