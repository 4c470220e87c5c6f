// The groups of setting files and the folder they are exported to.
#include "dialogs/settingfiles.h"

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/tree.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "standard/text.h"

namespace qrs::dialogs {

using platform::translated;

const SettingGroupRow settingGroupRows[kSettingGroups] = {
    {L"初始设置", {L"CmdConfig.xml"}},
    {L"快捷命令 acad.pgp", {L"acad.pgp"}},
    {L"工具条设置", {L"qrsdata.dbf"}},
    {L"线型库", {L"linetype.dbf"}},
    {L"图层设置", {}},
    {L"管材库", {L"pipe.dbf"}},
    {L"用户图库", {L"VALVE_U.TK", L"VALVE_U.SLB", L"VALVE_U.DWB", L"EVALVE_U.TK", L"EVALVE_U.SLB", L"EVALVE_U.DWB"}},
};

namespace {

namespace fs = std::filesystem;

// Exactly this name: a folder spelled in another case belongs to something else where case counts.
fs::path nativeDefaultFolder() {
    return platform::nativePath(platform::temporaryFolder()) / "PwxSetting";
}

bool holdsWhatIsNeeded(const fs::path& folder, const std::vector<std::wstring>& sources, std::wstring& reason) {
    std::vector<std::wstring> needed;
    QrsExport::GetSearchPath(needed);
    needed.insert(needed.end(), sources.begin(), sources.end());
    if (!g_csSysPath.IsEmpty()) needed.emplace_back(g_csSysPath.GetString());
    for (const std::wstring& path : needed) {
        if (!platform::liesInFolder(platform::nativePath(path), folder)) continue;
        reason = translated(L"%1 lies in it, so it cannot be emptied", path);
        return true;
    }
    return false;
}

// The standard files of a folder by their names. No folder means none: it is not the current one.
std::vector<CString> standardsIn(const std::wstring& folder) {
    std::vector<CString> names;
    if (!folder.empty()) PipeSystemTool::GetPipeSystemStandardFiles(CString(folder.c_str()), names, false);
    return names;
}

std::wstring systemFolder() {
    return g_csSysPath.GetString();
}

}  // namespace

std::wstring endedFolder(std::wstring folder) {
    if (folder.empty() || folder.back() != L'\\') folder += L'\\';
    return folder;
}

std::wstring defaultSettingFolder() {
    return endedFolder(platform::innerPath(nativeDefaultFolder()));
}

FolderState defaultFolderState(std::wstring& reason) {
    switch (platform::kindOfName(nativeDefaultFolder())) {
        case platform::NameKind::Missing:
            return FolderState::Missing;
        case platform::NameKind::Folder:
            if (platform::isOwnFolder(nativeDefaultFolder())) return FolderState::Usable;
            reason = translated(L"it belongs to another user");
            return FolderState::Refused;
        case platform::NameKind::Link:
            reason = translated(L"it is a link");
            return FolderState::Refused;
        default:
            reason = translated(L"it is no folder");
            return FolderState::Refused;
    }
}

bool prepareDefaultFolder(const std::vector<std::wstring>& sources, std::wstring& reason) {
    const fs::path folder = nativeDefaultFolder();
    const FolderState state = defaultFolderState(reason);
    platform::Error error;
    if (state == FolderState::Missing) {
        if (platform::makePrivateFolder(folder, error)) return true;
        reason = platform::fromUtf8(error.message);
        return false;
    }
    if (state == FolderState::Refused || holdsWhatIsNeeded(folder, sources, reason)) return false;
    if (!platform::emptyFolder(folder, error))
        QrsExport::PrintRefusal(L"%s", translated(L"\nThe default settings folder could not be emptied: %1\n",
                                                  platform::fromUtf8(error.message))
                                           .c_str());
    return true;
}

void addExportCopies(SettingGroup group, const std::wstring& folder, std::vector<FileCopy>& copies) {
    for (const wchar_t* name : settingGroupRows[group].files) {
        std::wstring source;
        if (QrsExport::FindFile(name, source)) copies.push_back({source, folder + name});
    }
    if (group != kLayers) return;
    for (const CString& name : standardsIn(systemFolder()))
        copies.push_back({systemFolder() + name.GetString(), folder + name.GetString()});
}

namespace {

// An installed file may be a link to where it really lies; that is the place to write to then.
CopiedBack copyOver(const std::wstring& source, const std::wstring& target) {
    platform::Error error;
    if (platform::copyFileAtomically(platform::nativePath(source), platform::nativePath(target),
                                     platform::LinkedTarget::Follow, error))
        return CopiedBack::Done;
    // The command line is silent about it.
    QrsExport::FailWriting(
        translated(L"%1 was not imported: %2", platform::shownPath(source), platform::fromUtf8(error.message)));
    return CopiedBack::Failed;
}

}  // namespace

CopiedBack copyBack(const std::wstring& folder, const wchar_t* name) {
    std::wstring installed;
    if (!platform::fileExists(folder + name) || !QrsExport::FindFile(name, installed)) return CopiedBack::Nothing;
    return copyOver(folder + name, installed);
}

int copyStandardsBack(const std::wstring& folder) {
    int copied = 0;
    if (systemFolder().empty()) return copied;
    for (const CString& name : standardsIn(folder))
        if (copyOver(folder + name.GetString(), systemFolder() + name.GetString()) == CopiedBack::Done) ++copied;
    return copied;
}

}  // namespace qrs::dialogs
