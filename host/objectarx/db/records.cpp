// Registered applications, dimension styles.
#include <string>

#include "dbsymtb.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"

using qrs::host::TableKind;

ACRX_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID")
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, "DIMSTYLE")

AcDbRegAppTableRecord::AcDbRegAppTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::RegApp).record, {{qrs::dxf::codes::kFlags, "0"}}});
}

AcDbObjectId AcDbDimStyleTableRecord::dimtxsty() const {
    const qrs::host::DatabaseState* state = qrs::host::DatabaseState::of(database());
    const std::uint64_t handle = state ? tags().handle(qrs::dxf::codes::kHardPointer) : 0;
    return handle != 0 ? state->idOf(state->drawing().findHandle(handle)) : AcDbObjectId();
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimtxsty(AcDbObjectId textStyle) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (textStyle.isNull()) return Acad::eNullObjectId;
    const qrs::host::DatabaseState* state = qrs::host::DatabaseState::of(database());
    if (!state || textStyle.database() != database()) return Acad::eWrongDatabase;
    if (!qrs::host::DatabaseState::isRecordOf(textStyle, TableKind::TextStyle)) return Acad::eWrongObjectType;
    const std::uint64_t handle = state->ids().handleOf(textStyle.recordNumber());
    qrs::host::ObjectTags own = tags();
    if (handle == 0 || !own.canCarry(qrs::dxf::codes::kHardPointer)) return Acad::eNotApplicable;
    qrs::platform::recordCall("AcDbDimStyleTableRecord::setDimtxsty", own.text(qrs::dxf::codes::kName),
                              state->tables().nameOf(textStyle.recordNumber()));
    if (own.handle(qrs::dxf::codes::kHardPointer) == handle) return Acad::eOk;
    const std::string text = qrs::dxf::handleText(handle);
    own.setText(qrs::dxf::codes::kHardPointer, std::wstring(text.begin(), text.end()));
    return Acad::eOk;
}
