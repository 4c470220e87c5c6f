// Matches sequences by the elements that stand once in each: among these the longest ascending row is found, and
// between its pairs the same is done again.
#include "host/report/sequence.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace qrs::host {

namespace {

using Elements = std::vector<std::uint64_t>;
using Pair = std::pair<std::size_t, std::size_t>;
using Pairs = std::vector<Pair>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Parts of both sequences that are still to be matched.
struct Stretch {
    std::size_t begin;
    std::size_t end;
    std::size_t otherBegin;
    std::size_t otherEnd;
    int depth = 0;
};

// Stretches within stretches: deeper ones are not looked through again, which bounds the time.
constexpr int kDeepest = 20;

// Of pairs in order of their first position, the longest row whose second positions ascend, too.
Pairs longestAscending(Pairs pairs) {
    const auto isBefore = [](const Pair& one, const Pair& next) { return one.second < next.second; };
    if (std::is_sorted(pairs.begin(), pairs.end(), isBefore)) return pairs;  // each stands in one alone
    std::vector<std::size_t> ends;  // by length of a row: the pair that ends it with the smallest second position
    std::vector<std::size_t> before(pairs.size(), kNone);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto isBelow = [&](std::size_t end, std::size_t b) { return pairs[end].second < b; };
        const bool isNext = ends.empty() || isBelow(ends.back(), pairs[i].second);
        const auto place = isNext ? ends.end() : std::lower_bound(ends.begin(), ends.end(), pairs[i].second, isBelow);
        if (place != ends.begin()) before[i] = *(place - 1);
        if (place == ends.end())
            ends.push_back(i);
        else
            *place = i;
    }
    Pairs row;
    for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i])
        row.push_back(pairs[i]);
    std::reverse(row.begin(), row.end());
    return row;
}

// Where elements stand, and whether once or often: open addressing, as there may be a million of them.
class PlaceTable {
  public:
    static constexpr std::uint8_t kOnce = 1;
    static constexpr std::uint8_t kOften = 2;
    struct Slot {
        std::uint64_t element = 0;
        std::uint32_t other = 0;      // the last in the second sequence
        std::uint8_t otherCount = 0;  // 0: no element stands here
        std::uint8_t count = 0;       // in the first
    };

    explicit PlaceTable(std::size_t most) : slots_(most + most / 2 + 2) {}
    // The element's slot, or the empty one that it would take.
    Slot& at(std::uint64_t element) {
        const std::uint64_t hash = (element * 0x9E3779B97F4A7C15u) >> 32;
        auto slot = static_cast<std::size_t>((hash * slots_.size()) >> 32);
        while (slots_[slot].otherCount != 0 && slots_[slot].element != element)
            slot = slot + 1 == slots_.size() ? 0 : slot + 1;
        return slots_[slot];
    }

  private:
    std::vector<Slot> slots_;
};

class Matching {
  public:
    Matching(const Elements& first, const Elements& second) : first_(first), second_(second) {}

    Pairs run() {
        found_.reserve(std::min(first_.size(), second_.size()));
        waiting_.push_back({0, first_.size(), 0, second_.size(), 0});
        while (!waiting_.empty()) {
            const Stretch stretch = waiting_.back();
            waiting_.pop_back();
            match(stretch);
        }
        std::sort(found_.begin(), found_.end());
        return std::move(found_);
    }

  private:
    void match(Stretch stretch) {
        takeEnds(stretch);
        if (stretch.begin == stretch.end || stretch.otherBegin == stretch.otherEnd) return;
        // One against one: they differ, or they would be gone.
        if (stretch.end - stretch.begin == 1 && stretch.otherEnd - stretch.otherBegin == 1) return;
        const Pairs anchors = stretch.depth < kDeepest ? anchorsOf(stretch) : Pairs();
        if (anchors.empty()) return takeInTurn(stretch);
        Stretch gap = stretch;
        ++gap.depth;
        for (const auto& [a, b] : anchors) {
            waitFor({gap.begin, a, gap.otherBegin, b, gap.depth});
            gap.begin = a + 1;
            gap.otherBegin = b + 1;
        }
        waitFor(gap);
        found_.insert(found_.end(), anchors.begin(), anchors.end());
    }

    // Most stretches between changed elements are empty, or of one that has become another.
    void waitFor(const Stretch& part) {
        const std::size_t count = part.end - part.begin;
        const std::size_t otherCount = part.otherEnd - part.otherBegin;
        if (count == 0 || otherCount == 0) return;
        if (count == 1 && otherCount == 1 && first_[part.begin] != second_[part.otherBegin]) return;
        waiting_.push_back(part);
    }

    // What is equal at both ends belongs together.
    void takeEnds(Stretch& part) {
        while (part.begin < part.end && part.otherBegin < part.otherEnd &&
               first_[part.begin] == second_[part.otherBegin])
            found_.emplace_back(part.begin++, part.otherBegin++);
        while (part.begin < part.end && part.otherBegin < part.otherEnd &&
               first_[part.end - 1] == second_[part.otherEnd - 1])
            found_.emplace_back(--part.end, --part.otherEnd);
    }

    Pairs anchorsOf(const Stretch& part) const {
        PlaceTable places(part.otherEnd - part.otherBegin);
        for (std::size_t b = part.otherBegin; b < part.otherEnd; ++b) {
            PlaceTable::Slot& one = places.at(second_[b]);
            one = {second_[b], static_cast<std::uint32_t>(b),
                   one.otherCount == 0 ? PlaceTable::kOnce : PlaceTable::kOften, 0};
        }
        for (std::size_t a = part.begin; a < part.end; ++a) {
            PlaceTable::Slot& one = places.at(first_[a]);
            if (one.otherCount != 0) one.count = one.count == 0 ? PlaceTable::kOnce : PlaceTable::kOften;
        }
        Pairs once;
        for (std::size_t a = part.begin; a < part.end; ++a) {
            const PlaceTable::Slot& one = places.at(first_[a]);
            if (one.count == PlaceTable::kOnce && one.otherCount == PlaceTable::kOnce) once.emplace_back(a, one.other);
        }
        return longestAscending(std::move(once));
    }

    // Nothing stands there once in both: the first of several equal ones is taken for the first, and so on.
    void takeInTurn(const Stretch& part) {
        std::unordered_map<std::uint64_t, std::vector<std::size_t>> places;
        for (std::size_t b = part.otherEnd; b > part.otherBegin; --b)
            places[second_[b - 1]].push_back(b - 1);
        Pairs pairs;
        for (std::size_t a = part.begin; a < part.end; ++a) {
            const auto left = places.find(first_[a]);
            if (left == places.end() || left->second.empty()) continue;
            pairs.emplace_back(a, left->second.back());
            left->second.pop_back();
        }
        const Pairs row = longestAscending(std::move(pairs));
        found_.insert(found_.end(), row.begin(), row.end());
    }

    const Elements& first_;
    const Elements& second_;
    std::vector<Stretch> waiting_;
    Pairs found_;
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> matchSequences(const Elements& first, const Elements& second) {
    return Matching(first, second).run();
}

}  // namespace qrs::host
