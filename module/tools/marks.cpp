// Small texts in the extended data of entities, and the type marks among them.
#include "acdbads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbobjptr.h"
#include "PwxTool.h"
#include "tools/chain.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::tools;

namespace {

constexpr const wchar_t* kTypeItem = L"PWX-ENT-TYPE";

void registerApplication(const wchar_t* name) {
    {
        const AcDbRegAppTablePointer table(workingDatabase(), AcDb::kForRead);
        if (table.openStatus() == Acad::eOk && table->has(name)) return;
    }
    acdbRegApp(name);
}

}  // namespace

namespace PwxTool {

CString ReadXdata(const AcDbEntity* entity, const wchar_t* itemName) {
    // Without a name the entity would hand out what all applications keep there.
    if (entity == nullptr || itemName == nullptr) return CString();
    const Chain chain(entity->xData(itemName));
    const resbuf* value = chain != nullptr ? chain->rbnext : nullptr;
    return value != nullptr && value->restype == AcDb::kDxfXdAsciiString ? CString(value->resval.rstring) : CString();
}

// What setXData says is not asked: callers take 1 for an entity that was there.
int WriteXdata(AcDbEntity* entity, const wchar_t* itemName, const wchar_t* value) {
    registerApplication(itemName);
    if (entity == nullptr) return 0;
    const Chain chain(acutBuildList(AcDb::kDxfRegAppName, itemName, AcDb::kDxfXdAsciiString, value, RTNONE));
    entity->setXData(chain.get());
    return 1;
}

CString GetEntityType(const AcDbEntity* entity, const CString&) {
    return ReadXdata(entity, kTypeItem);
}

CString GetEntityType(const AcDbObjectId& id, const CString& unused) {
    const AcDbEntityPointer entity(id, AcDb::kForRead);
    return GetEntityType(static_cast<const AcDbEntity*>(entity.object()), unused);
}

CString GetEntityType(TEntitySet entity, const CString& unused) {
    return GetEntityType(idOf(entity), unused);
}

int IsEntityType(AcDbEntity* entity, const CString& type) {
    return ReadXdata(entity, kTypeItem) == type ? 1 : 0;
}

int IsEntityType(const AcDbObjectId& id, const CString& type) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    return entity.openStatus() == Acad::eOk ? IsEntityType(entity.object(), type) : 0;
}

int IsEntityType(TEntitySet entity, const CString& type) {
    return IsEntityType(idOf(entity), type);
}

int SetEntityType(AcDbEntity* entity, const CString& type) {
    return WriteXdata(entity, kTypeItem, type);
}

int SetEntityType(const AcDbObjectId& id, const CString& type) {
    AcDbEntityPointer entity(id, AcDb::kForWrite);
    return entity.openStatus() == Acad::eOk && SetEntityType(entity.object(), type) != 0 ? 1 : 0;
}

int SetEntityType(TEntitySet entity, const CString& type) {
    return SetEntityType(idOf(entity), type);
}

}  // namespace PwxTool
