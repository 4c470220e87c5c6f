// The files that settings are exported to and imported from: groups of them, the folder they lie in, copying.
#pragma once

#include <string>
#include <vector>

namespace qrs::dialogs {

// In the order of the export dialog.
enum SettingGroup { kInitial, kShortcuts, kToolBars, kLinetypes, kLayers, kPipes, kUserLibrary, kSettingGroups };

struct SettingGroupRow {
    const wchar_t* caption;
    std::vector<const wchar_t*> files;  // each found by the kernel library's file finder
};
extern const SettingGroupRow settingGroupRows[kSettingGroups];

// Beside its files, the first group has the options' file, the group of layers every standard file.
constexpr const wchar_t* kOptionsFile = L"setting.ini";

// PwxSetting in the user's temporary folder, inner form, ending in a backslash.
std::wstring defaultSettingFolder();

// The folder with a backslash at its end.
std::wstring endedFolder(std::wstring folder);

// Whether the default folder can be taken: Missing when there is none yet; Refused, with the reason, when the name is a
// link or a file or another user's folder, so that nothing is deleted, written or believed through it.
enum class FolderState { Usable, Missing, Refused };
FolderState defaultFolderState(std::wstring& reason);

// Makes the default folder, or deletes what is in it. False, with the reason, when it cannot be used, and when the
// system folder, a folder of the support search path or one of the sources lies inside: they are never deleted. That
// something in it could not be deleted is told on the command line and is no reason not to use it.
bool prepareDefaultFolder(const std::vector<std::wstring>& sources, std::wstring& reason);

struct FileCopy {
    std::wstring source;  // inner paths
    std::wstring target;
};

// The installed files of a group, each with its place in the folder. What the finder does not locate is left out.
void addExportCopies(SettingGroup group, const std::wstring& folder, std::vector<FileCopy>& copies);

// Copies a file over the installed one; nothing where one of them is missing. A failure is told as an error.
enum class CopiedBack { Nothing, Done, Failed };
CopiedBack copyBack(const std::wstring& folder, const wchar_t* name);

// Copies every standard file of the folder into the system folder; the number of those that were. Failures are told.
int copyStandardsBack(const std::wstring& folder);

// The options' file: brings an existing one up to date, or takes its values over as the user's options. An option that
// the file does not have, or whose value makes no sense, stays as it is; the latter, and a file that cannot be read or
// written, is told on the command line. A missing file is none to read.
void writeOptions(const std::wstring& folder);
void readOptions(const std::wstring& folder);

}  // namespace qrs::dialogs
