// Matches sequences by the elements that stand once in each: among these the longest ascending row is found, and
// between its pairs the same is done again.
#include "host/report/sequence.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "host/platform/beside.h"

namespace qrs::host {

namespace {

using Elements = std::vector<std::uint64_t>;
using Pair = std::pair<std::size_t, std::size_t>;
using Pairs = std::vector<Pair>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::uint32_t kNowhere = 0xFFFFFFFF;

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

// The elements of a stretch with their positions, cut by what they are into parts: equal ones are in parts of one
// number.
class Parts {
  public:
    struct Place {
        std::uint64_t element;
        std::uint32_t at;
    };
    struct Part {
        const Place* first;
        const Place* last;  // after the last one

        const Place* begin() const { return first; }
        const Place* end() const { return last; }
    };

    Parts() = default;
    // count: a power of two.
    Parts(const Elements& elements, std::size_t begin, std::size_t end, std::size_t count)
        : ends_(count + 1), places_(end - begin) {
        const auto partOf = [&](std::size_t i) { return static_cast<std::size_t>(elements[i] & (count - 1)); };
        for (std::size_t i = begin; i < end; ++i)
            ++ends_[partOf(i) + 1];
        std::partial_sum(ends_.begin(), ends_.end(), ends_.begin());
        std::vector<std::size_t> next(ends_);
        for (std::size_t i = begin; i < end; ++i)
            places_[next[partOf(i)]++] = {elements[i], static_cast<std::uint32_t>(i)};
    }
    Part operator[](std::size_t i) const { return {places_.data() + ends_[i], places_.data() + ends_[i + 1]}; }

  private:
    std::vector<std::size_t> ends_;  // before each part, and after the last one
    std::vector<Place> places_;
};

// Where elements stand, and whether once or often: open addressing.
class PlaceTable {
  public:
    static constexpr std::uint8_t kOnce = 1;
    static constexpr std::uint8_t kOften = 2;
    struct Slot {
        std::uint64_t element = 0;
        std::uint32_t at = 0;         // the last in the first sequence
        std::uint32_t other = 0;      // and in the second
        std::uint8_t count = 0;       // in the first
        std::uint8_t otherCount = 0;  // 0: no element stands here
    };

    // Reads a part of both.
    void read(const Parts::Part& ours, const Parts::Part& theirs) {
        const auto most = static_cast<std::size_t>(theirs.last - theirs.first);
        slots_.assign(most + most / 2 + 2, Slot());
        for (const Parts::Place& place : theirs) {
            Slot& one = at(place.element);
            one.element = place.element;
            one.other = place.at;
            one.otherCount = one.otherCount == 0 ? kOnce : kOften;
        }
        for (const Parts::Place& place : ours) {
            Slot& one = at(place.element);
            if (one.otherCount == 0) continue;
            one.at = place.at;
            one.count = one.count == 0 ? kOnce : kOften;
        }
    }
    const std::vector<Slot>& slots() const { return slots_; }

  private:
    // The element's slot, or the empty one that it would take.
    Slot& at(std::uint64_t element) {
        const std::uint64_t hash = (element * 0x9E3779B97F4A7C15u) >> 32;
        auto slot = static_cast<std::size_t>((hash * slots_.size()) >> 32);
        while (slots_[slot].otherCount != 0 && slots_[slot].element != element)
            slot = slot + 1 == slots_.size() ? 0 : slot + 1;
        return slots_[slot];
    }

    std::vector<Slot> slots_;
};

class Matching {
  public:
    Matching(const Elements& first, const Elements& second)
        : first_(first), second_(second), found_(first.size(), kNowhere) {}

    Pairs run() {
        waiting_.push_back({0, first_.size(), 0, second_.size(), 0});
        while (!waiting_.empty()) {
            const Stretch stretch = waiting_.back();
            waiting_.pop_back();
            match(stretch);
        }
        Pairs found;
        found.reserve(std::min(first_.size(), second_.size()));
        for (std::size_t a = 0; a < found_.size(); ++a)
            if (found_[a] != kNowhere) found.emplace_back(a, found_[a]);
        return found;
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
            found_[a] = static_cast<std::uint32_t>(b);
            waitFor({gap.begin, a, gap.otherBegin, b, gap.depth});
            gap.begin = a + 1;
            gap.otherBegin = b + 1;
        }
        waitFor(gap);
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
            found_[part.begin++] = static_cast<std::uint32_t>(part.otherBegin++);
        while (part.begin < part.end && part.otherBegin < part.otherEnd &&
               first_[part.end - 1] == second_[part.otherEnd - 1])
            found_[--part.end] = static_cast<std::uint32_t>(--part.otherEnd);
    }

    // Elements that stand once in both. Two threads look for them where there are many.
    Pairs anchorsOf(const Stretch& stretch) const {
        constexpr std::size_t kFitsCaches = 8192;
        std::size_t count = 1;
        while (count * kFitsCaches < stretch.otherEnd - stretch.otherBegin)
            count *= 2;
        // Few are not worth a thread.
        const auto both = [&](const std::function<void()>& one, const std::function<void()>& other) {
            if (count != 1) return platform::doBoth(one, other);
            one();
            other();
        };
        Parts ours, theirs;
        both([&] { ours = Parts(first_, stretch.begin, stretch.end, count); },
             [&] { theirs = Parts(second_, stretch.otherBegin, stretch.otherEnd, count); });
        std::vector<std::uint32_t> others(stretch.end - stretch.begin, kNowhere);
        const auto look = [&](std::size_t part) {
            for (PlaceTable table; part < count; part += 2) {
                table.read(ours[part], theirs[part]);
                for (const PlaceTable::Slot& one : table.slots())
                    if (one.count == PlaceTable::kOnce && one.otherCount == PlaceTable::kOnce)
                        others[one.at - stretch.begin] = one.other;
            }
        };
        both([&] { look(0); }, [&] { look(1); });
        Pairs once;
        once.reserve(std::min(stretch.end - stretch.begin, stretch.otherEnd - stretch.otherBegin));
        for (std::size_t i = 0; i < others.size(); ++i)
            if (others[i] != kNowhere) once.emplace_back(stretch.begin + i, others[i]);
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
        for (const auto& [a, b] : longestAscending(std::move(pairs)))
            found_[a] = static_cast<std::uint32_t>(b);
    }

    const Elements& first_;
    const Elements& second_;
    std::vector<Stretch> waiting_;
    std::vector<std::uint32_t> found_;  // by position in the first: its partner
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> matchSequences(const Elements& first, const Elements& second) {
    return Matching(first, second).run();
}

}  // namespace qrs::host
