// Layers.
#include <algorithm>

#include "dbsymtb.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/entitywalk.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
using qrs::platform::recordCall;

namespace codes = qrs::dxf::codes;

ACRX_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, "LAYER")

namespace {

constexpr int kFrozenBit = 1;
constexpr int kFrozenInNewViewportsBit = 2;
constexpr int kLockedBit = 4;
constexpr int kWhite = 7;

constexpr AcDb::LineWeight kWeights[] = {
    AcDb::kLnWt000, AcDb::kLnWt005, AcDb::kLnWt009, AcDb::kLnWt013, AcDb::kLnWt015,
    AcDb::kLnWt018, AcDb::kLnWt020, AcDb::kLnWt025, AcDb::kLnWt030, AcDb::kLnWt035,
    AcDb::kLnWt040, AcDb::kLnWt050, AcDb::kLnWt053, AcDb::kLnWt060, AcDb::kLnWt070,
    AcDb::kLnWt080, AcDb::kLnWt090, AcDb::kLnWt100, AcDb::kLnWt106, AcDb::kLnWt120,
    AcDb::kLnWt140, AcDb::kLnWt158, AcDb::kLnWt200, AcDb::kLnWt211, AcDb::kLnWtByLwDefault,
};

// The palette index of a layer, without regard to on and off; white for what is no index.
int layerIndex(const ObjectTags& tags) {
    const std::int64_t value = tags.integer(codes::kColor, kWhite);
    const std::int64_t index = value < 0 ? -value : value;
    return index >= 1 && index <= 255 ? static_cast<int>(index) : kWhite;
}

}  // namespace

AcDbLayerTableRecord::AcDbLayerTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::Layer).record,
                {{codes::kFlags, "0"}, {codes::kColor, "7"}, {codes::kLinetype, "Continuous"}}});
}

std::wstring AcDbLayerTableRecord::recordedName() const {
    return tags().text(codes::kName);
}

// --- states

bool AcDbLayerTableRecord::isOff() const {
    return tags().integer(codes::kColor, kWhite) < 0;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    recordCall("AcDbLayerTableRecord::setIsOff", recordedName(), off ? 1 : 0);
    ObjectTags own = tags();
    if (isOff() != off) own.setInteger(codes::kColor, off ? -layerIndex(own) : layerIndex(own));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setFlag(const char* call, int bit, bool on) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    recordCall(call, recordedName(), on ? 1 : 0);
    ObjectTags own = tags();
    const std::int64_t flags = own.integer(codes::kFlags, 0);
    if (((flags & bit) != 0) != on) own.setInteger(codes::kFlags, on ? flags | bit : flags & ~std::int64_t{bit});
    return Acad::eOk;
}

bool AcDbLayerTableRecord::isFrozen() const {
    return (tags().integer(codes::kFlags, 0) & kFrozenBit) != 0;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen && database() && database()->clayer() == objectId()) return Acad::eInvalidLayer;
    return setFlag("AcDbLayerTableRecord::setIsFrozen", kFrozenBit, frozen);
}

bool AcDbLayerTableRecord::isLocked() const {
    return (tags().integer(codes::kFlags, 0) & kLockedBit) != 0;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
    return setFlag("AcDbLayerTableRecord::setIsLocked", kLockedBit, locked);
}

bool AcDbLayerTableRecord::VPDFLT() const {
    return (tags().integer(codes::kFlags, 0) & kFrozenInNewViewportsBit) != 0;
}

Acad::ErrorStatus AcDbLayerTableRecord::setVPDFLT(bool frozen) {
    return setFlag("AcDbLayerTableRecord::setVPDFLT", kFrozenInNewViewportsBit, frozen);
}

// --- colour

AcCmColor AcDbLayerTableRecord::color() const {
    const ObjectTags own = tags();
    AcCmColor color;
    const std::int64_t trueColor = own.integer(codes::kTrueColor, -1);
    const auto index = static_cast<Adesk::UInt16>(layerIndex(own));
    if (trueColor >= 0) {
        color.setRGB(static_cast<Adesk::UInt8>(trueColor >> 16), static_cast<Adesk::UInt8>(trueColor >> 8),
                     static_cast<Adesk::UInt8>(trueColor));
        color.besideRgb_ = own.has(codes::kColor) ? index : Adesk::UInt16{0};
    } else {
        color.setColorIndex(index);
    }
    return color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!color.isByACI() && !color.isByColor()) return Acad::eInvalidInput;
    ObjectTags own = tags();
    if (color.isByColor() && !own.canCarry(codes::kTrueColor)) return Acad::eNotApplicable;
    const int index = color.colorIndex();
    const int rgb = color.red() * 65536 + color.green() * 256 + color.blue();
    if (color.isByColor())
        recordCall("AcDbLayerTableRecord::setColor", recordedName(), color.red(), color.green(), color.blue());
    else
        recordCall("AcDbLayerTableRecord::setColor", recordedName(), index);
    if (color == this->color()) return Acad::eOk;
    if (layerIndex(own) != index) own.setInteger(codes::kColor, isOff() ? -index : index);
    if (color.isByColor())
        own.setInteger(codes::kTrueColor, rgb);
    else
        own.removeAll(codes::kTrueColor);
    own.removeAll(codes::kColorName);  // the name of the colour that was
    if (DatabaseState* state = DatabaseState::of(database())) state->layerChanged(record());
    return Acad::eOk;
}

// --- plotting

AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const {
    return static_cast<AcDb::LineWeight>(tags().integer(codes::kLineWeight, AcDb::kLnWtByLwDefault));
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (std::find(std::begin(kWeights), std::end(kWeights), weight) == std::end(kWeights)) return Acad::eInvalidInput;
    ObjectTags own = tags();
    if (weight != lineWeight() && !own.canCarry(codes::kLineWeight)) return Acad::eNotApplicable;
    recordCall("AcDbLayerTableRecord::setLineWeight", recordedName(), static_cast<int>(weight));
    if (weight == lineWeight()) return Acad::eOk;
    own.setInteger(codes::kLineWeight, weight);
    if (DatabaseState* state = DatabaseState::of(database())) state->layerChanged(record());
    return Acad::eOk;
}

bool AcDbLayerTableRecord::isPlottable() const {
    return tags().integer(codes::kPlottable, 1) != 0;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    ObjectTags own = tags();
    if (plottable != isPlottable() && !own.canCarry(codes::kPlottable)) return Acad::eNotApplicable;
    recordCall("AcDbLayerTableRecord::setIsPlottable", recordedName(), plottable ? 1 : 0);
    if (plottable != isPlottable()) own.setInteger(codes::kPlottable, plottable ? 1 : 0);
    return Acad::eOk;
}

// --- linetype

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
    DatabaseState* state = DatabaseState::of(database());
    if (!state) return AcDbObjectId();
    return state->idOf(state->tables().find(TableKind::Linetype, tags().text(codes::kLinetype, L"Continuous")));
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (id.isNull()) return Acad::eNullObjectId;
    if (database() && id.database() != database()) return Acad::eWrongDatabase;
    if (!DatabaseState::isRecordOf(id, TableKind::Linetype)) return Acad::eWrongObjectType;
    DatabaseState* state = DatabaseState::byNumber(id.databaseNumber());
    const std::wstring name = state->tables().nameOf(id.recordNumber());
    recordCall("AcDbLayerTableRecord::setLinetypeObjectId", recordedName(), name);
    ObjectTags own = tags();
    if (qrs::platform::compareNoCase(own.text(codes::kLinetype, L"Continuous"), name) != 0)
        own.setText(codes::kLinetype, name);
    return Acad::eOk;
}

namespace qrs::host {

std::wstring lostLinetype(AcDbObjectId layer) {
    DatabaseState* state = DatabaseState::of(layer.database());
    if (!state || !DatabaseState::isRecordOf(layer, TableKind::Layer)) return {};
    state->objects().writeAll();
    const dxf::Drawing& drawing = state->drawing();
    dxf::Tag tag;
    if (!drawing.findTag(state->ids().recordOf(layer.recordNumber()), codes::kLinetype, tag)) return {};
    std::wstring name = readText(drawing, tag.value);
    return state->tables().find(TableKind::Linetype, name) == dxf::kNoRecord ? name : std::wstring();
}

}  // namespace qrs::host
