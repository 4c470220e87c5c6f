// The palette: nine colours and six greys by name, the rest by hue, brightness and strength.
#include "host/plot/palette.h"

#include <cmath>

namespace qrs::host::plot {

namespace {

constexpr long kNamed[] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                           0x0000FF, 0xFF00FF, 0x000000, 0x808080, 0xC0C0C0};
constexpr long kGreys[] = {0x333333, 0x5B5B5B, 0x848484, 0xADADAD, 0xD6D6D6, 0xFFFFFF};
constexpr long kFirstHue = 10;
constexpr long kFirstGrey = 250;
constexpr double kBrightness[] = {255, 165, 127, 76, 38};

}  // namespace

Color trueColor(long value) {
    return {static_cast<std::uint8_t>(value >> 16 & 0xFF), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF), 255};
}

Color paletteColor(long index) {
    if (index < 0 || index >= kByLayer) return {};
    if (index < kFirstHue) return trueColor(kNamed[index]);
    if (index >= kFirstGrey) return trueColor(kGreys[index - kFirstGrey]);
    // 24 hues around the circle, five brightnesses of each; odd ones are half as strong.
    const double hue = static_cast<double>((index - kFirstHue) / 10) / 4.0;  // red, yellow, green ... at 0, 1, 2 ...
    const double bright = kBrightness[index % 10 / 2];
    const bool isPale = index % 2 != 0;
    const auto channel = [&](double top) {
        double away = std::fabs(hue - top);
        away = std::fmin(away, 6.0 - away);
        const double strength = std::fmin(std::fmax(2.0 - away, 0.0), 1.0);
        return static_cast<std::uint8_t>(bright * (isPale ? 0.5 + strength / 2 : strength));
    };
    return {channel(0.0), channel(2.0), channel(4.0), 255};
}

}  // namespace qrs::host::plot
