// The command dcsz: the user's settings are copied into a folder.
#include "dialogs/exportsetting.h"

#include <optional>
#include <vector>

#include "acutads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/tree.h"
#include "qrs_kernal.h"

namespace platform = qrs::platform;

CExportSettingDlg::CExportSettingDlg() : dialog_(L"导出设置") {
    dialog_.beginGroup(L"导出设置");
    for (int group = 0; group < qrs::dialogs::kSettingGroups; ++group)
        groups_[group] = &dialog_.addCheckBox(qrs::dialogs::settingGroupRows[group].caption, true);
    chooseFolder_ = &dialog_.addCheckBox(L"导出到指定文件夹");
}

bool CExportSettingDlg::show() {
    dialog_.reopen();
    return platform::showDialog(dialog_) == platform::kDialogOk;
}

namespace qrs::dialogs {

using platform::translated;

namespace {

// Not the dialog's order: standards come before the tables.
const SettingGroup exportOrder[] = {kInitial, kShortcuts, kToolBars, kLayers, kLinetypes, kPipes, kUserLibrary};

}  // namespace

bool exportSettings(const CExportSettingDlg& choice, const std::wstring& chosenFolder) {
    const std::wstring folder = chosenFolder.empty() ? defaultSettingFolder() : chosenFolder;
    // Sources are looked for before anything is deleted, so that none of them is.
    std::vector<FileCopy> copies;
    for (const SettingGroup group : exportOrder)
        if (choice.IsGroupChecked(group)) addExportCopies(group, folder, copies);
    std::vector<std::wstring> sources;
    for (const FileCopy& copy : copies)
        sources.push_back(copy.source);
    std::wstring reason;
    if (chosenFolder.empty() && !prepareDefaultFolder(sources, reason)) {
        QrsExport::PrintRefusal(
            L"%s", translated(L"\nThe default settings folder %1 cannot be used: %2. Export to a folder of your own.\n",
                              platform::shownPath(folder), reason)
                       .c_str());
        return false;
    }
    if (choice.IsGroupChecked(kInitial)) writeOptions(folder);
    for (const FileCopy& copy : copies) {
        // What cannot be copied is left out, and the rest is copied.
        platform::Error error;
        if (platform::copyFileAtomically(platform::nativePath(copy.source), platform::nativePath(copy.target),
                                         platform::LinkedTarget::Replace, error))
            continue;
        QrsExport::FailWriting(translated(L"%1 was not exported: %2", platform::shownPath(copy.source),
                                          platform::fromUtf8(error.message)));
    }
    acutPrintf(L"已经完成导出设置！安装新版后可以运行【导入设置】\n");
    return true;
}

void dcsz() {
    CExportSettingDlg dialog;
    if (!dialog.show()) return;
    std::wstring folder;
    if (dialog.IsFolderChosenByUser()) {
        const std::optional<std::wstring> chosen = platform::chooseFolder(L"指定保存目录");
        if (!chosen) return;
        folder = endedFolder(*chosen);
    }
    exportSettings(dialog, folder);
}

}  // namespace qrs::dialogs
