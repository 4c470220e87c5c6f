// The command drsz: exported settings are copied back over the installed ones.
#include "dialogs/importsetting.h"

#include <iterator>
#include <optional>

#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dialogs/settingfiles.h"
#include "host/platform/dialog.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"
#include "standard/startup.h"

namespace qrs::dialogs {

using platform::translated;

namespace {

constexpr const wchar_t* kPrompt = L"\n选择导入设置文件的位置[读取默认位置(1)/到指定目录读取(2)]:<1>";

// Not the order of the export: CmdConfig.xml comes last, so that it is not replaced by an import that is cut off.
const SettingGroup importOrder[] = {kShortcuts, kToolBars, kLayers, kLinetypes, kPipes, kUserLibrary, kInitial};

void tellNothingExported() {
    QrsExport::PrintRefusal(L"没有找到导出的文件，请确认首先进行导出设置。\n");
}

}  // namespace

void importSettings(const std::wstring& folder) {
    if (!platform::folderExists(folder)) {
        tellNothingExported();
        return;
    }
    readOptions(folder);
    bool hasNewShortcuts = false;
    int copied = platform::fileExists(folder + kOptionsFile) ? 1 : 0;
    for (const SettingGroup group : importOrder) {
        for (const wchar_t* name : settingGroupRows[group].files) {
            if (copyBack(folder, name) != CopiedBack::Done) continue;
            ++copied;
            if (group == kShortcuts) hasNewShortcuts = true;
        }
        if (group != kLayers) continue;
        copied += copyStandardsBack(folder);
        standard::reloadCurrentStandard();
    }
    if (copied == 0) QrsExport::TellRefusal(L"没有导入任何设置文件！");
    acutPrintf(L"已经完成导入设置。\n");
    if (hasNewShortcuts) acutPrintf(L"您更新了acad.pgp文件。需要重新启动ACAD才能生效。\n");
}

void drsz() {
    wchar_t answer[133];
    if (acedGetString(0, kPrompt, answer, std::size(answer)) != RTNORM) return;
    if (std::wstring(answer) == L"2") {
        const std::optional<std::wstring> chosen = platform::chooseFolder(L"指定导入目录");
        if (chosen) importSettings(endedFolder(*chosen));
        return;
    }
    std::wstring reason;
    const std::wstring folder = defaultSettingFolder();
    const FolderState state = defaultFolderState(reason);
    if (state == FolderState::Usable) {
        importSettings(folder);
    } else if (state == FolderState::Refused && platform::folderExists(folder)) {
        QrsExport::PrintRefusal(
            L"%s", translated(L"\nThe default settings folder %1 cannot be used: %2. Read from a folder of your own.\n",
                              platform::shownPath(folder), reason)
                       .c_str());
    } else {
        // A folder spelled in another case would be found by its name, and might be anybody's.
        tellNothingExported();
    }
}

}  // namespace qrs::dialogs
