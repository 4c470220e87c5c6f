// The commands of pictures that drawing files carry, by their numbers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qrs::host {

enum class ProxyCommand : std::uint32_t {
    Extents = 1,
    Circle = 2,
    CircleByPoints = 3,
    Arc = 4,
    ArcByPoints = 5,
    Polyline = 6,
    Polygon = 7,
    Mesh = 8,
    Shell = 9,
    Text = 10,
    TextWithFont = 11,
    Line = 12,
    Ray = 13,
    Color = 14,
    Layer = 16,
    Linetype = 18,
    Fill = 20,
    TrueColor = 22,
    LineWeight = 23,
    LinetypeScale = 24,
    PushMatrix = 29,
    PushOtherMatrix = 30,
    PopMatrix = 31,
    PolylineWithNormal = 32,
    UnicodeText = 36,
    UnicodeTextWithFont = 38,
};

// Bytes before the first command: those of everything, and how many commands there are.
constexpr std::size_t kProxyHeadSize = 8;
// Bytes a command begins with: its own size, these included, and its number. Commands end on such bounds.
constexpr std::size_t kProxyCommandHeadSize = 8;
constexpr std::size_t kProxyBound = 4;

// The first byte of a true colour says what the others are.
constexpr std::uint32_t kProxyByLayer = 0xC0;
constexpr std::uint32_t kProxyByBlock = 0xC1;
constexpr std::uint32_t kProxyRgb = 0xC2;
constexpr std::uint32_t kProxyIndex = 0xC3;

}  // namespace qrs::host
