// Reading the pictures that drawing files carry. They come from anywhere: every count is held against the bytes that
// are left before anything is made of it.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "host/drawing/proxycommands.h"
#include "host/drawing/proxygraphics.h"
#include "host/platform/text.h"

namespace qrs::host {

namespace {

constexpr std::size_t kMostMatrices = 64;  // within each other
constexpr int kByBlockIndex = 0;
constexpr int kByLayerIndex = 256;

ProxyPoint operator+(const ProxyPoint& a, const ProxyPoint& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
ProxyPoint operator-(const ProxyPoint& a, const ProxyPoint& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
ProxyPoint operator*(const ProxyPoint& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
double dot(const ProxyPoint& a, const ProxyPoint& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
ProxyPoint cross(const ProxyPoint& a, const ProxyPoint& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
bool isFinite(const ProxyPoint& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

// The bytes of one command, lowest byte of a number first. Once something is missing, nothing that comes is good.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    bool isGood() const { return isGood_; }
    std::size_t left() const { return bytes_.size() - at_; }

    std::uint32_t integer() { return static_cast<std::uint32_t>(unit(4)); }
    double real() {
        const std::uint64_t bits = unit(8);
        double value = 0.0;
        static_assert(sizeof value == sizeof bits, "reals are of 8 bytes");
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    ProxyPoint point() {
        const double x = real();
        const double y = real();
        return {x, y, real()};
    }
    std::vector<ProxyPoint> points(std::uint64_t count) {
        std::vector<ProxyPoint> points;
        if (count > left() / kPointSize) isGood_ = false;
        if (!isGood_) return points;
        points.reserve(static_cast<std::size_t>(count));
        for (std::uint64_t i = 0; i < count; ++i)
            points.push_back(point());
        return points;
    }
    // Up to a zero byte, and what fills it up.
    std::string_view text() {
        const std::size_t end = bytes_.find('\0', at_);
        if (!isGood_ || end == std::string_view::npos) return fail();
        const std::string_view text = bytes_.substr(at_, end - at_);
        fillUp(end + 1);
        return text;
    }
    std::wstring unicodeText() {
        std::u32string units;
        for (;;) {
            const auto next = static_cast<char32_t>(unit(2));
            if (!isGood_) return {};
            if (next == 0) break;
            units += next;
        }
        fillUp(at_);
        std::wstring text;
        for (std::size_t i = 0; i < units.size(); ++i) {
            const bool isPair =
                platform::isHighSurrogate(units[i]) && i + 1 < units.size() && platform::isLowSurrogate(units[i + 1]);
            platform::appendCodePoint(text, isPair ? platform::joinedSurrogates(units[i], units[i + 1]) : units[i]);
            if (isPair) ++i;
        }
        return text;
    }

  private:
    static constexpr std::size_t kPointSize = 3 * sizeof(double);

    std::uint64_t unit(std::size_t size) {
        if (!isGood_ || left() < size) {
            isGood_ = false;
            return 0;
        }
        std::uint64_t value = 0;
        for (std::size_t i = size; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes_[at_ + i]);
        at_ += size;
        return value;
    }
    std::string_view fail() {
        isGood_ = false;
        return {};
    }
    void fillUp(std::size_t to) { at_ = std::min((to + kProxyBound - 1) / kProxyBound * kProxyBound, bytes_.size()); }

    std::string_view bytes_;
    std::size_t at_ = 0;
    bool isGood_ = true;
};

class Reader {
  public:
    Reader(const dxf::Drawing& drawing, const std::function<bool(const ProxyShape&)>& take)
        : drawing_(drawing), take_(take) {}

    // False when no more is wanted.
    bool run(ProxyCommand command, Bytes bytes);

  private:
    using Kind = ProxyShape::Kind;
    struct Row {
        ProxyCommand command;
        void (Reader::*read)(Bytes& bytes);
    };
    static const Row kRows[];

    void readCircle(Bytes& bytes) {
        ProxyShape shape = shapeOf(Kind::Circle, {bytes.point()});
        shape.radius = bytes.real();
        shape.normal = bytes.point();
        give(bytes, std::move(shape));
    }
    void readArc(Bytes& bytes) {
        ProxyShape shape = shapeOf(Kind::Arc, {bytes.point()});
        shape.radius = bytes.real();
        shape.normal = bytes.point();
        shape.direction = bytes.point();
        shape.sweep = bytes.real();
        give(bytes, std::move(shape));
    }
    void readCircleByPoints(Bytes& bytes) { giveByPoints(bytes, Kind::Circle); }
    void readArcByPoints(Bytes& bytes) { giveByPoints(bytes, Kind::Arc); }
    void readPolyline(Bytes& bytes) { give(bytes, shapeOf(Kind::Polyline, bytes.points(bytes.integer()))); }
    void readPolygon(Bytes& bytes) { give(bytes, shapeOf(Kind::Polygon, bytes.points(bytes.integer()))); }
    void readLine(Bytes& bytes) { give(bytes, shapeOf(Kind::Line, bytes.points(2))); }
    void readRay(Bytes& bytes) { give(bytes, shapeOf(Kind::Ray, bytes.points(2))); }
    void readMesh(Bytes& bytes);
    void readShell(Bytes& bytes);
    void readText(Bytes& bytes) { readPlainText(bytes, false); }
    void readUnicodeText(Bytes& bytes) { readPlainText(bytes, true); }
    void readTextWithFont(Bytes& bytes) { readRichText(bytes, false); }
    void readUnicodeTextWithFont(Bytes& bytes) { readRichText(bytes, true); }
    void readPlainText(Bytes& bytes, bool isUnicode);
    void readRichText(Bytes& bytes, bool isUnicode);
    void readColor(Bytes& bytes);
    void readTrueColor(Bytes& bytes);
    void readLayer(Bytes& bytes) { keep(bytes, traits_.layer, bytes.integer()); }
    void readLinetype(Bytes& bytes) { keep(bytes, traits_.linetype, bytes.integer()); }
    void readFill(Bytes& bytes) {
        const bool isFilled = bytes.integer() != 0;
        if (bytes.isGood()) traits_.isFilled = isFilled;
    }
    void readLineWeight(Bytes& bytes) { keep(bytes, traits_.lineWeight, static_cast<std::int32_t>(bytes.integer())); }
    void readLinetypeScale(Bytes& bytes) {
        const double scale = bytes.real();
        if (std::isfinite(scale)) keep(bytes, traits_.linetypeScale, scale);
    }
    void readMatrix(Bytes& bytes);
    void readMatrixEnd(Bytes&) {
        if (!matrices_.empty()) matrices_.pop_back();
    }

    template <typename Value>
    static void keep(const Bytes& bytes, std::optional<Value>& trait, Value value) {
        if (bytes.isGood()) trait = value;
    }
    ProxyShape shapeOf(Kind kind, std::vector<ProxyPoint> points) const {
        ProxyShape shape;
        shape.kind = kind;
        shape.points = std::move(points);
        return shape;
    }
    std::wstring textOf(Bytes& bytes, bool isUnicode) const {
        return isUnicode ? bytes.unicodeText() : drawing_.decode(bytes.text());
    }
    void giveByPoints(Bytes& bytes, Kind kind);
    void give(const Bytes& bytes, ProxyShape shape);

    const dxf::Drawing& drawing_;
    const std::function<bool(const ProxyShape&)>& take_;
    ProxyTraits traits_;
    std::vector<ProxyMatrix> matrices_;  // each from its own coordinates to the entity's
    bool isWanted_ = true;
};

const Reader::Row Reader::kRows[] = {
    {ProxyCommand::Circle, &Reader::readCircle},
    {ProxyCommand::CircleByPoints, &Reader::readCircleByPoints},
    {ProxyCommand::Arc, &Reader::readArc},
    {ProxyCommand::ArcByPoints, &Reader::readArcByPoints},
    {ProxyCommand::Polyline, &Reader::readPolyline},
    {ProxyCommand::PolylineWithNormal, &Reader::readPolyline},  // the normal stands last
    {ProxyCommand::Polygon, &Reader::readPolygon},
    {ProxyCommand::Mesh, &Reader::readMesh},
    {ProxyCommand::Shell, &Reader::readShell},
    {ProxyCommand::Text, &Reader::readText},
    {ProxyCommand::UnicodeText, &Reader::readUnicodeText},
    {ProxyCommand::TextWithFont, &Reader::readTextWithFont},
    {ProxyCommand::UnicodeTextWithFont, &Reader::readUnicodeTextWithFont},
    {ProxyCommand::Line, &Reader::readLine},
    {ProxyCommand::Ray, &Reader::readRay},
    {ProxyCommand::Color, &Reader::readColor},
    {ProxyCommand::TrueColor, &Reader::readTrueColor},
    {ProxyCommand::Layer, &Reader::readLayer},
    {ProxyCommand::Linetype, &Reader::readLinetype},
    {ProxyCommand::Fill, &Reader::readFill},
    {ProxyCommand::LineWeight, &Reader::readLineWeight},
    {ProxyCommand::LinetypeScale, &Reader::readLinetypeScale},
    {ProxyCommand::PushMatrix, &Reader::readMatrix},
    {ProxyCommand::PushOtherMatrix, &Reader::readMatrix},
    {ProxyCommand::PopMatrix, &Reader::readMatrixEnd},
};

bool Reader::run(ProxyCommand command, Bytes bytes) {
    for (const Row& row : kRows)
        if (row.command == command) (this->*row.read)(bytes);
    return isWanted_;
}

void Reader::give(const Bytes& bytes, ProxyShape shape) {
    const bool isWhole = bytes.isGood() && !shape.points.empty() &&
                         std::all_of(shape.points.begin(), shape.points.end(), &isFinite) && isFinite(shape.normal) &&
                         isFinite(shape.direction) && std::isfinite(shape.radius) && std::isfinite(shape.sweep) &&
                         std::isfinite(shape.height) && std::isfinite(shape.widthFactor) &&
                         std::isfinite(shape.oblique);
    if (!isWhole || !isWanted_) return;
    shape.traits = traits_;
    if (!matrices_.empty()) shape.toEntity = matrices_.back();
    isWanted_ = take_(shape);
}

// The circle through three points; a straight line when they lie on one.
void Reader::giveByPoints(Bytes& bytes, Kind kind) {
    const std::vector<ProxyPoint> points = bytes.points(3);
    if (!bytes.isGood()) return;
    const ProxyPoint b = points[1] - points[0];
    const ProxyPoint c = points[2] - points[0];
    const ProxyPoint normal = cross(b, c);
    const double twice = 2.0 * dot(normal, normal);
    if (!(twice > 0.0)) return give(bytes, shapeOf(Kind::Polyline, points));
    const ProxyPoint out = cross(normal, b) * (dot(c, c) / twice) + cross(c, normal) * (dot(b, b) / twice);
    ProxyShape shape = shapeOf(kind, {points[0] + out});
    shape.radius = std::sqrt(dot(out, out));
    shape.normal = normal * (1.0 / std::sqrt(dot(normal, normal)));
    shape.direction = out * (-1.0 / shape.radius);
    const ProxyPoint end = points[2] - shape.points[0];
    const double angle = std::atan2(dot(cross(shape.direction, end), shape.normal), dot(shape.direction, end));
    constexpr double kFullTurn = 6.283185307179586;
    shape.sweep = angle < 0.0 ? angle + kFullTurn : angle;
    give(bytes, std::move(shape));
}

// Its rows and columns as lines.
void Reader::readMesh(Bytes& bytes) {
    const std::uint64_t rows = bytes.integer();
    const std::uint64_t columns = bytes.integer();
    if (columns != 0 && rows > bytes.left() / columns) return;
    const std::vector<ProxyPoint> points = bytes.points(rows * columns);
    if (points.empty()) return;
    const auto give = [&](std::size_t first, std::size_t step, std::size_t count) {
        ProxyShape line = shapeOf(Kind::Polyline, {});
        for (std::size_t i = 0; i < count; ++i)
            line.points.push_back(points[first + i * step]);
        this->give(bytes, std::move(line));
    };
    const auto width = static_cast<std::size_t>(columns);
    const auto height = static_cast<std::size_t>(rows);
    for (std::size_t row = 0; row < height; ++row)
        give(row * width, 1, width);
    for (std::size_t column = 0; column < width; ++column)
        give(column, width, height);
}

// Its faces: a count of corners (negative for a hole), then their numbers.
void Reader::readShell(Bytes& bytes) {
    const std::vector<ProxyPoint> points = bytes.points(bytes.integer());
    std::uint32_t entries = bytes.integer();
    while (bytes.isGood() && entries > 0) {
        const auto signedCount = static_cast<std::int32_t>(bytes.integer());
        const std::int64_t corners = std::llabs(static_cast<long long>(signedCount));
        if (corners >= entries || corners * 4 > static_cast<std::int64_t>(bytes.left())) return;
        entries -= static_cast<std::uint32_t>(corners) + 1;
        ProxyShape face = shapeOf(Kind::Polygon, {});
        for (std::int64_t i = 0; i < corners; ++i) {
            const std::uint32_t corner = bytes.integer();
            if (corner >= points.size()) return;
            face.points.push_back(points[corner]);
        }
        give(bytes, std::move(face));
    }
}

void Reader::readPlainText(Bytes& bytes, bool isUnicode) {
    ProxyShape shape = shapeOf(Kind::Text, {bytes.point()});
    shape.normal = bytes.point();
    shape.direction = bytes.point();
    shape.height = bytes.real();
    shape.widthFactor = bytes.real();
    shape.oblique = bytes.real();
    shape.text = textOf(bytes, isUnicode);
    give(bytes, std::move(shape));
}

void Reader::readRichText(Bytes& bytes, bool isUnicode) {
    ProxyShape shape = shapeOf(Kind::Text, {bytes.point()});
    shape.normal = bytes.point();
    shape.direction = bytes.point();
    shape.text = textOf(bytes, isUnicode);
    bytes.integer();  // characters to be shown: all
    bytes.integer();  // whether %% codes are plain characters
    shape.height = bytes.real();
    shape.widthFactor = bytes.real();
    shape.oblique = bytes.real();
    bytes.real();  // distance of the characters
    shape.isBackwards = bytes.integer() != 0;
    shape.isUpsideDown = bytes.integer() != 0;
    bytes.integer();  // vertical, underlined, overlined
    bytes.integer();
    bytes.integer();
    if (isUnicode) {
        for (int i = 0; i < 4; ++i)
            bytes.integer();  // bold, italic, character set, pitch
        const std::wstring typeFace = bytes.unicodeText();
        shape.font = bytes.unicodeText();
        if (shape.font.empty()) shape.font = typeFace;
    } else {
        shape.font = textOf(bytes, false);
    }
    give(bytes, std::move(shape));
}

void Reader::readColor(Bytes& bytes) {
    const std::uint32_t index = bytes.integer();
    if (!bytes.isGood() || index > kByLayerIndex) return;
    traits_.rgb.reset();
    traits_.colorIndex = static_cast<int>(index);
}

void Reader::readTrueColor(Bytes& bytes) {
    const std::uint32_t value = bytes.integer();
    if (!bytes.isGood()) return;
    const std::uint32_t kind = value >> 24;
    traits_.rgb.reset();
    traits_.colorIndex.reset();
    if (kind == kProxyRgb) traits_.rgb = value & 0xFFFFFFU;
    if (kind == kProxyIndex) traits_.colorIndex = static_cast<int>(value & 0xFFU);
    if (kind == kProxyByLayer) traits_.colorIndex = kByLayerIndex;
    if (kind == kProxyByBlock) traits_.colorIndex = kByBlockIndex;
}

void Reader::readMatrix(Bytes& bytes) {
    ProxyMatrix own;
    for (double& entry : own)
        entry = bytes.real();
    const bool isWhole =
        bytes.isGood() && std::all_of(own.begin(), own.end(), [](double x) { return std::isfinite(x); });
    // One that cannot be kept changes what all that follows means.
    if (!isWhole || matrices_.size() == kMostMatrices) {
        isWanted_ = false;
        return;
    }
    ProxyMatrix product = own;
    if (!matrices_.empty()) {
        const ProxyMatrix& outer = matrices_.back();
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                double sum = 0.0;
                for (std::size_t i = 0; i < 4; ++i)
                    sum += outer[row * 4 + i] * own[i * 4 + column];
                product[row * 4 + column] = sum;
            }
        }
    }
    matrices_.push_back(product);
}

}  // namespace

bool ProxyTraits::operator==(const ProxyTraits& other) const {
    return colorIndex == other.colorIndex && rgb == other.rgb && layer == other.layer && linetype == other.linetype &&
           lineWeight == other.lineWeight && linetypeScale == other.linetypeScale && isFilled == other.isFilled;
}

void readProxyGraphics(const dxf::Drawing& drawing, std::string_view picture,
                       const std::function<bool(const ProxyShape& shape)>& take) {
    Reader reader(drawing, take);
    Bytes heads(picture);
    const std::uint32_t size = heads.integer();
    if (size < picture.size()) picture = picture.substr(0, size);
    for (std::size_t at = kProxyHeadSize; at + kProxyCommandHeadSize <= picture.size();) {
        Bytes head(picture.substr(at, kProxyCommandHeadSize));
        const std::size_t length = head.integer();
        const auto command = static_cast<ProxyCommand>(head.integer());
        if (length < kProxyCommandHeadSize || length > picture.size() - at) return;
        if (!reader.run(command, Bytes(picture.substr(at + kProxyCommandHeadSize, length - kProxyCommandHeadSize))))
            return;
        at += length;
    }
}

}  // namespace qrs::host
