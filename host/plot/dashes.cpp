// Fits the pattern of a linetype into a length.
#include "host/plot/dashes.h"

#include <algorithm>
#include <cmath>

namespace qrs::host::plot {

DashRow::DashRow(const Linetype& linetype, double scale, double lengthInDots)
    : linetype_(linetype), scale_(scale), length_(lengthInDots) {
    constexpr double kFinest = 0.7;  // dots of a whole pattern
    const double pattern = linetype.length * scale;
    if (!(pattern >= kFinest) || !std::isfinite(pattern) || !std::isfinite(lengthInDots)) return;
    const double first = linetype.dashes.front().length * scale;
    if (first > 0.0) {
        const double whole = std::floor(lengthInDots / pattern);
        if (whole < 1.0) return;
        lead_ = (lengthInDots - whole * pattern + first) / 2;
        phase_ = first;
    }
    isBroken_ = true;
}

void DashRow::forEach(double from, double to, const TakeDash& takeDash, const TakeCarried& takeCarried) const {
    const double pattern = linetype_.length * scale_;
    const double begin = lead_ - phase_;  // where the first pattern would begin
    const double end = length_ - lead_;   // where the last dash begins
    if (lead_ > 0.0 && from < lead_) takeDash(from, std::min(lead_, to));
    const double skipped = std::max(0.0, std::floor((from - begin) / pattern));
    for (double start = begin + skipped * pattern; start < std::min(to, end); start += pattern) {
        double at = start;
        for (const Dash& dash : linetype_.dashes) {
            const double next = at + std::fabs(dash.length) * scale_;
            const double low = std::max({at, from, lead_});
            const double high = std::min({next, to, lead_ > 0.0 ? end : length_});
            if (dash.length >= 0.0 && (low < high || (dash.length == 0.0 && low == at && at <= high)))
                takeDash(low, high);
            if ((!dash.text.empty() || dash.shape != 0) && next >= from && next < to && next > lead_ && next <= end)
                takeCarried(dash, next);
            at = next;
        }
        if (start + pattern <= start) break;  // too far out for the numbers
    }
    if (lead_ > 0.0 && to > end) takeDash(std::max(from, end), to);
}

}  // namespace qrs::host::plot
