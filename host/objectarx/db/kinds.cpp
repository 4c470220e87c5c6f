// Makes the objects for records: known kinds have a class, kinds known by name alone an opaque one.
#include "host/objectarx/db/kinds.h"

#include <map>
#include <memory>
#include <string>

#include "dbdict.h"
#include "dbents.h"
#include "dblayout.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "host/objectarx/db/state.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

// An object that has nothing to tell but its name.
class OpaqueObject : public AcDbObject {
  public:
    AcRxClass* isA() const override {
        DatabaseState* state = DatabaseState::of(database());
        return state ? state->kinds().of(record()).rxClass : AcDbObject::desc();
    }
};

template <class Object>
AcRxObject* make() {
    return new Object;
}

struct ClassEntry {
    const char* dxfName;
    AcRxObject* (*make)();
    AcRxClass* (*desc)();
};

const ClassEntry kClasses[] = {
    {"LINE", make<AcDbLine>, AcDbLine::desc},
    {"CIRCLE", make<AcDbCircle>, AcDbCircle::desc},
    {"LAYOUT", make<AcDbLayout>, AcDbLayout::desc},
    {"INSERT", make<AcDbBlockReference>, AcDbBlockReference::desc},
    {"TEXT", make<AcDbText>, AcDbText::desc},
    {"VIEWPORT", make<AcDbViewport>, AcDbViewport::desc},
    {"DICTIONARY", make<AcDbDictionary>, AcDbDictionary::desc},
    {"ACDBDICTIONARYWDFLT", make<AcDbDictionary>, AcDbDictionary::desc},
    {"XRECORD", make<AcDbXrecord>, AcDbXrecord::desc},
    {"LAYER", make<AcDbLayerTableRecord>, AcDbLayerTableRecord::desc},
    {"LTYPE", make<AcDbLinetypeTableRecord>, AcDbLinetypeTableRecord::desc},
    {"STYLE", make<AcDbTextStyleTableRecord>, AcDbTextStyleTableRecord::desc},
    {"APPID", make<AcDbRegAppTableRecord>, AcDbRegAppTableRecord::desc},
    {"DIMSTYLE", make<AcDbDimStyleTableRecord>, AcDbDimStyleTableRecord::desc},
    {"BLOCK_RECORD", make<AcDbBlockTableRecord>, AcDbBlockTableRecord::desc},
};

// Kinds known by name alone.
struct NameEntry {
    const char* dxfName;
    const wchar_t* className;
};

constexpr NameEntry kNames[] = {
    {"3DFACE", L"AcDbFace"},
    {"3DSOLID", L"AcDb3dSolid"},
    {"ACAD_TABLE", L"AcDbTable"},
    {"ACDBPLACEHOLDER", L"AcDbPlaceHolder"},
    {"ARC", L"AcDbArc"},
    {"ATTDEF", L"AcDbAttributeDefinition"},
    {"ATTRIB", L"AcDbAttribute"},
    {"BLOCK", L"AcDbBlockBegin"},
    {"BODY", L"AcDbBody"},
    {"DIMENSION", L"AcDbDimension"},
    {"ELLIPSE", L"AcDbEllipse"},
    {"ENDBLK", L"AcDbBlockEnd"},
    {"GROUP", L"AcDbGroup"},
    {"HATCH", L"AcDbHatch"},
    {"IMAGE", L"AcDbRasterImage"},
    {"LEADER", L"AcDbLeader"},
    {"LWPOLYLINE", L"AcDbPolyline"},
    {"MATERIAL", L"AcDbMaterial"},
    {"MESH", L"AcDbSubDMesh"},
    {"MLINE", L"AcDbMline"},
    {"MLINESTYLE", L"AcDbMlineStyle"},
    {"MTEXT", L"AcDbMText"},
    {"MULTILEADER", L"AcDbMLeader"},
    {"OLE2FRAME", L"AcDbOle2Frame"},
    {"POINT", L"AcDbPoint"},
    {"POLYLINE", L"AcDb2dPolyline"},
    {"RAY", L"AcDbRay"},
    {"REGION", L"AcDbRegion"},
    {"SEQEND", L"AcDbSequenceEnd"},
    {"SHAPE", L"AcDbShape"},
    {"SOLID", L"AcDbSolid"},
    {"SPLINE", L"AcDbSpline"},
    {"TOLERANCE", L"AcDbFcf"},
    {"TRACE", L"AcDbTrace"},
    {"UCS", L"AcDbUCSTableRecord"},
    {"VERTEX", L"AcDb2dVertex"},
    {"VIEW", L"AcDbViewTableRecord"},
    {"VPORT", L"AcDbViewportTableRecord"},
    {"WIPEOUT", L"AcDbWipeout"},
    {"XLINE", L"AcDbXline"},
};

// A class made for a kind that has no C++ class.
struct NamedKind {
    std::wstring className;
    std::wstring dxfName;
    std::unique_ptr<AcRxClass> rxClass;
    ObjectKind kind;
};

bool isEntityKind(dxf::RecordKind kind) {
    return kind == dxf::RecordKind::Entity || kind == dxf::RecordKind::Block || kind == dxf::RecordKind::EndBlock;
}

std::unique_ptr<NamedKind> makeNamed(dxf::RecordKind recordKind, std::string_view dxfName) {
    const bool isEntity = isEntityKind(recordKind);
    auto named = std::make_unique<NamedKind>();
    named->dxfName = platform::fromUtf8(dxfName);
    // What nobody knows is a proxy, as the editor loads it.
    named->className = isEntity ? L"AcDbProxyEntity" : L"AcDbProxyObject";
    for (const NameEntry& entry : kNames)
        if (entry.dxfName == dxfName) named->className = entry.className;
    named->rxClass = std::make_unique<AcRxClass>(
        named->className.c_str(), isEntity ? AcDbEntity::desc() : AcDbObject::desc(), named->dxfName.c_str());
    named->kind = {isEntity ? make<AcDbEntity> : make<OpaqueObject>, named->rxClass.get()};
    return named;
}

bool fits(const AcRxClass* rxClass, dxf::RecordKind recordKind) {
    return rxClass->isDerivedFrom(AcDbEntity::desc()) == isEntityKind(recordKind);
}

using KnownKinds = std::map<std::string, ObjectKind, std::less<>>;

// Libraries bring their classes while the program is still being set up, so this is made when first asked for.
KnownKinds& knownKinds() {
    static KnownKinds known;
    if (known.empty()) {
        for (const ClassEntry& entry : kClasses)
            known.emplace(entry.dxfName, ObjectKind{entry.make, entry.desc()});
    }
    return known;
}

unsigned& age() {
    static unsigned value = 0;
    return value;
}

}  // namespace

unsigned kindAge() {
    return age();
}

const ObjectKind& objectKind(dxf::RecordKind recordKind, std::string_view dxfName) {
    static std::map<std::pair<bool, std::string>, std::unique_ptr<NamedKind>> named;
    const KnownKinds& known = knownKinds();
    const auto found = known.find(dxfName);
    if (found != known.end() && fits(found->second.rxClass, recordKind)) return found->second;
    std::unique_ptr<NamedKind>& kind = named[{isEntityKind(recordKind), std::string(dxfName)}];
    if (!kind) kind = makeNamed(recordKind, dxfName);
    return kind->kind;
}

const ObjectKind& tableKind(TableKind kind) {
    static const ObjectKind plain{make<OpaqueObject>, AcDbSymbolTable::desc()};
    static const ObjectKind linetypes{make<AcDbLinetypeTable>, AcDbLinetypeTable::desc()};
    static const ObjectKind layers{make<AcDbLayerTable>, AcDbLayerTable::desc()};
    static const ObjectKind textStyles{make<AcDbTextStyleTable>, AcDbTextStyleTable::desc()};
    static const ObjectKind regApps{make<AcDbRegAppTable>, AcDbRegAppTable::desc()};
    static const ObjectKind dimStyles{make<AcDbDimStyleTable>, AcDbDimStyleTable::desc()};
    static const ObjectKind blocks{make<AcDbBlockTable>, AcDbBlockTable::desc()};
    switch (kind) {
        case TableKind::Linetype:
            return linetypes;
        case TableKind::Layer:
            return layers;
        case TableKind::TextStyle:
            return textStyles;
        case TableKind::RegApp:
            return regApps;
        case TableKind::DimStyle:
            return dimStyles;
        case TableKind::Block:
            return blocks;
        case TableKind::Viewport:
        case TableKind::View:
        case TableKind::Ucs:
            break;
    }
    return plain;
}

const ObjectKind& blockDefinitionKind() {
    static const ObjectKind kind{make<AcDbBlockTableRecord>, AcDbBlockTableRecord::desc()};
    return kind;
}

const ObjectKind& ObjectKinds::of(std::uint32_t id) {
    if (isTableId(id)) return tableKind(tableKindOf(id));
    const dxf::Drawing& drawing = contents_.drawing();
    const bool isEntity = id < drawing.recordCount() && drawing.record(id).kind == dxf::RecordKind::Entity;
    if (!isEntity && contents_.blocks().byId(id)) return blockDefinitionKind();
    const dxf::Record& entry = drawing.record(id);
    if (!isEntity) return objectKind(entry.kind, drawing.typeName(entry.type));
    if (age_ != kindAge()) ofEntities_.clear();
    age_ = kindAge();
    if (entry.type >= ofEntities_.size()) ofEntities_.resize(entry.type + std::size_t{1}, nullptr);
    const ObjectKind*& kind = ofEntities_[entry.type];
    if (!kind) kind = &objectKind(entry.kind, drawing.typeName(entry.type));
    return *kind;
}

}  // namespace qrs::host

using qrs::host::ObjectKind;

void acrxRegisterClass(AcRxClass* aClass) {
    if (!aClass || !aClass->dxfName() || !aClass->pseudoConstructor() || !aClass->isDerivedFrom(AcDbObject::desc()))
        return;
    const std::string name = qrs::platform::toUtf8(aClass->dxfName());
    ++qrs::host::age();
    qrs::host::knownKinds().try_emplace(name, ObjectKind{aClass->pseudoConstructor(), aClass});
}

void deleteAcRxClass(AcRxClass* aClass) {
    if (!aClass || !aClass->dxfName()) return;
    const auto found = qrs::host::knownKinds().find(qrs::platform::toUtf8(aClass->dxfName()));
    if (found == qrs::host::knownKinds().end() || found->second.rxClass != aClass || !aClass->pseudoConstructor())
        return;
    ++qrs::host::age();
    qrs::host::knownKinds().erase(found);
}
