// Entities drawn into the pictures of them that drawing files carry.
#include "host/objectarx/db/pictures.h"

#include <cwchar>
#include <utility>
#include <vector>

#include "acgi.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/drawing/proxygraphics.h"
#include "host/objectarx/db/state.h"

namespace qrs::host {

namespace {

using Kind = ProxyShape::Kind;

ProxyPoint pointOf(const AcGePoint3d& point) {
    return {point.x, point.y, point.z};
}
ProxyPoint pointOf(const AcGeVector3d& vector) {
    return {vector.x, vector.y, vector.z};
}

void take(ProxyTraits& traits, const AcCmColor& color) {
    if (color.isByColor())
        traits.rgb = static_cast<std::uint32_t>(color.red() << 16 | color.green() << 8 | color.blue());
    else if (!color.isByLayer())
        traits.colorIndex = color.colorIndex();
}

// What an entity looks like, as values: some programs take a picture that names none for one on layer "0", and the
// numbers by which pictures name layers and linetypes are others once a table changes. What layer "0" and a block
// reference give is left open.
ProxyTraits looksOf(const AcDbEntity& entity) {
    ProxyTraits traits;
    take(traits, entity.color());
    const AcDb::LineWeight weight = entity.lineWeight();
    if (weight != AcDb::kLnWtByLayer) traits.lineWeight = weight;
    const bool isTold = traits.rgb || traits.colorIndex;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (layer.openStatus() != Acad::eOk || layer->getName(name) != Acad::eOk || std::wcscmp(name, L"0") == 0)
        return traits;
    if (!isTold) take(traits, layer->color());
    if (!traits.lineWeight && layer->lineWeight() >= AcDb::kLnWt000) traits.lineWeight = layer->lineWeight();
    return traits;
}

// Takes the shapes down. The interface asks for shapes without a change of what takes them.
class Sheet final : public AcGiWorldGeometry, public AcGiSubEntityTraits {
  public:
    Sheet(const dxf::Drawing& drawing, const ProxyTraits& looks) : writer_(drawing), traits_(looks) {}
    std::string picture() const { return writer_.picture(); }

    void setColor(const Adesk::UInt16 color) override {
        traits_.rgb.reset();
        traits_.colorIndex = color;
    }
    void setLineWeight(const AcDb::LineWeight weight) override { traits_.lineWeight = weight; }
    void setFillType(const AcGiFillType type) override { traits_.isFilled = type == kAcGiFillAlways; }

    Adesk::Boolean circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const override {
        ProxyShape shape = shapeOf(Kind::Circle, {pointOf(center)});
        shape.radius = radius;
        shape.normal = pointOf(normal);
        return add(shape);
    }
    Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, const double sweepAngle,
                               const AcGiArcType) const override {
        ProxyShape shape = shapeOf(Kind::Arc, {pointOf(center)});
        shape.radius = radius;
        shape.normal = pointOf(normal);
        shape.direction = pointOf(startVector);
        shape.sweep = sweepAngle;
        return add(shape);
    }
    Adesk::Boolean polyline(const Adesk::UInt32 count, const AcGePoint3d* vertices) const override {
        return add(shapeOf(Kind::Polyline, pointsOf(count, vertices)));
    }
    Adesk::Boolean polygon(const Adesk::UInt32 count, const AcGePoint3d* vertices) const override {
        ProxyShape shape = shapeOf(Kind::Polygon, pointsOf(count, vertices));
        shape.traits.isFilled = traits_.isFilled;
        return add(shape);
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                        const double height, const double width, const double oblique,
                        const ACHAR* message) const override {
        ProxyShape shape = shapeOf(Kind::Text, {pointOf(position)});
        shape.normal = pointOf(normal);
        shape.direction = pointOf(direction);
        shape.height = height;
        shape.widthFactor = width;
        shape.oblique = oblique;
        shape.text = message ? message : L"";
        return add(shape);
    }

  private:
    static std::vector<ProxyPoint> pointsOf(Adesk::UInt32 count, const AcGePoint3d* vertices) {
        std::vector<ProxyPoint> points;
        for (Adesk::UInt32 i = 0; i < count; ++i)
            points.push_back(pointOf(vertices[i]));
        return points;
    }
    // Programs fill whatever closes while filling is on, so it is on for polygons alone.
    ProxyShape shapeOf(Kind kind, std::vector<ProxyPoint> points) const {
        ProxyShape shape;
        shape.kind = kind;
        shape.points = std::move(points);
        shape.traits = traits_;
        shape.traits.isFilled = false;
        return shape;
    }
    Adesk::Boolean add(const ProxyShape& shape) const {
        writer_.add(shape);
        return Adesk::kFalse;
    }

    mutable ProxyGraphicsWriter writer_;
    ProxyTraits traits_;
};

class SheetDraw final : public AcGiWorldDraw {
  public:
    explicit SheetDraw(Sheet& sheet) : sheet_(sheet) {}
    AcGiWorldGeometry& geometry() const override { return sheet_; }
    AcGiSubEntityTraits& subEntityTraits() const override { return sheet_; }

  private:
    Sheet& sheet_;
};

// The record of an entity that may have a picture; kNoRecord for others.
dxf::RecordId recordOf(const AcDbEntity& entity, const DatabaseState* state) {
    return state && canHavePicture(state->drawing()) ? state->ids().recordOf(entity.objectId().recordNumber())
                                                     : dxf::kNoRecord;
}

// The entities of applications, open for reading.
template <typename Take>
void forEachDrawnEntity(DatabaseState& state, Take&& take) {
    const dxf::Drawing& drawing = state.drawing();
    for (dxf::RecordId id = drawing.first(); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::Entity) continue;
        const AcDbObjectId object = state.idOf(id);
        if (!state.kinds().of(object.recordNumber()).rxClass->appName()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(object, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) take(id, *entity.object());
    }
}

std::string drawnWith(const ProxyTraits& looks, const AcDbEntity& entity, const DatabaseState& state) {
    Sheet sheet(state.drawing(), looks);
    SheetDraw draw(sheet);
    // Entities look at nothing but their own values while they draw.
    const_cast<AcDbEntity&>(entity).worldDraw(&draw);
    return sheet.picture();
}

// Whether the picture was drawn here, in whatever colour and weight: the first shape tells them. One that shows nothing
// is nobody's.
bool isDrawnHere(const std::string& picture, const AcDbEntity& entity, const DatabaseState& state) {
    ProxyTraits looks;
    bool isReadable = false;
    readProxyGraphics(state.drawing(), picture, [&](const ProxyShape& shape) {
        isReadable = true;
        looks.colorIndex = shape.traits.colorIndex;
        looks.rgb = shape.traits.rgb;
        looks.lineWeight = shape.traits.lineWeight;
        return false;
    });
    return !isReadable || picture == drawnWith(looks, entity, state);
}

}  // namespace

std::string drawnPicture(const AcDbEntity& entity) {
    const DatabaseState* state = DatabaseState::of(entity.database());
    return recordOf(entity, state) == dxf::kNoRecord ? std::string() : drawnWith(looksOf(entity), entity, *state);
}

void renewPicture(const AcDbEntity& entity, const std::string& before) {
    const DatabaseState* state = DatabaseState::of(entity.database());
    const dxf::RecordId record = recordOf(entity, state);
    if (record == dxf::kNoRecord) return;
    const std::string picture = drawnPicture(entity);
    if (picture.empty()) return;
    const std::string present = proxyGraphicsOf(state->drawing(), record);
    if (present.empty() || picture != before) setProxyGraphics(state->drawing(), record, picture);
}

OwnPicture::OwnPicture(const AcDbEntity& entity) : entity_(entity) {
    if (!entity.isA()->appName()) return;
    const DatabaseState* state = DatabaseState::of(entity.database());
    const dxf::RecordId record = recordOf(entity, state);
    if (record == dxf::kNoRecord) return;
    const std::string present = proxyGraphicsOf(state->drawing(), record);
    isOwn_ = present.empty() || isDrawnHere(present, entity, *state);
}

void OwnPicture::renew() const {
    const DatabaseState* state = DatabaseState::of(entity_.database());
    if (isOwn_) setProxyGraphics(state->drawing(), recordOf(entity_, state), drawnPicture(entity_));
}

void renewPicturesOn(DatabaseState& state, const std::set<std::uint32_t>& layers) {
    dxf::Drawing& drawing = state.drawing();
    if (!canHavePicture(drawing)) return;
    forEachDrawnEntity(state, [&](dxf::RecordId id, const AcDbEntity& entity) {
        if (layers.count(state.contents().layers().of(id)) == 0) return;
        const std::string present = proxyGraphicsOf(drawing, id);
        if (!present.empty() && isDrawnHere(present, entity, state))
            setProxyGraphics(drawing, id, drawnPicture(entity));
    });
}

OwnPictures::OwnPictures(DatabaseState& state) : state_(state) {
    const dxf::Drawing& drawing = state.drawing();
    if (!canHavePicture(drawing)) return;
    state.objects().writeAll();
    forEachDrawnEntity(state, [&](dxf::RecordId id, const AcDbEntity& entity) {
        const std::string present = proxyGraphicsOf(drawing, id);
        if (!present.empty() && isDrawnHere(present, entity, state)) own_.push_back(entity.objectId());
    });
}

void OwnPictures::renew() const {
    for (const AcDbObjectId& id : own_) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        setProxyGraphics(state_.drawing(), recordOf(*entity.object(), &state_), drawnPicture(*entity.object()));
    }
}

PictureCounts renewAllPictures(AcDbDatabase& database) {
    PictureCounts counts;
    DatabaseState* state = DatabaseState::of(&database);
    if (!state) return counts;
    state->objects().writeAll();
    dxf::Drawing& drawing = state->drawing();
    forEachDrawnEntity(*state, [&](dxf::RecordId id, const AcDbEntity& entity) {
        const std::string picture = drawnPicture(entity);
        if (picture.empty()) return;
        if (holdsProxyGraphics(drawing, id, picture))
            ++counts.kept;
        else if (setProxyGraphics(drawing, id, picture))
            ++counts.given;
    });
    return counts;
}

}  // namespace qrs::host

Adesk::Boolean AcDbEntity::worldDraw(AcGiWorldDraw* mode) {
    return mode ? subWorldDraw(mode) : Adesk::kTrue;
}

Adesk::Boolean AcDbEntity::subWorldDraw(AcGiWorldDraw*) {
    return Adesk::kTrue;
}
