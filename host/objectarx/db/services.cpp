// The working database, and the older functions that speak of it.
#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "dbsymutl.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;

namespace {

AcDbHostApplicationServices& plainServices() {
    static AcDbHostApplicationServices services;
    return services;
}

AcDbHostApplicationServices* currentServices = nullptr;

}  // namespace

// --- services

AcDbHostApplicationServices::~AcDbHostApplicationServices() {
    if (currentServices == this) currentServices = nullptr;
}

Acad::ErrorStatus AcDbHostApplicationServices::findFile(ACHAR* pathOut, int length, const ACHAR* name, AcDbDatabase*,
                                                        FindFileHint) {
    if (!pathOut || length <= 0 || !name) return Acad::eInvalidInput;
    *pathOut = L'\0';
    return Acad::eFileNotFound;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    return currentServices ? currentServices : &plainServices();
}

Acad::ErrorStatus acdbSetHostApplicationServices(AcDbHostApplicationServices* services) {
    AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
    currentServices = services;
    acdbHostApplicationServices()->setWorkingDatabase(working);
    return Acad::eOk;
}

// --- names and handles

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objectId, const ads_name name) {
    objectId.setNull();
    if (ads_name_nil(name)) return Acad::eNullObjectId;
    const AcDbObjectId id = AcDbObjectId::fromOldId(name[0]);
    if (!id.isValid()) return Acad::eInvalidInput;
    objectId = id;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId objectId) {
    ads_name_clear(name);
    if (objectId.isNull()) return Acad::eNullObjectId;
    name[0] = objectId.asOldId();
    return Acad::eOk;
}

int acdbHandEnt(const ACHAR* handle, ads_name name) {
    ads_name_clear(name);
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectId id;
    if (!database || database->getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk) return RTERROR;
    const AcRxClass* rxClass = id.objectClass();
    if (!rxClass || !rxClass->isDerivedFrom(AcDbEntity::desc())) return RTERROR;
    return acdbGetAdsName(name, id) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbRegApp(const ACHAR* name) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbRegAppTable* table = nullptr;
    if (!database || database->getSymbolTable(table, AcDb::kForWrite) != Acad::eOk) return RTERROR;
    auto record = std::make_unique<AcDbRegAppTableRecord>();
    Acad::ErrorStatus status = record->setName(name);
    if (status == Acad::eOk) status = table->add(record.get());
    if (status == Acad::eOk) record.release()->close();
    table->close();
    return status == Acad::eOk ? RTNORM : RTERROR;
}

// --- shorthands

AcDbObjectId AcDbSymbolUtilities::Services::blockModelSpaceId(AcDbDatabase* database) const {
    DatabaseState* state = DatabaseState::of(database);
    const qrs::host::Block* block = state ? state->blocks().bySpace(qrs::host::Space::Model) : nullptr;
    return block ? state->idOf(block->id) : AcDbObjectId();
}

const AcDbSymbolUtilities::Services* acdbSymUtil() {
    static const AcDbSymbolUtilities::Services services;
    return &services;
}
