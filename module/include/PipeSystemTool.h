// Questions that other modules ask about the current pipe-system standard.
//
//     if (PipeSystemTool::GetCurrentStandardName().IsEmpty()) return;   // no standard
//     std::vector<CString> files;
//     PipeSystemTool::GetPipeSystemStandardFiles(g_csSysPath, files, false);   // "pwx.qdsl", ...
//     CString current = PipeSystemTool::OriginSystemNameToCurrentName(L"给水");
//
// Paths are in the editor's form, with backslashes. No function reports an error: each states its answer on a miss.
// All of them are for the main thread only.
#pragma once

#include <vector>

#include "adesk.h"
#include "afxstr.h"
#include "pipeport.h"

// Settings held with the standard; CmdConfig.xml gives their values at start.
extern QRS_PIPE_PORT Adesk::Int32 g_bLayerAutoGrouping;  // not 0: layers are grouped automatically
extern QRS_PIPE_PORT Adesk::Int32 g_bResetFlangeSpace;   // not 0: flange gaps are reset
extern QRS_PIPE_PORT Adesk::Int32 g_nFlangeStyle;        // how flanges are drawn

namespace PipeSystemTool {

// The current standard file's name without folder and extension: what lies between the last backslash of its path and
// the first "." after it ("C:\sys\a.b.qdsl" gives "a"). Empty when there is no standard, when the path has no backslash
// or when the name has no ".".
QRS_PIPE_PORT CString GetCurrentStandardName();

// Whether the file is a standard file: well-formed XML whose root says in its Comment that it is one. False for a file
// that cannot be read.
QRS_PIPE_PORT bool IsPipeSystemStandardFile(const CString& path);

// Appends the standard files ("*.qdsl") of a folder in the order in which the file system lists them: full paths when
// fullPath is true, else bare names. Folders are not listed. The folder may end in a backslash or not. A folder without
// standard files, or one that cannot be read, leaves out as it is.
QRS_PIPE_PORT void GetPipeSystemStandardFiles(const CString& folder, std::vector<CString>& out, bool fullPath);

// Whether some group of the current standard has a system of exactly that name. False without a standard.
QRS_PIPE_PORT bool IsPipeSystemOfCurrentStandard(const CString& systemName);

// The older name of the first system of that name, in group order. Empty when there is none, when it has no older name,
// and without a standard.
QRS_PIPE_PORT CString CurrentSystemNameToOriginName(const CString& name);

// The current name of the first system whose older name is exactly oldName, in group order. Empty when there is none
// and without a standard.
QRS_PIPE_PORT CString OriginSystemNameToCurrentName(const CString& oldName);

}  // namespace PipeSystemTool
