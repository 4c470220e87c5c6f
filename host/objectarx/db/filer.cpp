// The filer that classes of applications read from and write to.
#include "dbfiler.h"

#include <cmath>
#include <utility>

#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/fields.h"
#include "host/objectarx/db/state.h"

using qrs::host::FieldFiler;
using qrs::host::ValueKind;
namespace dxf = qrs::dxf;

ACRX_DEFINE_MEMBERS(AcDbDxfFiler, AcRxObject)

AcDbDxfFiler::AcDbDxfFiler(std::unique_ptr<FieldFiler> state) : state_(std::move(state)) {}
AcDbDxfFiler::~AcDbDxfFiler() = default;

AcDbDatabase* AcDbDxfFiler::database() const {
    return &state_->state().database;
}

Acad::ErrorStatus AcDbDxfFiler::filerStatus() const {
    return state_->status();
}

bool AcDbDxfFiler::atSubclassData(const ACHAR* name) {
    return name && state_->enter(name);
}

Acad::ErrorStatus AcDbDxfFiler::readResBuf(resbuf* item) {
    return item ? state_->read(*item) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbDxfFiler::writeItem(Adesk::Int16 code, const ACHAR* text) {
    if (!text) return state_->write(code, ValueKind::Unknown, {});
    if (code == AcDb::kDxfSubclass) return state_->beginSection(text);
    return state_->write(code, ValueKind::Text, {{code, qrs::host::writeText(state_->state().drawing(), text)}});
}

Acad::ErrorStatus AcDbDxfFiler::writeInteger(Adesk::Int16 code, Adesk::Int32 value) {
    ValueKind kind = qrs::host::valueKind(code);
    const bool isShort = value >= INT16_MIN && value <= INT16_MAX;
    if (kind != ValueKind::Long && (kind != ValueKind::Short || !isShort)) kind = ValueKind::Unknown;
    return state_->write(code, kind, {{code, std::to_string(value)}});
}

Acad::ErrorStatus AcDbDxfFiler::writeDouble(Adesk::Int16 code, double value) {
    if (!std::isfinite(value)) return state_->write(code, ValueKind::Unknown, {});
    return state_->write(code, ValueKind::Real, {{code, dxf::realText(value)}});
}

Acad::ErrorStatus AcDbDxfFiler::writePoint3d(Adesk::Int16 code, const AcGePoint3d& value) {
    std::vector<dxf::NewTag> tags;
    for (unsigned axis = 0; axis < 3; ++axis) {
        if (!std::isfinite(value[axis])) return state_->write(code, ValueKind::Unknown, {});
        tags.push_back({code + static_cast<int>(axis) * dxf::codes::kCoordinateStep, dxf::realText(value[axis])});
    }
    return state_->write(code, ValueKind::Point, std::move(tags));
}

Acad::ErrorStatus AcDbDxfFiler::writeObjectId(Adesk::Int16 code, AcDbObjectId id) {
    const std::uint64_t handle = id.databaseNumber() == state_->state().number ? Adesk::UInt64(id.handle()) : 0;
    if (handle == 0) return state_->status();
    return state_->write(code, ValueKind::Name, {{code, dxf::handleText(handle)}});
}

void AcDbDxfFiler::setOwnCodes(const Adesk::Int16* codes, std::size_t count) {
    state_->setOwnCodes(codes, count);
}
