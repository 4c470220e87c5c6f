// The picture of an entity that the drawing file carries for programs that do not know it ("proxy graphics").
//
//     readProxyGraphics(drawing, proxyGraphicsOf(drawing, id), [&](const ProxyShape& shape) {
//         if (shape.kind == ProxyShape::Kind::Polyline) draw(shape.points);
//         return true;
//     });
//
// The data is a row of commands: some set what the following shapes look like, the others are shapes.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/platform/port.h"

namespace qrs::host {

struct ProxyPoint {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    bool operator==(const ProxyPoint& other) const { return x == other.x && y == other.y && z == other.z; }
};

// What a picture does not say is as the entity itself has it; some programs show layer "0" then.
struct ProxyTraits {
    std::optional<int> colorIndex;           // 0 by block, 256 by layer
    std::optional<std::uint32_t> rgb;        // 0xRRGGBB; then there is no index
    std::optional<std::uint32_t> layer;      // number of a record in the table of layers
    std::optional<std::uint32_t> linetype;   // number of a record in the table of linetypes
    std::optional<std::int32_t> lineWeight;  // hundredths of a millimetre; -1 by layer, -2 by block, -3 default
    std::optional<double> linetypeScale;
    bool isFilled = false;

    bool operator==(const ProxyTraits& other) const;
};

// Rows of a transformation of space, for columns of coordinates; the last one is 0 0 0 1.
using ProxyMatrix = std::array<double, 16>;
constexpr ProxyMatrix kProxyIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

struct ProxyShape {
    // An endless line goes through its two points, a ray begins at the first.
    enum class Kind : std::uint8_t { Polyline, Polygon, Circle, Arc, Text, Line, Ray };

    Kind kind = Kind::Polyline;
    std::vector<ProxyPoint> points;  // one for a circle or an arc: its centre; for a text: where its baseline starts
    ProxyPoint normal{0.0, 0.0, 1.0};
    ProxyPoint direction{1.0, 0.0, 0.0};  // of an arc: from the centre to its start; of a text: of the baseline
    double radius = 0.0;
    double sweep = 0.0;  // of an arc, radians around the normal
    std::wstring text;   // of one line
    double height = 0.0;
    double widthFactor = 1.0;
    double oblique = 0.0;  // radians
    std::wstring font;     // file name; empty: not told
    bool isBackwards = false;
    bool isUpsideDown = false;
    ProxyTraits traits;
    ProxyMatrix toEntity = kProxyIdentity;  // from the coordinates of the shape to those the entity lies in
};

// Whether entities of the drawing can have pictures: from R2000 on.
bool canHavePicture(const dxf::Drawing& drawing);

// The picture of an entity of the drawing; empty when it has none. So is that of one whose data is no data.
QRS_HOST_PORT std::string proxyGraphicsOf(const dxf::Drawing& drawing, dxf::RecordId id);

// Whether the entity has this picture, its size told rightly.
bool holdsProxyGraphics(const dxf::Drawing& drawing, dxf::RecordId id, std::string_view picture);

// Gives the entity another picture, or takes it away for an empty one; what is equal stays untouched. False, nothing
// changed, for an entity that cannot have one: of a drawing before R2000, or without the section of what all entities
// share.
bool setProxyGraphics(dxf::Drawing& drawing, dxf::RecordId id, std::string_view picture);

// Hands out the shapes of a picture until take answers false. Commands that are damaged or not known are passed over;
// the picture ends where one is longer than what is left. No more is handed out than the data itself holds.
QRS_HOST_PORT void readProxyGraphics(const dxf::Drawing& drawing, std::string_view picture,
                                     const std::function<bool(const ProxyShape& shape)>& take);

// Makes a picture for entities of a drawing.
class ProxyGraphicsWriter {
  public:
    explicit ProxyGraphicsWriter(const dxf::Drawing& drawing) : drawing_(drawing) {}

    // A shape as it is to look. Left out: one that is empty or has numbers that are not finite. Shapes lie in the
    // entity's own coordinates; fonts are not written.
    void add(const ProxyShape& shape);
    // Empty when nothing was added.
    std::string picture() const;

  private:
    void change(const ProxyTraits& traits);
    void addText(const ProxyShape& shape);

    const dxf::Drawing& drawing_;
    ProxyTraits traits_;  // as the commands so far have set them
    std::string commands_;
    std::uint32_t count_ = 0;
};

}  // namespace qrs::host
