// Goes along a line dot by dot; each is covered as far as it lies from the middle of the line.
#include "host/plot/thinlines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace qrs::host::plot {

ThinLines::ThinLines(cairo_surface_t* surface) {
    if (cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE ||
        cairo_image_surface_get_format(surface) != CAIRO_FORMAT_RGB24)
        return;
    dots_ = cairo_image_surface_get_data(surface);
    stride_ = cairo_image_surface_get_stride(surface);
    right_ = width_ = cairo_image_surface_get_width(surface);
    bottom_ = height_ = cairo_image_surface_get_height(surface);
}

void ThinLines::setClip(const Box& clip) {
    const auto dot = [](double place, int most) {
        return static_cast<int>(std::clamp(std::round(place), 0.0, static_cast<double>(most)));
    };
    left_ = dot(clip.low.x, width_);
    top_ = dot(clip.low.y, height_);
    right_ = dot(clip.high.x, width_);
    bottom_ = dot(clip.high.y, height_);
}

void ThinLines::blend(int x, int y, const Color& color, double share) {
    if (x < left_ || x >= right_ || y < top_ || y >= bottom_) return;
    unsigned char* const place = dots_ + static_cast<std::ptrdiff_t>(y) * stride_ + std::ptrdiff_t{x} * 4;
    std::uint32_t dot = 0;
    std::memcpy(&dot, place, sizeof dot);
    const auto weight = static_cast<std::uint32_t>(share * 256.0 + 0.5);
    const auto mix = [weight](std::uint32_t old, std::uint32_t fresh) {
        return (old * (256 - weight) + fresh * weight) >> 8;
    };
    dot = mix(dot >> 16 & 0xFF, color.red) << 16 | mix(dot >> 8 & 0xFF, color.green) << 8 | mix(dot & 0xFF, color.blue);
    std::memcpy(place, &dot, sizeof dot);
}

void ThinLines::line(const Vec& from, const Vec& to, const Color& color, double width) {
    // Dots have their middles at half numbers.
    const double fromX = from.x - 0.5;
    const double fromY = from.y - 0.5;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    const bool isSteep = std::fabs(dy) > std::fabs(dx);
    const double half = std::max(width, 1.0) / 2;
    const double alongX = length > 0.0 ? dx / length : 1.0;
    const double alongY = length > 0.0 ? dy / length : 0.0;
    const double main = isSteep ? fromY : fromX;
    const double side = isSteep ? fromX : fromY;
    const double mainAlong = isSteep ? alongY : alongX;
    const double slope = (isSteep ? alongX : alongY) / mainAlong;
    const double reach = (half + 0.5) / std::fabs(mainAlong);
    const double end = main + mainAlong * length;
    const int low = isSteep ? top_ : left_;
    const int high = (isSteep ? bottom_ : right_) - 1;
    const int first = std::max(low, static_cast<int>(std::ceil(std::min(main, end) - reach)));
    const int last = std::min(high, static_cast<int>(std::floor(std::max(main, end) + reach)));
    for (int at = first; at <= last; ++at) {
        const double middle = side + slope * (at - main);
        const int lowSide = static_cast<int>(std::ceil(middle - reach));
        const int highSide = static_cast<int>(std::floor(middle + reach));
        for (int across = lowSide; across <= highSide; ++across) {
            const double x = (isSteep ? across : at) - fromX;
            const double y = (isSteep ? at : across) - fromY;
            const double away = std::fabs(x * alongY - y * alongX);
            const double passed = x * alongX + y * alongY;
            const double ends = std::min(passed + 0.5, length - passed + 0.5);
            const double share = std::min(half + 0.5 - away, 1.0) * std::min(ends, 1.0);
            if (ends > 0.0 && share > 0.0) blend(isSteep ? across : at, isSteep ? at : across, color, share);
        }
    }
}

}  // namespace qrs::host::plot
