// Goes along a line dot by dot; each is covered as far as it lies from the middle of the line.
#include "host/plot/thinlines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "host/plot/drawcalls.h"

namespace qrs::host::plot {

ThinLines::ThinLines(cairo_surface_t* surface) {
    if (calls().cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE ||
        calls().cairo_image_surface_get_format(surface) != CAIRO_FORMAT_RGB24)
        return;
    dots_ = calls().cairo_image_surface_get_data(surface);
    stride_ = calls().cairo_image_surface_get_stride(surface);
    right_ = width_ = calls().cairo_image_surface_get_width(surface);
    bottom_ = height_ = calls().cairo_image_surface_get_height(surface);
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

// weight: of the ink, of 256.
void ThinLines::blend(unsigned char* place, const Ink& ink, std::uint32_t weight) {
    constexpr std::uint32_t kRedAndBlue = 0xFF00FF;
    constexpr std::uint32_t kGreen = 0xFF00;
    std::uint32_t dot = 0;
    std::memcpy(&dot, place, sizeof dot);
    const std::uint32_t rest = 256 - weight;
    dot = (((dot & kRedAndBlue) * rest + ink.redAndBlue * weight) >> 8 & kRedAndBlue) |
          (((dot & kGreen) * rest + ink.green * weight) >> 8 & kGreen);
    std::memcpy(place, &dot, sizeof dot);
}

// Dots near an end are covered only as far as the line reaches.
void ThinLines::ends(const Course& course, int first, int last, const Ink& ink) {
    const int low = course.isSteep ? left_ : top_;
    const int high = (course.isSteep ? right_ : bottom_) - 1;
    const double slope = course.sideAlong / course.mainAlong;
    for (int at = first; at <= last; ++at) {
        const double along = at - course.main;
        const double middle = course.side + slope * along;
        const int lowSide = std::max(low, static_cast<int>(std::ceil(middle - course.reach)));
        const int highSide = std::min(high, static_cast<int>(std::floor(middle + course.reach)));
        for (int across = lowSide; across <= highSide; ++across) {
            const double aside = across - course.side;
            const double away = std::fabs(along * course.sideAlong - aside * course.mainAlong);
            const double passed = along * course.mainAlong + aside * course.sideAlong;
            const double covered = std::min(passed + 0.5, course.length - passed + 0.5);
            const double share = std::min(course.half + 0.5 - away, 1.0) * std::min(covered, 1.0);
            if (!(covered > 0.0) || !(share > 0.0)) continue;
            const int x = course.isSteep ? across : at;
            const int y = course.isSteep ? at : across;
            blend(dots_ + static_cast<std::ptrdiff_t>(y) * stride_ + std::ptrdiff_t{x} * 4, ink,
                  static_cast<std::uint32_t>(share * 256.0 + 0.5));
        }
    }
}

// Nearly all dots of a drawing: the line is whole here, and covers at most two dots on either side of its middle, so
// that whole numbers do, in parts of 65536.
void ThinLines::middle(const Course& course, int first, int last, const Ink& ink) {
    constexpr double kParts = 65536.0;
    constexpr int kShift = 16;
    constexpr int kMost = 1 << kShift;
    const int low = course.isSteep ? left_ : top_;
    const int high = (course.isSteep ? right_ : bottom_) - 1;
    const std::ptrdiff_t mainStep = course.isSteep ? stride_ : 4;
    const std::ptrdiff_t sideStep = course.isSteep ? 4 : stride_;
    const double slope = course.sideAlong / course.mainAlong;
    const auto whole = static_cast<int>(std::lround((course.half + 0.5) * kParts));
    const auto scale = static_cast<int>(std::lround(std::fabs(course.mainAlong) * kParts));
    // Finer still, so that thousands of steps do not add up to a part.
    const std::int64_t step = std::llround(slope * kParts * kParts);
    std::int64_t fine = std::llround((course.side + slope * (first - course.main)) * kParts * kParts);
    unsigned char* row = dots_ + first * mainStep;
    for (int at = first; at <= last; ++at, fine += step, row += mainStep) {
        const auto side = static_cast<int>(fine >> (2 * kShift));
        const auto past = static_cast<std::int64_t>(fine >> kShift & (kMost - 1));
        const int near = whole - static_cast<int>(past * scale >> kShift);
        const int next = whole - static_cast<int>((kMost - past) * scale >> kShift);
        const int shares[] = {near - scale, near, next, next - scale};
        unsigned char* place = row + (side - 1) * sideStep;
        const bool isInside = side > low && side + 2 <= high;
        for (int i = 0; i < 4; ++i, place += sideStep) {
            const int across = side - 1 + i;
            if (shares[i] <= 0 || (!isInside && (across < low || across > high))) continue;
            blend(place, ink, static_cast<std::uint32_t>((std::min(shares[i], kMost) + 128) >> 8));
        }
    }
}

void ThinLines::line(const Vec& from, const Vec& to, const Color& color, double width) {
    // Dots have their middles at half numbers.
    const double fromX = from.x - 0.5;
    const double fromY = from.y - 0.5;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double alongX = length > 0.0 ? dx / length : 1.0;
    const double alongY = length > 0.0 ? dy / length : 0.0;
    Course course{};
    course.isSteep = std::fabs(dy) > std::fabs(dx);
    course.half = std::max(width, 1.0) / 2;
    course.length = length;
    course.main = course.isSteep ? fromY : fromX;
    course.side = course.isSteep ? fromX : fromY;
    course.mainAlong = course.isSteep ? alongY : alongX;
    course.sideAlong = course.isSteep ? alongX : alongY;
    course.reach = (course.half + 0.5) / std::fabs(course.mainAlong);
    const double end = course.main + course.mainAlong * length;
    const double low = std::min(course.main, end);
    const double high = std::max(course.main, end);
    const int first = std::max(course.isSteep ? top_ : left_, static_cast<int>(std::ceil(low - course.reach)));
    const int last =
        std::min((course.isSteep ? bottom_ : right_) - 1, static_cast<int>(std::floor(high + course.reach)));
    const Ink ink(color);
    // How far from an end, along the axis, its cut is felt.
    const double felt = 0.5 + course.reach;
    const int firstWhole = std::max(first, static_cast<int>(std::ceil(low + felt)));
    const int lastWhole = std::min(last, static_cast<int>(std::floor(high - felt)));
    if (firstWhole > lastWhole) return ends(course, first, last, ink);
    ends(course, first, firstWhole - 1, ink);
    middle(course, firstWhole, lastWhole, ink);
    ends(course, lastWhole + 1, last, ink);
}

}  // namespace qrs::host::plot
