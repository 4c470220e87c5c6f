// Stand-in for the suite's closed kernel library: start of the library, system folder, files, symbol-table look-ups.
//
//     InitAol(L"_QRS");
//     QrsExport::InitGeLib(true);
//     std::wstring path;
//     if (QrsExport::FindFile(L"CmdConfig.xml", path)) readConfig(path);
//
// Paths are in the inner form (backslashes) on every system.
#pragma once

#include <string>

#include "afx.h"
#include "dbid.h"
#include "host/platform/port.h"
#include "qrs_list.h"
#include "qrs_reg.h"
#include "qrs_select.h"
#include "qrs_style.h"

class AcDbDatabase;

// The suite's system folder, ending in a backslash; empty while it is not known. InitAol takes it from the running
// application; a program without one calls QrsExport::SetSystemFolder.
extern QRS_HOST_PORT CString g_csSysPath;

// Registers the suite's application prefix for automation. There is none here, so the prefix is only remembered; the
// system folder of the running application becomes g_csSysPath.
QRS_HOST_PORT void InitAol(const wchar_t* prefix);

namespace QrsExport {

// Initialises the suite's geometry library. The open host's geometry needs no initialising.
QRS_HOST_PORT void InitGeLib(bool initialise);

// Makes the folder the system folder: g_csSysPath with a backslash at its end (an empty folder stays empty).
QRS_HOST_PORT void SetSystemFolder(const std::wstring& folder);

// Looks for a file by its bare name in the system folder, then in the folders of the support search path, in order.
// True with the full path; false, path untouched, when there is no such file.
QRS_HOST_PORT bool FindFile(const std::wstring& name, std::wstring& path);

// The folders of the support search path, in order, each ending in a backslash. out is replaced.
QRS_HOST_PORT void GetSearchPath(TWCStringList& out);

// The layer of that name (compared without regard to case) in the working database; the null id when there is none.
QRS_HOST_PORT AcDbObjectId GetLayerIdFromString(const std::wstring& name);

// Sends text to the command line of the current document without waiting for it, as if it were typed: "zoom e ".
// False when no document is open.
QRS_HOST_PORT bool PostCommand(const std::wstring& text);

// Prints as acutPrintf does, a text that tells what the running command did not do. Where a script runs, the text also
// stands in the log of errors, and a run that is to be strict has failed.
QRS_HOST_PORT void PrintRefusal(const wchar_t* format, ...);

// The same without printing it: it goes where errors go, and the command line stays as it is.
QRS_HOST_PORT void TellRefusal(const std::wstring& message);

// The running command, or without one the program's run, has failed; the message goes where errors go.
QRS_HOST_PORT void FailCommand(const std::wstring& message);

// The same for a command that could not read a file. A run in which nothing else fails ends with the exit code of files
// that cannot be read.
QRS_HOST_PORT void FailReading(const std::wstring& message);
// The same for one that could not write a file.
QRS_HOST_PORT void FailWriting(const std::wstring& message);

}  // namespace QrsExport
