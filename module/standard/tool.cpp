// Questions that other modules ask about the current standard.
#include "PipeSystemTool.h"

#include "host/platform/files.h"
#include "standard/holder.h"
#include "standard/itemtree.h"
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
    pugi::xml_document tree;
    platform::Error error;
    if (!qrs::standard::loadItemTree(view(path), tree, error)) return false;
    return std::string_view(tree.document_element().attribute("Comment").value()) == qrs::standard::kRootComment;
}

void GetPipeSystemStandardFiles(const CString& folder, std::vector<CString>& out, bool fullPath) {
    for (const std::wstring& name : platform::listFiles(view(folder), L"*.qdsl")) {
        out.push_back(qrs::standard::makeText(fullPath ? platform::joinPath(view(folder), name) : name));
    }
}

bool IsPipeSystemOfCurrentStandard(const CString& systemName) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return false;
    for (const auto& group : standard->groups) {
        if (group->IsIncludedSystem(systemName)) return true;
    }
    return false;
}

CString CurrentSystemNameToOriginName(const CString& name) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return {};
    for (const auto& group : standard->groups) {
        if (const PipeNode* system = group->FindPipeSystem(name)) return system->PipeOriginalName;
    }
    return {};
}

CString OriginSystemNameToCurrentName(const CString& oldName) {
    CString current;
    const Standard* standard = currentStandard();
    if (standard == nullptr) return current;
    for (const auto& group : standard->groups) {
        if (group->OldSystemNameToCurrentName(oldName, current)) break;
    }
    return current;
}

}  // namespace PipeSystemTool
