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
#include "dbcolor.h"
#include "dbid.h"
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

// --- Layers of the standard in the drawing
//
// They act on the working database. A layer that the drawing has already is taken as it is; a missing one is made with
// what its definition says. A layer definition is found by a pipe system's name (without regard to case) and a layer
// type, the systems of all groups in order; where no system answers, by the key of a layer and the name of its group of
// other layers, both exactly. A type a system lacks may be answered by the layer of a more general type.

// The name of the layer definition; create also makes its layer in the drawing. Empty when there is no definition, and
// without a standard.
QRS_PIPE_PORT CString GetLayerName(const CString& systemName, const CString& layerType, bool create);

// The layer of a layer definition, made when missing. *name (which may be null) becomes the definition's layer name,
// empty when there is none. The null id when there is no definition or the layer cannot be made.
QRS_PIPE_PORT AcDbObjectId InitLayer(const CString& systemName, const CString& layerType, CString* name = nullptr);

// The layer of that name. When the drawing lacks it, it is made from the first definition of that name (without regard
// to case): pipe systems first, then the groups of other layers. The null id when there is no definition either.
QRS_PIPE_PORT AcDbObjectId InitLayer(const CString& layerName);

// The layer of the first group of other layers that has the key (exactly compared), made when missing. *name (which may
// be null) becomes its layer name. The null id, *name untouched, when no group has the key.
QRS_PIPE_PORT AcDbObjectId InitIndependentLayer(const CString& layerKey, CString* name = nullptr);

// The name of that layer; create also makes the layer in the drawing. Empty when no group has the key.
QRS_PIPE_PORT CString GetIndependentLayerName(const CString& layerKey, bool create);

// The 46 keys that layers which belong to no pipe system are asked for by. The list is the same for every standard and
// needs none. out is replaced.
QRS_PIPE_PORT void GetIndependentLayerKey(std::vector<CString>& out);

// The colour of the drawing's layer of that name; where the drawing has none, that of the first definition of that name
// in the standard, pipe systems first. A default-constructed colour (by block) when there is none either.
QRS_PIPE_PORT AcCmColor GetLayerColor(const CString& layerName);

}  // namespace PipeSystemTool
