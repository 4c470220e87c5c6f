// Questions about pipes and vertical sections of a drawing, and pipes put into a pipe system.
#include "acdbads.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "PipeSystemTool.h"
#include "qrs_pipeentity.h"
#include "qrs_pipewire.h"
#include "qrs_select.h"
#include "standard/holder.h"
#include "standard/text.h"

using qrs::standard::currentStandard;
using qrs::standard::makeText;

namespace {

constexpr const wchar_t* kUnknownSystem = L"未知系统";

// Does something with the section that the id stands for. False when it is none, or cannot be opened, and without a
// standard, which leaves the object alone.
template <class Act>
bool withSection(AcDbObjectId section, AcDb::OpenMode mode, Act&& act) {
    if (currentStandard() == nullptr) return false;
    AcDbObjectPointer<TDbVerticalSection> drain(section, mode);
    if (drain.openStatus() == Acad::eOk) return act(drain.object()), true;
    AcDbObjectPointer<TDbVerticalSectionFeed> feed(section, mode);
    if (feed.openStatus() == Acad::eOk) return act(feed.object()), true;
    return false;
}

bool isShown(const TDbSectionDrawing& section, const std::wstring& systemName) {
    return section.GetFields().Find(systemName) != nullptr ? section.GetCrossPipeFlag(systemName)
                                                           : section.GetCrossPipeFlag(GetSysType(systemName));
}

bool isShown(const TDbSectionDrawing* section, const CString& systemName) {
    return currentStandard() != nullptr && section != nullptr && isShown(*section, systemName.GetString());
}

// Sections from before systems had names of their own are read by the code, so both flags are kept.
void show(TDbSectionDrawing* section, const CString& systemName, bool shown) {
    if (currentStandard() == nullptr || section == nullptr) return;
    const std::wstring name = systemName.GetString();
    section->SetCrossPipeFlag(name, shown);
    section->SetCrossPipeFlag(GetSysType(name), shown);
}

}  // namespace

namespace PipeSystemTool {

// --- systems of pipes

CString GetPipeSystemName(const TDbPipe* pipe) {
    if (currentStandard() == nullptr || pipe == nullptr) return kUnknownSystem;
    const std::wstring name = pipe->GetPipeSystemName();
    return makeText(name.empty() ? GetSystypeName(pipe->GetPipeSysType()) : name);
}

CString GetPipeSystemName(AcDbObjectId pipe) {
    if (currentStandard() == nullptr) return kUnknownSystem;
    const AcDbObjectPointer<TDbPipe> opened(pipe, AcDb::kForRead);
    return GetPipeSystemName(opened.object());
}

CString GetPipeSystemName(const TEntitySet& pipe) {
    AcDbObjectId id;
    acdbGetObjectId(id, pipe.ent);
    return GetPipeSystemName(id);
}

void SetPipeSystemName(TDbPipe* pipe, const CString& systemName) {
    if (currentStandard() == nullptr || pipe == nullptr) return;
    const std::wstring name = systemName.GetString();
    pipe->SetPipeSystemName(name);
    pipe->SetPipeSysType(GetSysType(name));
}

bool SetPipeSystemName(AcDbObjectId pipe, const CString& systemName) {
    if (currentStandard() == nullptr) return false;
    AcDbObjectPointer<TDbPipe> opened(pipe, AcDb::kForWrite);
    if (opened.openStatus() != Acad::eOk) return false;
    SetPipeSystemName(opened.object(), systemName);
    return true;
}

// --- layers of pipes

void SetPipeLayer(TDbPipe* pipe, const CString& systemName) {
    if (currentStandard() == nullptr || pipe == nullptr || !pipe->isWriteEnabled()) return;
    pipe->setLayer(InitLayer(systemName, pipe->GetCurve().IsVertical() ? L"立管" : L"管线"));
    pipe->SetDimLayerId(InitLayer(systemName, L"管径文字"));
    pipe->SetArrowLayerId(InitLayer(systemName, L"管线流向"));
}

void SetPipeLayer(AcDbObjectId pipe, const CString& systemName) {
    if (currentStandard() == nullptr) return;
    AcDbObjectPointer<TDbPipe> opened(pipe, AcDb::kForWrite);
    SetPipeLayer(opened.object(), systemName);
}

// --- pipes that cross vertical sections

bool IsShowCrossPipe(const TDbVerticalSection* section, const CString& systemName) {
    return isShown(section, systemName);
}

bool IsShowCrossPipe(const TDbVerticalSectionFeed* section, const CString& systemName) {
    return isShown(section, systemName);
}

bool IsShowCrossPipe(AcDbObjectId section, const CString& systemName) {
    bool isIt = false;
    withSection(section, AcDb::kForRead, [&](const auto* opened) { isIt = isShown(opened, systemName); });
    return isIt;
}

void SetShowCrossPipe(TDbVerticalSection* section, const CString& systemName, bool shown) {
    show(section, systemName, shown);
}

void SetShowCrossPipe(TDbVerticalSectionFeed* section, const CString& systemName, bool shown) {
    show(section, systemName, shown);
}

void SetShowCrossPipe(AcDbObjectId section, const CString& systemName, bool shown) {
    withSection(section, AcDb::kForWrite, [&](auto* opened) { show(opened, systemName, shown); });
}

}  // namespace PipeSystemTool
