// Colours and the palette.
#include <algorithm>
#include <array>

#include "dbcolor.h"

namespace {

using Palette = std::array<Adesk::UInt32, 256>;

Adesk::UInt32 rgbOf(int red, int green, int blue) {
    return static_cast<Adesk::UInt32>(red * 65536 + green * 256 + blue);
}

// The nine named colours, 24 hues in 5 brightnesses, full and pale, and six greys.
Palette makePalette() {
    Palette palette{};
    constexpr Adesk::UInt32 named[] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                       0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    constexpr Adesk::UInt32 greys[] = {0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};
    constexpr int brightness[] = {255, 165, 127, 76, 38};
    // A sixth of the circle of hues is four steps.
    constexpr int steps = 4;
    std::copy(std::begin(named), std::end(named), palette.begin());
    std::copy(std::begin(greys), std::end(greys), palette.begin() + 250);
    for (int index = 10; index < 250; ++index) {
        const int hue = index / 10 - 1;
        const int value = brightness[index % 10 / 2];
        const bool pale = index % 2 == 1;
        // Distance from a hue at which a component is full, in steps around the circle of 24.
        const auto component = [&](int center) {
            const int away = std::abs((hue - center + 36) % 24 - 12);
            const int share = std::clamp(2 * steps - away, 0, steps);
            return pale ? (value * steps + value * share) / (2 * steps) : value * share / steps;
        };
        palette[static_cast<std::size_t>(index)] = rgbOf(component(0), component(8), component(16));
    }
    return palette;
}

const Palette& palette() {
    static const Palette colors = makePalette();
    return colors;
}

int redOf(Adesk::UInt32 rgb) {
    return static_cast<int>(rgb >> 16 & 0xFF);
}
int greenOf(Adesk::UInt32 rgb) {
    return static_cast<int>(rgb >> 8 & 0xFF);
}
int blueOf(Adesk::UInt32 rgb) {
    return static_cast<int>(rgb & 0xFF);
}

}  // namespace

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 colorIndex) {
    return palette()[colorIndex];
}

Adesk::UInt8 AcCmEntityColor::lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    int best = 1;
    int bestDistance = 3 * 256 * 256;
    for (int index = 1; index < 256; ++index) {
        const Adesk::UInt32 rgb = palette()[static_cast<std::size_t>(index)];
        const int r = redOf(rgb) - red;
        const int g = greenOf(rgb) - green;
        const int b = blueOf(rgb) - blue;
        const int distance = r * r + g * g + b * b;
        if (distance >= bestDistance) continue;
        best = index;
        bestDistance = distance;
    }
    return static_cast<Adesk::UInt8>(best);
}

Acad::ErrorStatus AcCmColor::setColorMethod(ColorMethod method) {
    if (method < kByLayer || method > kNone) return Acad::eInvalidInput;
    method_ = method;
    return Acad::eOk;
}

Adesk::UInt16 AcCmColor::colorIndex() const {
    switch (method_) {
        case kByLayer:
            return kACIbyLayer;
        case kByBlock:
            return kACIbyBlock;
        case kByColor:
            return besideRgb_ != 0 ? besideRgb_ : lookUpACI(red(), green(), blue());
        case kForeground:
            return kACIforeground;
        case kNone:
            return kACInone;
        default:
            return index_;
    }
}

Acad::ErrorStatus AcCmColor::setColorIndex(Adesk::UInt16 colorIndex) {
    if (colorIndex > kACInone) return Acad::eOutOfRange;
    method_ = colorIndex == kACIbyBlock   ? kByBlock
              : colorIndex == kACIbyLayer ? kByLayer
              : colorIndex == kACInone    ? kNone
                                          : kByACI;
    if (method_ == kByACI) index_ = colorIndex;
    return Acad::eOk;
}

Adesk::UInt32 AcCmColor::rgb() const {
    if (method_ == kByColor) return rgb_;
    return method_ == kByACI ? lookUpRGB(static_cast<Adesk::UInt8>(index_)) : 0;
}

Adesk::UInt8 AcCmColor::red() const {
    return static_cast<Adesk::UInt8>(redOf(rgb()));
}

Adesk::UInt8 AcCmColor::green() const {
    return static_cast<Adesk::UInt8>(greenOf(rgb()));
}

Adesk::UInt8 AcCmColor::blue() const {
    return static_cast<Adesk::UInt8>(blueOf(rgb()));
}

Acad::ErrorStatus AcCmColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    method_ = kByColor;
    rgb_ = rgbOf(red, green, blue);
    besideRgb_ = 0;
    return Acad::eOk;
}

bool AcCmColor::operator==(const AcCmColor& other) const {
    if (method_ != other.method_) return false;
    if (method_ == kByColor) return rgb_ == other.rgb_;
    return (method_ != kByACI && method_ != kByPen) || index_ == other.index_;
}
