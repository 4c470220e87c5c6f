// Vertical sections, and which pipe systems they show.
#include "entities/fieldrow.h"
#include "qrs_pipeentity.h"

using qrs::suite::FieldRow;

ACRX_DEFINE_MEMBERS(TDbSectionDrawing, AcDbEntity)
ACRX_DXF_DEFINE_MEMBERS(TDbVerticalSection, TDbSectionDrawing, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        QRS_VERTICALSECTION, "qrs_pipewire")
ACRX_DXF_DEFINE_MEMBERS(TDbVerticalSectionFeed, TDbSectionDrawing, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        QRS_VERTICALSECTIONFEED, "qrs_pipewire")

namespace {

constexpr const ACHAR* kMark = L"TDbSectionDrawing";
constexpr Adesk::Int16 kNameCode = 300;
constexpr Adesk::Int16 kNameFlagCode = 290;
constexpr Adesk::Int16 kTypeCode = 91;
constexpr Adesk::Int16 kTypeFlagCode = 291;

using Values = TDbSectionDrawing::Values;

// A flag stands after the name or type it belongs to. A name or type without one has a flag that is not set.
const FieldRow<Values> kRows[] = {
    {kNameCode,
     [](Values& values, const resbuf& item) {
         values.lastName = item.resval.rstring;
         values.fields.Set(values.lastName, false);
     },
     [](const Values& values, AcDbDxfFiler& filer, Adesk::Int16 code) {
         for (const TEntityFields::Field& field : values.fields.All()) {
             filer.writeString(code, field.name.c_str());
             filer.writeBool(kNameFlagCode, field.flag);
         }
     }},
    {kNameFlagCode,
     [](Values& values, const resbuf& item) {
         if (!values.fields.All().empty()) values.fields.Set(values.lastName, item.resval.rint != 0);
     },
     nullptr},
    {kTypeCode,
     [](Values& values, const resbuf& item) {
         values.lastType = item.resval.rlong;
         values.flagsByType[values.lastType] = false;
     },
     [](const Values& values, AcDbDxfFiler& filer, Adesk::Int16 code) {
         for (const auto& [type, flag] : values.flagsByType) {
             filer.writeInt32(code, type);
             filer.writeBool(kTypeFlagCode, flag);
         }
     }},
    {kTypeFlagCode,
     [](Values& values, const resbuf& item) {
         if (!values.flagsByType.empty()) values.flagsByType[values.lastType] = item.resval.rint != 0;
     },
     nullptr},
};

}  // namespace

const TEntityFields::Field* TEntityFields::Find(std::wstring_view name) const {
    const auto found = places_.find(name);
    return found == places_.end() ? nullptr : &fields_[found->second];
}

void TEntityFields::Set(std::wstring_view name, bool flag) {
    const auto [place, isNew] = places_.try_emplace(std::wstring(name), fields_.size());
    if (isNew) fields_.push_back({place->first, false});
    fields_[place->second].flag = flag;
}

const TEntityFields& TDbSectionDrawing::GetFields() const {
    assertReadEnabled();
    return values_.fields;
}

bool TDbSectionDrawing::GetCrossPipeFlag(const std::wstring& systemName) const {
    const TEntityFields::Field* field = GetFields().Find(systemName);
    return field && field->flag;
}

bool TDbSectionDrawing::GetCrossPipeFlag(int sysType) const {
    assertReadEnabled();
    const auto found = values_.flagsByType.find(sysType);
    return found != values_.flagsByType.end() && found->second;
}

Acad::ErrorStatus TDbSectionDrawing::SetCrossPipeFlag(const std::wstring& systemName, bool show) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    assertWriteEnabled();
    values_.fields.Set(systemName, show);
    return Acad::eOk;
}

Acad::ErrorStatus TDbSectionDrawing::SetCrossPipeFlag(int sysType, bool show) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    assertWriteEnabled();
    values_.flagsByType[sysType] = show;
    return Acad::eOk;
}

Acad::ErrorStatus TDbSectionDrawing::dxfInFields(AcDbDxfFiler* filer) {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    qrs::suite::readRows(*filer, kMark, kRows, values_);
    return filer->filerStatus();
}

Acad::ErrorStatus TDbSectionDrawing::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    qrs::suite::writeRows(*filer, kMark, kRows, values_);
    return filer->filerStatus();
}

namespace {

const bool kRegistered = [] {
    TDbVerticalSection::rxInit();
    TDbVerticalSectionFeed::rxInit();
    acrxBuildClassHierarchy();
    return true;
}();

}  // namespace
