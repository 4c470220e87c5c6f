// Exporting settings: the dialog of the command dcsz and what its OK does.
#pragma once

#include <string>

#include "dialogs/settingfiles.h"
#include "host/platform/dialog.h"

// One check box per group of settings, all checked at first, and one for choosing the folder.
class CExportSettingDlg {
  public:
    CExportSettingDlg();
    // True when it was closed with OK.
    bool show();

    bool IsGroupChecked(qrs::dialogs::SettingGroup group) const { return groups_[group]->checked; }
    bool IsFolderChosenByUser() const { return chooseFolder_->checked; }

  private:
    qrs::platform::Dialog dialog_;
    qrs::platform::Control* groups_[qrs::dialogs::kSettingGroups];
    qrs::platform::Control* chooseFolder_;
};

namespace qrs::dialogs {

// Exports what the dialog says: to a folder that is only added to (ending in a backslash), or, when it is empty, to the
// default one, which is emptied first. False, with a message on the command line and nothing done, when the default
// folder cannot be used.
bool exportSettings(const CExportSettingDlg& choice, const std::wstring& chosenFolder);

// The command dcsz.
void dcsz();

}  // namespace qrs::dialogs
