// Texts: what a picture needs of them, and for the others their boxes. There are no glyphs to measure: a character
// counts as wide as it is high when it is an ideograph or the like, and as 0.7 of that otherwise.
#include <algorithm>
#include <utility>
#include <vector>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"
#include "host/pick/textcolumns.h"
#include "host/platform/text.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

constexpr double kNarrow = 0.7;
constexpr wchar_t kFirstWide = 0x1100;

double widthOf(wchar_t c) {
    if (platform::isLowSurrogate(static_cast<char32_t>(c)))
        return 0.0;  // the second half of a character beyond the basic plane
    return c < kFirstWide ? kNarrow : 1.0;
}

// In heights. %%c and the like are one character, %%u and %%o none.
double lineWidth(const std::wstring& text) {
    double width = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, L"%%") == 0 && i + 2 < text.size()) {
            const wchar_t code = text[i + 2];
            const bool isSwitch = code == L'u' || code == L'U' || code == L'o' || code == L'O';
            width += isSwitch ? 0.0 : kNarrow;
            i += 2;
            continue;
        }
        width += widthOf(text[i]);
    }
    return width;
}

// A filled rectangle from low to high in a plane's coordinates turned around a point.
void drawBox(const Pen& pen, const Vec& anchor, double angle, const Vec& low, const Vec& high) {
    const Vec x{std::cos(angle), std::sin(angle), 0};
    const Pen turned = pen.in(Transform{x, {-x.y, x.x, 0}, {0, 0, 1}, anchor});
    turned.filled({{low.x, low.y, 0}, {high.x, low.y, 0}, {high.x, high.y, 0}, {low.x, high.y, 0}});
}

enum Across { kLeft = 0, kCenter = 1, kRight = 2, kAligned = 3, kMiddle = 4, kFit = 5 };
enum Up { kBaseline = 0, kBottom = 1, kHalf = 2, kTop = 3 };

// For a picture, which has glyphs to measure.
void drawGlyphs(const Entity& entity, const Pen& plane, const Vec& at, double angle, TextLine line) {
    line.style = entity.text(codes::kTextStyle);
    line.widthFactor = entity.real(text::kWidthFactor, 1.0);
    line.oblique = entity.real(text::kOblique, 0.0) * kRadiansPerDegree;
    const long mirrored = entity.integer(text::kGeneration, 0);
    line.isBackwards = (mirrored & 2) != 0;
    line.isUpsideDown = (mirrored & 4) != 0;
    const Vec x{std::cos(angle), std::sin(angle), 0};
    plane.picture()->textLine(line, plane.in(Transform{x, {-x.y, x.x, 0}, {0, 0, 1}, at}).toWorld());
}

// verticalCode: TEXT and attributes tell the vertical alignment by different codes.
void drawTextLine(const Entity& entity, const Pen& pen, const std::wstring& shown, int verticalCode) {
    const std::optional<Vec> start = entity.point(codes::kPoint);
    const double height = entity.real(text::kHeight, 0.0);
    if (!start || !(height > 0.0)) return;
    const long across = entity.integer(text::kHorizontal, 0);
    const long up = entity.integer(verticalCode, 0);
    const Vec anchor =
        across != kLeft || up != kBaseline ? entity.point(text::kAlignmentPoint).value_or(*start) : *start;
    double width = lineWidth(shown) * height * std::fabs(entity.real(text::kWidthFactor, 1.0));
    double angle = entity.real(text::kRotation, 0.0) * kRadiansPerDegree;
    Vec at = anchor;
    double left = 0.0;
    if (across == kAligned || across == kFit) {
        at = *start;
        width = std::hypot(anchor.x - at.x, anchor.y - at.y);
        angle = std::atan2(anchor.y - at.y, anchor.x - at.x);
    } else if (across == kCenter || across == kMiddle) {
        left = -width / 2;
    } else if (across == kRight) {
        left = -width;
    }
    const Pen plane = pen.in(planeOf(entity.normal()));
    if (pen.picture()) {
        TextLine line;
        line.text = shown;
        line.height = height;
        line.across = static_cast<TextAcross>(std::clamp(across, 0L, long{kFit}));
        line.up = static_cast<TextUp>(std::clamp(up, 0L, long{kTop}));
        line.length = width;
        return drawGlyphs(entity, plane, at, angle, std::move(line));
    }
    const double bottom = across == kMiddle || up == kHalf ? -height / 2 : up == kTop ? -height : 0.0;
    const long mirrored = entity.integer(text::kGeneration, 0);
    const double sideways = (mirrored & 2) ? -1.0 : 1.0;
    const double upwards = (mirrored & 4) ? -1.0 : 1.0;
    drawBox(plane, at, angle, {left * sideways, bottom * upwards, 0},
            {(left + width) * sideways, (bottom + height) * upwards, 0});
}

// What follows a backslash, and whether it is a code with a value up to a semicolon.
bool takesValue(wchar_t code) {
    return std::wstring_view(L"ACFHQTWSfp").find(code) != std::wstring_view::npos;
}

// The widths of the lines of formatted text, in heights.
std::vector<double> paragraphWidths(const std::wstring& text) {
    std::vector<double> widths(1, 0.0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'{' || c == L'}') continue;
        if (c == L'\n') {
            widths.push_back(0.0);
        } else if (c != L'\\' || i + 1 == text.size()) {
            widths.back() += widthOf(c);
        } else if (const wchar_t code = text[++i]; code == L'P' || code == L'X') {
            widths.push_back(0.0);
        } else if (takesValue(code)) {
            const std::size_t end = text.find(L';', i);
            if (end == std::wstring::npos) break;
            if (code == L'S') widths.back() += lineWidth(text.substr(i + 1, end - i - 1)) / 2;
            i = end;
        } else if (code == L'\\' || code == L'{' || code == L'}' || code == L'~') {
            widths.back() += kNarrow;
        }
    }
    return widths;
}

// Long text comes in pieces of 250 characters, the last one with another code.
std::wstring paragraphText(const Entity& entity) {
    std::wstring text;
    for (const int code : {codes::kOtherText, codes::kText})
        for (const Entity::Field& field : entity.fields())
            if (field.code == code) text += entity.drawing().decode(field.value);
    return text;
}

// With what stands in further columns.
std::wstring paragraphText(const Entity& entity, const TextColumns& columns) {
    std::wstring text = paragraphText(entity);
    Entity other;
    for (const dxf::RecordId further : columns.further) {
        other.read(entity.drawing(), further);
        text += paragraphText(other);
    }
    return text;
}

// Width and height: as the drawing tells them, otherwise estimated with lines broken at the width that is set.
Vec paragraphSize(const Entity& entity, double height) {
    const double told = entity.real(mtext::kWidth, 0.0);
    const double toldHeight = entity.real(mtext::kTotalHeight, 0.0);
    if (told > 0.0 && toldHeight > 0.0) return {told, toldHeight, 0};
    constexpr double kLineSpacing = 5.0 / 3.0;
    const double most = entity.real(mtext::kReferenceWidth, 0.0);
    double widest = 0.0;
    double lines = 0.0;
    for (const double inHeights : paragraphWidths(paragraphText(entity))) {
        const double width = inHeights * height;
        const double broken = most > 0.0 && width > most ? std::ceil(width / most) : 1.0;
        widest = std::max(widest, broken > 1.0 ? most : width);
        lines += broken;
    }
    return {widest, height + (lines - 1.0) * height * kLineSpacing * entity.real(mtext::kLineSpacing, 1.0), 0};
}

std::optional<TextGround> groundOf(const Entity& entity) {
    constexpr long kFilled = 1;
    constexpr long kPaper = 2;
    constexpr long kFramed = 16;
    constexpr long kOpacityGiven = 0x02000000;
    const long how = entity.integer(mtext::kMask, 0);
    if ((how & (kFilled | kPaper | kFramed)) == 0) return std::nullopt;
    TextGround ground;
    ground.border = entity.real(mtext::kMaskScale, 1.5) - 1.0;
    ground.isFilled = (how & (kFilled | kPaper)) != 0;
    ground.isFramed = (how & kFramed) != 0;
    if ((how & kPaper) != 0) return ground;
    if (entity.has(mtext::kMaskColor)) ground.index = entity.integer(mtext::kMaskColor, 0);
    if (entity.has(mtext::kMaskTrueColor)) ground.rgb = entity.integer(mtext::kMaskTrueColor, 0);
    const long transparency = entity.integer(mtext::kMaskTransparency, 0);
    if ((transparency & kOpacityGiven) != 0) ground.opacity = static_cast<std::uint8_t>(transparency & 0xFF);
    return ground;
}

}  // namespace

double textWidth(const std::wstring& text) {
    return lineWidth(text);
}

void drawText(const Entity& entity, const Pen& pen) {
    drawTextLine(entity, pen, entity.text(codes::kText), text::kVertical);
}

void drawAttribute(const Entity& entity, const Pen& pen) {
    constexpr long kHidden = 1;
    if (!(entity.integer(codes::kFlags, 0) & kHidden))
        drawTextLine(entity, pen, entity.text(codes::kText), text::kAttributeVertical);
}

// A definition by itself shows its tag.
void drawAttributeDefinition(const Entity& entity, const Pen& pen) {
    drawTextLine(entity, pen, entity.text(text::kTag), text::kAttributeVertical);
}

void drawAttributeText(const Entity& definition, const std::wstring& shown, const Pen& pen) {
    drawTextLine(definition, pen, shown, text::kAttributeVertical);
}

void drawParagraphs(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    const double height = entity.real(mtext::kHeight, 0.0);
    if (!at || !(height > 0.0)) return;
    const Vec z = unit(entity.normal(), {0, 0, 1});
    const Transform plane = planeOf(z);
    const double angle = entity.real(mtext::kRotation, 0.0) * kRadiansPerDegree;
    const Vec turned = plane.vector({std::cos(angle), std::sin(angle), 0});
    const Vec x = unit(entity.point(mtext::kDirection).value_or(turned), turned);
    // 1 to 9: left, middle, right in three rows from the top.
    const long place = std::clamp(entity.integer(mtext::kAttachment, 1), 1L, 9L) - 1;
    if (Picture* const picture = pen.picture()) {
        TextColumns columns = readTextColumns(entity.drawing(), entity.id());
        Paragraphs paragraphs;
        paragraphs.text = paragraphText(entity, columns);
        paragraphs.style = entity.text(codes::kTextStyle);
        paragraphs.height = height;
        paragraphs.width = std::max(entity.real(mtext::kReferenceWidth, 0.0), 0.0);
        paragraphs.lineSpacing = entity.real(mtext::kLineSpacing, 1.0);
        paragraphs.column = static_cast<int>(place % 3);
        paragraphs.row = static_cast<int>(place / 3);
        paragraphs.ground = groundOf(entity);
        if (!columns.heights.empty()) {
            paragraphs.columns = std::move(columns.heights);
            paragraphs.width = columns.width;
            paragraphs.gutter = columns.gutter;
            if (paragraphs.ground && columns.hasFrames) paragraphs.ground->isFramed = false;
        }
        return picture->paragraphs(paragraphs, pen.in(Transform{x, cross(z, x), z, *at}).toWorld());
    }
    Vec size = paragraphSize(entity, height);
    const TextColumns columns = readTextColumns(entity.drawing(), entity.id());
    if (!columns.heights.empty()) {
        const auto count = static_cast<double>(columns.heights.size());
        const double highest = *std::max_element(columns.heights.begin(), columns.heights.end());
        size = {count * columns.width + (count - 1) * columns.gutter, highest > 0.0 ? highest : size.y / count, 0};
    }
    const double left = -size.x * static_cast<double>(place % 3) / 2;
    const double top = size.y * static_cast<double>(place / 3) / 2;
    drawBox(pen.in(Transform{x, cross(z, x), z, *at}), Vec{}, 0.0, {left, top - size.y, 0}, {left + size.x, top, 0});
}

}  // namespace qrs::host::pick
