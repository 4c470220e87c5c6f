// Entities: what they all share.
#include <cmath>

#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/pictures.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::newString;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

namespace {

constexpr int kByLayerIndex = 256;

// The tags all entities share. Some programs write them after the second subclass; where the layer stands, the others
// do.
ObjectTags commonTags(dxf::Drawing& drawing, dxf::RecordId record) {
    const ObjectTags common(&drawing, record, qrs::host::entityFormat(), ObjectTags::Part::Common);
    if (common.has(codes::kLayer)) return common;
    const ObjectTags whole(&drawing, record, qrs::host::entityFormat(), ObjectTags::Part::Whole);
    return whole.has(codes::kLayer) ? whole : common;
}

// Of an entity outside a drawing its own, once something was set.
ObjectTags commonTags(const AcDbEntity& entity) {
    const DatabaseState* state = DatabaseState::of(entity.database());
    if (!state) {
        qrs::host::DetachedTags* own = qrs::host::OpenObjects::ownTags(entity);
        return own ? ObjectTags(own) : ObjectTags();
    }
    return commonTags(state->drawing(), state->ids().recordOf(entity.objectId().recordNumber()));
}

// Applies a change to an entity, then to the vertices that follow it. The change tells whether there was anything to
// do; vertices that differ from an entity that stays as it is are left alone.
template <typename Change>
bool changeParts(const dxf::Drawing& drawing, dxf::RecordId entity, bool doSubents, Change&& change) {
    if (!change(entity)) return false;
    if (!doSubents) return true;
    for (dxf::RecordId id = drawing.next(entity); id != dxf::kNoRecord; id = drawing.next(id)) {
        const dxf::Record& sub = drawing.record(id);
        if ((sub.flags & dxf::kSubEntity) == 0 || sub.owner != entity) break;
        // Attributes of a block reference keep what they have.
        if (drawing.typeName(sub.type) != "ATTRIB") change(id);
    }
    return true;
}

// By layer for what is no index.
Adesk::UInt16 indexOf(const ObjectTags& tags) {
    const std::int64_t index = tags.integer(codes::kColor, kByLayerIndex);
    return static_cast<Adesk::UInt16>(index >= 0 && index <= kByLayerIndex ? index : kByLayerIndex);
}

const dxf::Record* recordOf(const AcDbEntity& entity) {
    const DatabaseState* state = DatabaseState::of(entity.database());
    return state ? &state->drawing().record(entity.objectId().recordNumber()) : nullptr;
}

}  // namespace

AcRxClass* AcDbEntity::desc() {
    static AcRxClass description(L"AcDbEntity", AcDbObject::desc());
    return &description;
}

AcRxClass* AcDbEntity::isA() const {
    DatabaseState* state = DatabaseState::of(database());
    return state ? state->kinds().of(record()).rxClass : AcDbEntity::desc();
}

template <typename Change>
Acad::ErrorStatus AcDbEntity::changeCommon(bool doSubents, Change&& change) {
    if (!database() && !qrs::host::OpenObjects::ownTags(*this)) setOwnTags({&qrs::host::entityFormat(), {}});
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    if (!state) {
        ObjectTags own = commonTags(*this);
        change(own);
        return Acad::eOk;
    }
    const qrs::host::OwnPicture picture(*this);
    const bool isChanged = changeParts(state->drawing(), record(), doSubents, [&](dxf::RecordId id) {
        ObjectTags tags = commonTags(state->drawing(), id);
        return change(tags);
    });
    if (isChanged) picture.renew();
    return Acad::eOk;
}

// --- layer

AcDbObjectId AcDbEntity::layerId() const {
    DatabaseState* state = DatabaseState::ofNames(*this);
    if (!state) return AcDbObjectId();
    if (database()) return state->idOf(state->contents().layers().of(record()));
    return state->idOf(state->tables().find(TableKind::Layer, commonTags(*this).text(codes::kLayer, L"0")));
}

ACHAR* AcDbEntity::layer() const {
    DatabaseState* state = DatabaseState::of(database());
    if (!state) return newString(commonTags(*this).text(codes::kLayer, L"0"));
    const dxf::RecordId layer = state->contents().layers().of(record());
    if (layer != dxf::kNoRecord) return newString(state->tables().nameOf(layer));
    return newString(commonTags(*this).text(codes::kLayer, L"0"));
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* newLayer, bool doSubents) {
    DatabaseState* state = DatabaseState::ofNames(*this);
    if (!state) return Acad::eNoDatabase;
    if (!newLayer) return Acad::eInvalidInput;
    const dxf::RecordId layer = state->tables().find(TableKind::Layer, newLayer);
    return layer == dxf::kNoRecord ? Acad::eKeyNotFound : setLayer(state->idOf(layer), doSubents);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newLayer, bool doSubents) {
    DatabaseState* state = database() ? DatabaseState::of(database()) : DatabaseState::of(newLayer.database());
    if (!state) return Acad::eInvalidLayer;
    TableKind kind = TableKind::Block;
    const dxf::RecordId layer = newLayer.recordNumber();
    const bool isLayer = newLayer.databaseNumber() == state->number && newLayer.isValid() && !newLayer.isErased() &&
                         !qrs::host::isTableId(layer) && layer < state->drawing().recordCount() &&
                         state->tables().kindOf(layer, kind) && kind == TableKind::Layer;
    if (!isLayer) return Acad::eInvalidLayer;
    if (!database()) {
        const std::wstring name = state->tables().nameOf(layer);
        return changeCommon(false, [&](ObjectTags& tags) {
            tags.setText(codes::kLayer, name);
            return true;
        });
    }
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    dxf::Drawing& drawing = state->drawing();
    const qrs::host::OwnPicture picture(*this);
    const bool isChanged = changeParts(drawing, record(), doSubents, [&](dxf::RecordId id) {
        // Another spelling of the same layer is left as it is.
        if (state->contents().layers().of(id) == layer) return false;
        if (!drawing.setLayer(id, layer)) commonTags(drawing, id).setText(codes::kLayer, state->tables().nameOf(layer));
        return true;
    });
    if (isChanged) picture.renew();
    return Acad::eOk;
}

// --- colour

AcCmColor AcDbEntity::color() const {
    const ObjectTags tags = commonTags(*this);
    AcCmColor color;
    const std::int64_t trueColor = tags.integer(codes::kTrueColor, -1);
    if (trueColor >= 0) {
        color.setRGB(static_cast<Adesk::UInt8>(trueColor >> 16), static_cast<Adesk::UInt8>(trueColor >> 8),
                     static_cast<Adesk::UInt8>(trueColor));
        return color;
    }
    color.setColorIndex(colorIndex());
    return color;
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool doSubents) {
    if (color.isByColor()) {
        if (!commonTags(*this).canCarry(codes::kTrueColor)) return Acad::eNotApplicable;
        return changeCommon(doSubents, [&](ObjectTags& tags) {
            const int rgb = color.red() * 65536 + color.green() * 256 + color.blue();
            if (tags.integer(codes::kTrueColor, -1) == rgb) return false;
            tags.setInteger(codes::kColor, color.colorIndex());
            tags.setInteger(codes::kTrueColor, rgb);
            tags.removeAll(codes::kColorName);
            return true;
        });
    }
    if (!color.isByLayer() && !color.isByBlock() && !color.isByACI()) return Acad::eInvalidInput;
    return setColorIndex(color.colorIndex(), doSubents);
}

Adesk::UInt16 AcDbEntity::colorIndex() const {
    return indexOf(commonTags(*this));
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool doSubents) {
    if (index > kByLayerIndex) return Acad::eInvalidInput;
    return changeCommon(doSubents, [&](ObjectTags& tags) {
        const bool isEqual = indexOf(tags) == index;
        if (isEqual && !tags.has(codes::kTrueColor)) return false;
        tags.removeAll(codes::kTrueColor);
        tags.removeAll(codes::kColorName);
        if (!isEqual) tags.setInteger(codes::kColor, index);
        return true;
    });
}

// --- visibility

AcDb::Visibility AcDbEntity::visibility() const {
    if (!database()) return commonTags(*this).integer(codes::kVisibility, 0) != 0 ? AcDb::kInvisible : AcDb::kVisible;
    const dxf::Record* record = recordOf(*this);
    return record && (record->flags & dxf::kInvisible) != 0 ? AcDb::kInvisible : AcDb::kVisible;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool doSubents) {
    const int value = visibility == AcDb::kInvisible ? 1 : 0;
    return changeCommon(doSubents, [&](ObjectTags& tags) {
        // The index of the drawing knows visibility from its proper place alone.
        ObjectTags strict = tags.common();
        if ((strict.integer(codes::kVisibility, 0) != 0) == (value != 0)) return false;
        strict.setInteger(codes::kVisibility, value);
        return true;
    });
}

// --- linetype, lineweight

ACHAR* AcDbEntity::linetype() const {
    return newString(commonTags(*this).text(codes::kLinetype, L"ByLayer"));
}

AcDbObjectId AcDbEntity::linetypeId() const {
    DatabaseState* state = DatabaseState::ofNames(*this);
    if (!state) return AcDbObjectId();
    return state->idOf(state->tables().find(TableKind::Linetype, commonTags(*this).text(codes::kLinetype, L"ByLayer")));
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* newLinetype, bool doSubents) {
    DatabaseState* state = DatabaseState::ofNames(*this);
    if (!state) return Acad::eNoDatabase;
    if (!newLinetype) return Acad::eInvalidInput;
    // By layer and by block need no record: old drawings have none for them.
    std::wstring name = newLinetype;
    const dxf::RecordId linetype = state->tables().find(TableKind::Linetype, name);
    const bool isLogical =
        qrs::platform::compareNoCase(name, L"ByLayer") == 0 || qrs::platform::compareNoCase(name, L"ByBlock") == 0;
    if (linetype == dxf::kNoRecord && !isLogical) return Acad::eKeyNotFound;
    if (linetype != dxf::kNoRecord) name = state->tables().nameOf(linetype);
    return changeCommon(doSubents, [&](ObjectTags& tags) {
        if (qrs::platform::compareNoCase(tags.text(codes::kLinetype, L"ByLayer"), name) == 0) return false;
        tags.setText(codes::kLinetype, name);
        return true;
    });
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId newLinetype, bool doSubents) {
    DatabaseState* state = DatabaseState::ofNames(*this);
    if (!state) return Acad::eNoDatabase;
    TableKind kind = TableKind::Block;
    const dxf::RecordId linetype = newLinetype.recordNumber();
    if (newLinetype.databaseNumber() != state->number || linetype >= state->drawing().recordCount() ||
        newLinetype.isErased() || !state->tables().kindOf(linetype, kind) || kind != TableKind::Linetype)
        return Acad::eInvalidInput;
    return setLinetype(state->tables().nameOf(linetype).c_str(), doSubents);
}

AcDb::LineWeight AcDbEntity::lineWeight() const {
    return static_cast<AcDb::LineWeight>(commonTags(*this).integer(codes::kLineWeight, AcDb::kLnWtByLayer));
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool doSubents) {
    if (weight == lineWeight()) return checkWrite();
    if (!commonTags(*this).canCarry(codes::kLineWeight)) return Acad::eNotApplicable;
    return changeCommon(doSubents, [&](ObjectTags& tags) {
        if (tags.integer(codes::kLineWeight, AcDb::kLnWtByLayer) == weight) return false;
        tags.setInteger(codes::kLineWeight, weight);
        return true;
    });
}
