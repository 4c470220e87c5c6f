// Questions that other modules ask about the current standard.
#include "PipeSystemTool.h"

#include "host/platform/files.h"
#include "standard/holder.h"
#include "standard/layerlookup.h"
#include "standard/systemindex.h"
#include "standard/text.h"

using qrs::standard::currentStandard;
using qrs::standard::Standard;
using qrs::standard::view;
namespace platform = qrs::platform;

Adesk::Int32 g_bLayerAutoGrouping = 1;
Adesk::Int32 g_bResetFlangeSpace = 1;
Adesk::Int32 g_nFlangeStyle = 0;

namespace PipeSystemTool {

CString GetCurrentStandardName() {
    if (currentStandard() == nullptr) return {};
    const CString path = qrs::standard::StandardHolder::instance().path();
    const int backslash = path.ReverseFind(L'\\');
    if (backslash < 0) return {};
    const CString name = path.Mid(backslash + 1);
    // The first point, not the last: a name without one means no standard to the callers.
    const int point = name.Find(L'.');
    return point < 0 ? CString() : name.Left(point);
}

bool IsPipeSystemStandardFile(const CString& path) {
    return qrs::standard::isStandardFile(view(path));
}

void GetPipeSystemStandardFiles(const CString& folder, std::vector<CString>& out, bool fullPath) {
    for (const std::wstring& name : platform::listFiles(view(folder), L"*.qdsl")) {
        out.push_back(qrs::standard::makeText(fullPath ? platform::joinPath(view(folder), name) : name));
    }
}

bool IsPipeSystemOfCurrentStandard(const CString& systemName) {
    const Standard* standard = currentStandard();
    return standard != nullptr && qrs::standard::groupOfSystem(*standard, systemName) != nullptr;
}

CString CurrentSystemNameToOriginName(const CString& name) {
    const Standard* standard = currentStandard();
    const PipeNode* system = standard != nullptr ? qrs::standard::systemNamed(*standard, name) : nullptr;
    return system != nullptr ? system->PipeOriginalName : CString();
}

CString OriginSystemNameToCurrentName(const CString& oldName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    for (const qrs::standard::IndexEntry* entry : standard->systems().onceNamed(oldName)) {
        if (entry->system->PipeOriginalName == oldName) return entry->system->PipeName;
    }
    return {};
}

}  // namespace PipeSystemTool
