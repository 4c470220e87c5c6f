// Registered applications, dimension styles.
#include "dbsymtb.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/state.h"

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
