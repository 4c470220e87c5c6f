// Writing pictures of entities, and where in an entity they stand.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "host/drawing/objecttags.h"
#include "host/drawing/proxycommands.h"
#include "host/drawing/proxygraphics.h"
#include "host/dxf/recordwalk.h"
#include "host/platform/text.h"

namespace qrs::host {

namespace codes = dxf::codes;

namespace {

constexpr int kByLayerIndex = 256;
constexpr dxf::Version kFirstWithPictures = dxf::Version::R2000;
constexpr std::size_t kChunkSize = 127;  // bytes

// Where a picture stands, and the sections that can have one: what all entities share, and an entity of a class that
// some program did not know.
constexpr int kSizeCode = 92;
constexpr int kLongSizeCode = 160;
constexpr dxf::Version kFirstWithLongSize = dxf::Version::R2010;
constexpr int kChunkCode = 310;
constexpr std::string_view kCommonSection = "AcDbEntity";
constexpr std::string_view kUnknownSection = "AcDbProxyEntity";

void putUnit(std::string& bytes, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}
void put(std::string& bytes, std::uint32_t value) {
    putUnit(bytes, value, 4);
}
void put(std::string& bytes, double value) {
    std::uint64_t bits = 0;
    static_assert(sizeof value == sizeof bits, "reals are of 8 bytes");
    std::memcpy(&bits, &value, sizeof bits);
    putUnit(bytes, bits, 8);
}
// Sines and the like differ in their last digits from machine to machine; pictures shall not. Directions have all
// their digits after the point, places have not.
constexpr int kDirectionBits = 40;
constexpr int kPlaceBits = 20;

double rounded(double value, int bits) {
    constexpr double kNoFractions = 1e12;
    return std::fabs(value) < kNoFractions ? std::ldexp(std::round(std::ldexp(value, bits)), -bits) + 0.0 : value;
}
void put(std::string& bytes, const ProxyPoint& point, int bits) {
    put(bytes, rounded(point.x, bits));
    put(bytes, rounded(point.y, bits));
    put(bytes, rounded(point.z, bits));
}

void putCommand(std::string& commands, std::uint32_t& count, ProxyCommand command, std::string data) {
    data.resize((data.size() + kProxyBound - 1) / kProxyBound * kProxyBound, '\0');
    put(commands, static_cast<std::uint32_t>(data.size() + kProxyCommandHeadSize));
    put(commands, static_cast<std::uint32_t>(command));
    commands += data;
    ++count;
}

bool isFinite(const ProxyPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

bool isDrawable(const ProxyShape& shape) {
    return !shape.points.empty() && std::all_of(shape.points.begin(), shape.points.end(), &isFinite) &&
           isFinite(shape.normal) && isFinite(shape.direction) && std::isfinite(shape.radius) &&
           std::isfinite(shape.sweep) && std::isfinite(shape.height) && std::isfinite(shape.widthFactor) &&
           std::isfinite(shape.oblique);
}

// The tags of an entity's picture: its size, and the chunks right after it.
struct Place {
    bool isThere = false;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;  // where a new one goes in: both are the end of the common section
    bool hasCommonSection = false;
    int sizeCode = 0;
    std::string sizeText;
    std::string picture;

    bool holds(std::string_view wanted, int wantedCode) const {
        if (picture != wanted) return false;
        if (!isThere) return wanted.empty();
        return dxf::toInteger(sizeText, -1) == static_cast<std::int64_t>(wanted.size()) && sizeCode == wantedCode;
    }
};

int sizeCodeOf(const dxf::Drawing& drawing) {
    return drawing.version() < kFirstWithLongSize ? kSizeCode : kLongSizeCode;
}

Place findPicture(const dxf::Drawing& drawing, dxf::RecordId id) {
    Place place;
    bool isOpen = false;  // chunks that come belong to it
    bool isWhole = true;
    dxf::RecordWalk walk(drawing.tags(id));
    for (dxf::Tag tag; walk.next(tag) && walk.part() <= dxf::Part::Group;) {
        const bool isCommon = walk.section() == kCommonSection;
        if (isCommon) place.hasCommonSection = true;
        if (!place.isThere && isCommon) place.begin = place.end = tag.end;
        if (!walk.isOwn()) {
            isOpen = false;
            continue;
        }
        const bool isSize = tag.code == kSizeCode || tag.code == kLongSizeCode;
        if (isSize && !place.isThere && (isCommon || walk.section() == kUnknownSection)) {
            place.isThere = isOpen = true;
            place.begin = tag.begin;
            place.end = tag.end;
            place.sizeCode = tag.code;
            place.sizeText = tag.value;
        } else if (isOpen && tag.code == kChunkCode) {
            place.end = tag.end;
            isWhole = platform::appendHexBytes(dxf::trimmed(tag.value), place.picture) && isWhole;
        } else {
            isOpen = false;
        }
    }
    if (!isWhole) place.picture.clear();
    return place;
}

}  // namespace

bool canHavePicture(const dxf::Drawing& drawing) {
    return drawing.version() >= kFirstWithPictures;
}

std::string proxyGraphicsOf(const dxf::Drawing& drawing, dxf::RecordId id) {
    return findPicture(drawing, id).picture;
}

bool holdsProxyGraphics(const dxf::Drawing& drawing, dxf::RecordId id, std::string_view picture) {
    return findPicture(drawing, id).holds(picture, sizeCodeOf(drawing));
}

bool setProxyGraphics(dxf::Drawing& drawing, dxf::RecordId id, std::string_view picture) {
    const Place place = findPicture(drawing, id);
    if (!canHavePicture(drawing) || !place.hasCommonSection) return false;
    const int sizeCode = sizeCodeOf(drawing);
    if (place.holds(picture, sizeCode)) return true;
    std::vector<dxf::NewTag> tags;
    if (!picture.empty()) tags.push_back({sizeCode, paddedLike(place.sizeText, std::to_string(picture.size()))});
    for (std::size_t at = 0; at < picture.size(); at += kChunkSize)
        tags.push_back({kChunkCode, platform::hexText(picture.substr(at, kChunkSize))});
    if (place.isThere) drawing.eraseTags(id, place.begin, place.end);
    if (!tags.empty()) drawing.insertTags(id, place.begin, tags);
    return true;
}

void ProxyGraphicsWriter::change(const ProxyTraits& traits) {
    const auto set = [this](ProxyCommand command, std::uint32_t value) {
        std::string data;
        put(data, value);
        putCommand(commands_, count_, command, std::move(data));
    };
    if (traits.rgb && traits.rgb != traits_.rgb)
        set(ProxyCommand::TrueColor, kProxyRgb << 24 | (*traits.rgb & 0xFFFFFFU));
    else if (!traits.rgb && (traits.colorIndex != traits_.colorIndex || traits_.rgb))
        set(ProxyCommand::Color, static_cast<std::uint32_t>(traits.colorIndex.value_or(kByLayerIndex)));
    if (traits.layer && traits.layer != traits_.layer) set(ProxyCommand::Layer, *traits.layer);
    if (traits.linetype && traits.linetype != traits_.linetype) set(ProxyCommand::Linetype, *traits.linetype);
    if (traits.lineWeight && traits.lineWeight != traits_.lineWeight)
        set(ProxyCommand::LineWeight, static_cast<std::uint32_t>(*traits.lineWeight));
    if (traits.linetypeScale && traits.linetypeScale != traits_.linetypeScale) {
        std::string data;
        put(data, *traits.linetypeScale);
        putCommand(commands_, count_, ProxyCommand::LinetypeScale, std::move(data));
    }
    if (traits.isFilled != traits_.isFilled) set(ProxyCommand::Fill, traits.isFilled ? 1 : 0);
    traits_ = traits;
}

void ProxyGraphicsWriter::add(const ProxyShape& shape) {
    using Kind = ProxyShape::Kind;
    if (!isDrawable(shape)) return;
    change(shape.traits);
    std::string data;
    switch (shape.kind) {
        case Kind::Text:
            return addText(shape);
        case Kind::Polyline:
        case Kind::Polygon:
            put(data, static_cast<std::uint32_t>(shape.points.size()));
            for (const ProxyPoint& point : shape.points)
                put(data, point, kPlaceBits);
            return putCommand(commands_, count_,
                              shape.kind == Kind::Polygon ? ProxyCommand::Polygon : ProxyCommand::Polyline, data);
        case Kind::Circle:
        case Kind::Arc:
            put(data, shape.points.front(), kPlaceBits);
            put(data, rounded(shape.radius, kPlaceBits));
            put(data, shape.normal, kDirectionBits);
            if (shape.kind == Kind::Circle) return putCommand(commands_, count_, ProxyCommand::Circle, data);
            put(data, shape.direction, kDirectionBits);
            put(data, rounded(shape.sweep, kDirectionBits));
            put(data, std::uint32_t{0});  // the arc alone, without its chord or radii
            return putCommand(commands_, count_, ProxyCommand::Arc, data);
        case Kind::Line:
        case Kind::Ray:
            if (shape.points.size() != 2) return;
            put(data, shape.points[0], kPlaceBits);
            put(data, shape.points[1], kPlaceBits);
            return putCommand(commands_, count_, shape.kind == Kind::Ray ? ProxyCommand::Ray : ProxyCommand::Line,
                              data);
    }
}

void ProxyGraphicsWriter::addText(const ProxyShape& shape) {
    std::string data;
    put(data, shape.points.front(), kPlaceBits);
    put(data, shape.normal, kDirectionBits);
    put(data, shape.direction, kDirectionBits);
    put(data, rounded(shape.height, kPlaceBits));
    put(data, shape.widthFactor);
    put(data, shape.oblique);
    const bool isUnicode = drawing_.version() >= dxf::kFirstInUtf8;
    if (isUnicode) {
        for (std::size_t i = 0; i < shape.text.size();)
            platform::forEachUtf16Unit(platform::nextCodePoint(shape.text, i),
                                       [&](char16_t unit) { putUnit(data, unit, 2); });
        putUnit(data, 0, 2);
    } else {
        data += drawing_.encode(shape.text);
        data += '\0';
    }
    putCommand(commands_, count_, isUnicode ? ProxyCommand::UnicodeText : ProxyCommand::Text, std::move(data));
}

std::string ProxyGraphicsWriter::picture() const {
    if (count_ == 0) return {};
    std::string picture;
    put(picture, static_cast<std::uint32_t>(kProxyHeadSize + commands_.size()));
    put(picture, count_);
    return picture + commands_;
}

}  // namespace qrs::host
