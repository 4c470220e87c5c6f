// Header variables of a drawing, as system variables of the editor.
#include <algorithm>
#include <cmath>

#include "host/drawing/headervariables.h"
#include "host/objectarx/db/access.h"
#include "host/objectarx/db/pictures.h"
#include "host/objectarx/db/state.h"

namespace qrs::host {

namespace {

bool numberOf(const resbuf& value, double& number) {
    switch (value.restype) {
        case RTSHORT:
            number = value.resval.rint;
            return true;
        case RTLONG:
            number = value.resval.rlong;
            return true;
        case RTREAL:
        case RTANG:
        case RTORINT:
            number = value.resval.rreal;
            return std::isfinite(number);
        default:
            return false;
    }
}

Acad::ErrorStatus statusOf(HeaderChange change) {
    switch (change) {
        case HeaderChange::OutOfRange:
            return Acad::eOutOfRange;
        case HeaderChange::NoSuchValue:
            return Acad::eInvalidInput;
        case HeaderChange::FrozenLayer:
            return Acad::eInvalidLayer;
        case HeaderChange::Done:
            break;
    }
    return Acad::eOk;
}

Acad::ErrorStatus setNumber(dxf::Drawing& drawing, const HeaderFormat& format, const resbuf& value) {
    double number = 0.0;
    if (!numberOf(value, number)) return Acad::eInvalidInput;
    if (format.kind != HeaderKind::Real && value.restype != RTSHORT && value.restype != RTLONG)
        return Acad::eInvalidInput;
    return statusOf(setHeaderNumber(drawing, format, number));
}

// Entities of applications draw their symbols in this scale.
Acad::ErrorStatus setScale(DatabaseState& state, const HeaderFormat& format, const resbuf& value) {
    const OwnPictures pictures(state);
    const Acad::ErrorStatus status = setNumber(state.drawing(), format, value);
    if (status == Acad::eOk) pictures.renew();
    return status;
}

Acad::ErrorStatus setPoint(dxf::Drawing& drawing, const HeaderFormat& format, const resbuf& value) {
    if (value.restype != RTPOINT && value.restype != RT3DPOINT) return Acad::eInvalidInput;
    ads_point point = {value.resval.rpoint[0], value.resval.rpoint[1], 0.0};
    if (value.restype == RT3DPOINT) point[2] = value.resval.rpoint[2];
    const auto isFinite = [](double coordinate) { return std::isfinite(coordinate); };
    if (!std::all_of(point, point + format.axes(), isFinite)) return Acad::eInvalidInput;
    setHeaderPoint(drawing, format, point);
    return Acad::eOk;
}

}  // namespace

bool isHeaderVariable(std::wstring_view name) {
    return headerFormat(name) != nullptr;
}

std::vector<std::wstring> headerVariableNames() {
    return headerNames();
}

Acad::ErrorStatus headerVariable(const AcDbDatabase* database, std::wstring_view name, resbuf& value) {
    const DatabaseState* state = DatabaseState::of(database);
    if (!state) return Acad::eNoDatabase;
    const HeaderFormat* format = headerFormat(name);
    if (!format) return Acad::eKeyNotFound;
    const dxf::Drawing& drawing = state->drawing();
    value = resbuf{};
    if (format->axes() != 0) {
        value.restype = format->axes() == 2 ? RTPOINT : RT3DPOINT;
        for (unsigned axis = 0; axis < format->axes(); ++axis)
            value.resval.rpoint[axis] = headerReal(drawing, *format, axis);
    } else if (format->kind == HeaderKind::Real) {
        value.restype = RTREAL;
        value.resval.rreal = headerReal(drawing, *format);
    } else if (format->kind == HeaderKind::Short) {
        value.restype = RTSHORT;
        value.resval.rint = static_cast<short>(headerInteger(drawing, *format));
    } else {
        value.restype = RTSTR;
        value.resval.rstring = newString(headerText(drawing, *format));
    }
    return Acad::eOk;
}

Acad::ErrorStatus setHeaderVariable(AcDbDatabase* database, std::wstring_view name, const resbuf& value) {
    DatabaseState* state = DatabaseState::of(database);
    if (!state) return Acad::eNoDatabase;
    const HeaderFormat* format = headerFormat(name);
    if (!format) return Acad::eKeyNotFound;
    if (format->readOnly) return Acad::eIsWriteProtected;
    // What the drawing's version does not know is no variable of it.
    if (state->drawing().version() < format->since) return Acad::eNotApplicable;
    if (format == headerFormat(L"DIMSCALE")) return setScale(*state, *format, value);
    if (format->isNumber()) return setNumber(state->drawing(), *format, value);
    if (format->axes() != 0) return setPoint(state->drawing(), *format, value);
    if (value.restype != RTSTR || !value.resval.rstring) return Acad::eInvalidInput;
    return statusOf(setHeaderText(state->contents(), *format, value.resval.rstring));
}

}  // namespace qrs::host
