// The pipe-system standard of a run: which file is chosen, and which one the module has loaded.
//
//     std::wstring file = QrsExport::ChosenStandardFile();   // "\\srv\\std\\office.qdsl"
//
// The choice is the value StandardFile of the key PipeSystemSetting. Whoever loads the standard tells what it loaded,
// so that programs which know nothing of the module can name it.
#pragma once

#include <string>

#include "host/platform/port.h"

namespace QrsExport {

// The choice as a path in the inner form: a bare name lies in the system folder; a person may have written slashes in
// the settings. Empty when there is no choice. Whether anything is there is not looked at.
QRS_HOST_PORT std::wstring ChosenStandardFile();
// The file that serves without a choice: pwx.qdsl of the system folder.
QRS_HOST_PORT std::wstring DefaultStandardFile();
// The file a start takes: the choice, where a file is or may be (a place that cannot be looked at counts as one, so
// that no choice is lost with a network drive), else the default file, whether it is there or not.
QRS_HOST_PORT std::wstring StandardFileToLoad();
// Whether nothing is at the path; false, too, where that cannot be looked at.
QRS_HOST_PORT bool IsStandardFileMissing(const std::wstring& path);
// Makes the file the choice. False when the settings cannot be written.
QRS_HOST_PORT bool ChooseStandardFile(const std::wstring& file);
// The default file serves in this run, whatever was chosen, and choices are forgotten with its end.
QRS_HOST_PORT void UseDefaultStandardFile();

struct TStandardInUse {
    std::wstring file;       // empty: there is no standard
    bool isBuiltIn = false;  // no file was there; file is the place where the default one would be
};
QRS_HOST_PORT void SetStandardInUse(const TStandardInUse& standard);
QRS_HOST_PORT const TStandardInUse& GetStandardInUse();

}  // namespace QrsExport
