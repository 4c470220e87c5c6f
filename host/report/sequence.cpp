// The greedy shortest edit script between two sequences, in time that grows with the number of differences.
#include "host/report/sequence.h"

#include <algorithm>

namespace qrs::host {

namespace {

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// Furthest places on each diagonal (first minus second position), step by step, kept for the way back.
class Search {
  public:
    Search(std::ptrdiff_t n, std::ptrdiff_t m, std::function<bool(std::ptrdiff_t, std::ptrdiff_t)> areEqual)
        : n_(n), m_(m), areEqual_(std::move(areEqual)) {}

    // False when more than maximum elements are in one sequence only.
    bool run(std::ptrdiff_t maximum) {
        for (std::ptrdiff_t step = 0; step <= std::min(maximum, n_ + m_); ++step) {
            steps_.emplace_back(static_cast<std::size_t>(step) + 1);
            for (std::ptrdiff_t k = -step; k <= step; k += 2) {
                std::ptrdiff_t x = step == 0 ? 0 : start(step, k);
                while (x < n_ && x - k < m_ && x - k >= 0 && areEqual_(x, x - k))
                    ++x;
                steps_.back()[index(step, k)] = x;
                if (x >= n_ && x - k >= m_) return true;
            }
        }
        return false;
    }

    Pairs pairs() const {
        Pairs found;
        std::ptrdiff_t x = n_;
        std::ptrdiff_t y = m_;
        for (auto step = static_cast<std::ptrdiff_t>(steps_.size()) - 1; step >= 0; --step) {
            const std::ptrdiff_t k = x - y;
            const std::ptrdiff_t from = step == 0 ? 0 : start(step, k);
            while (x > from) {
                --x;
                --y;
                found.emplace_back(static_cast<std::size_t>(x), static_cast<std::size_t>(y));
            }
            if (step == 0) break;
            if (isDown(step, k))
                --y;
            else
                --x;
        }
        std::reverse(found.begin(), found.end());
        return found;
    }

  private:
    static std::size_t index(std::ptrdiff_t step, std::ptrdiff_t k) { return static_cast<std::size_t>((k + step) / 2); }
    std::ptrdiff_t furthest(std::ptrdiff_t step, std::ptrdiff_t k) const {
        return steps_[static_cast<std::size_t>(step)][index(step, k)];
    }
    // Whether a step came to diagonal k with an element of the second sequence.
    bool isDown(std::ptrdiff_t step, std::ptrdiff_t k) const {
        return k == -step || (k != step && furthest(step - 1, k - 1) < furthest(step - 1, k + 1));
    }
    std::ptrdiff_t start(std::ptrdiff_t step, std::ptrdiff_t k) const {
        return isDown(step, k) ? furthest(step - 1, k + 1) : furthest(step - 1, k - 1) + 1;
    }

    std::ptrdiff_t n_;
    std::ptrdiff_t m_;
    std::function<bool(std::ptrdiff_t, std::ptrdiff_t)> areEqual_;
    std::vector<std::vector<std::ptrdiff_t>> steps_;
};

}  // namespace

Pairs matchSequences(std::size_t firstCount, std::size_t secondCount,
                     const std::function<bool(std::size_t, std::size_t)>& areEqual, std::size_t maximum) {
    const std::size_t shorter = std::min(firstCount, secondCount);
    std::size_t head = 0;
    while (head < shorter && areEqual(head, head))
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head && areEqual(firstCount - 1 - tail, secondCount - 1 - tail))
        ++tail;

    Pairs pairs;
    for (std::size_t i = 0; i < head; ++i)
        pairs.emplace_back(i, i);
    const auto signedCount = [](std::size_t count) { return static_cast<std::ptrdiff_t>(count); };
    Search search(signedCount(firstCount - head - tail), signedCount(secondCount - head - tail),
                  [&](std::ptrdiff_t x, std::ptrdiff_t y) {
                      return areEqual(head + static_cast<std::size_t>(x), head + static_cast<std::size_t>(y));
                  });
    if (search.run(signedCount(maximum)))
        for (const auto& [x, y] : search.pairs())
            pairs.emplace_back(head + x, head + y);
    for (std::size_t i = tail; i > 0; --i)
        pairs.emplace_back(firstCount - i, secondCount - i);
    return pairs;
}

}  // namespace qrs::host
