// Questions that other modules ask about the current pipe-system standard, and about materials and sizes of pipes.
//
//     CString system = PipeSystemTool::GetPipeSystemNameByLayer(L"给排-生活给水-管线");
//     if (system.IsEmpty()) return;   // no pipe system has such a layer, or there is no standard
//     CString material = PipeSystemTool::GetPipeMaterial(system, kIndoorMaterial);
//     double outer = PipeSystemTool::GetPipeOuterDn(material, 100);
//     AcDbObjectId layer = PipeSystemTool::InitLayer(system, L"立管");   // made when the drawing lacks it
//
// Names of pipe systems and groups, layer types and layer keys are exact, except where a function says otherwise. Layer
// names are compared without regard to case. Groups are searched in the standard's order, their systems in the group's,
// and the first hit answers. A layer type that a system lacks may be answered by its layer of a more general type: the
// pipe layer ("管线") also serves as the layer of bends ("扣弯"), unless there is one of its own.
//
// No function reports an error: each states its answer on a miss. Without a standard every question about it gets the
// answer of a miss, and lists are left as they are. Names are appended to lists; a name that the list holds already is
// not repeated. Paths are in the editor's form, with backslashes. All functions are for the main thread only.
#pragma once

#include <vector>

#include "adesk.h"
#include "afx.h"
#include "dbcolor.h"
#include "dbid.h"
#include "PipeNodes.h"
#include "pipeport.h"
#include "qrs_list.h"

class TDbPipe;
class TDbVerticalSection;
class TDbVerticalSectionFeed;
struct TEntitySet;
#include "TextStyleTool.h"

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

// --- What a pipe system says of itself

// Drawn width of its pipes, millimetres on paper. 0.35 when there is no such system.
QRS_PIPE_PORT double GetPipeLineWidth(const CString& systemName);

// Radii of the symbol of its vertical pipes, millimetres on paper: of a single circle, of the outer one and of the
// inner one. 0.5, 0.5 and 0.25 when there is no such system.
QRS_PIPE_PORT double GetVPipeRadius(const CString& systemName);
QRS_PIPE_PORT double GetVPipeRadius1(const CString& systemName);
QRS_PIPE_PORT double GetVPipeRadius2(const CString& systemName);

// Which symbol its vertical pipes have: 0 one circle, 1 two circles (see PipeNodes.h). 0 when there is no such system.
QRS_PIPE_PORT int GetVPipeType(const CString& systemName);

// Its material indoors for kIndoorMaterial (0), outdoors for every other value. Empty when there is no such system.
QRS_PIPE_PORT CString GetPipeMaterial(const CString& systemName, PipeMaterialEnum material);

// How water flows in it ("压力流"). Empty when there is no such system.
QRS_PIPE_PORT CString GetPipeWaterFlowStatus(const CString& systemName);

// Empty when there is no such system.
QRS_PIPE_PORT CString GetPipeRemark(const CString& systemName);

// A number that siblings keep for a system; the module gives it no meaning. 0 when there is no such system. A status
// that stands as -1 in the standard file is 4294967295 here.
QRS_PIPE_PORT Adesk::UInt32 GetPipeStatus(const CString& systemName);

// Gives the status to the system of that name in every group that has one, not in the first alone. Nothing happens when
// there is none. The standard file is not written.
QRS_PIPE_PORT void SetPipeStatus(const CString& systemName, Adesk::UInt32 status);

// Its label text, which may be in two parts with a separator between them ("/" in standards of the suite): the part
// before the first separator when leftPart is true, else the whole text without any separator. A text without the
// separator (an empty separator is in none) comes unchanged. Empty when there is no such system.
QRS_PIPE_PORT CString GetPipeDim(const CString& systemName, bool leftPart, const CString& separator);

// What follows the first separator in its label text. Empty when the text has none, and when there is no such system.
QRS_PIPE_PORT CString GetPipeDimB(const CString& systemName, const CString& separator);

// --- Layer definitions by pipe system and layer type
//
// A definition is found by a pipe system's name (here without regard to case) and a layer type; where no system
// answers, by the key of a layer and the name of its group of other layers. GetLayerName and InitLayer find it so too.

// The linetype, or the remark, of the layer definition. Empty when there is none.
QRS_PIPE_PORT CString GetLinetypeName(const CString& systemName, const CString& layerType);
QRS_PIPE_PORT CString GetLayerRemark(const CString& systemName, const CString& layerType);

// Whether GetLayerName(systemName, layerType, false) is that layer name; so an empty name is contained where there is
// no definition. False without a standard.
QRS_PIPE_PORT bool ContainLayer(const CString& layerName, const CString& systemName, const CString& layerType);

// Whether in some system of the group a layer of that name answers for the type. False when there is no such group.
QRS_PIPE_PORT bool SystemGroupContainLayer(const CString& groupName, const CString& layerName,
                                           const CString& layerType);

// --- Layer names in lists
//
// No list holds a name twice, in whatever case; names keep the order in which they were first met: groups in order,
// then groups of other layers. A text of several names has the separator between them, none before the first or after
// the last; it is empty when there is no name.

// The names of all layers of the type. Of the groups of other layers, the one named by the type gives all its layers.
// The list form is true whenever a standard is loaded, also when it found no name.
QRS_PIPE_PORT CString GetLayerNames(const CString& layerType, const CString& separator);
QRS_PIPE_PORT bool GetLayerNames(const CString& layerType, std::vector<CString>& out);

// The pipe layers of systems: of each, in the order given, its layers of the types "管线", "立管", "扣弯". Systems that
// do not exist give no name; neither does a null array or a count below 1.
QRS_PIPE_PORT CString GetPipeLayers(const CString& systemName, const CString& separator);
QRS_PIPE_PORT CString GetPipeLayers(const CString* systemNames, int count, const CString& separator);
QRS_PIPE_PORT void GetPipeLayers(const std::vector<CString>& systemNames, std::vector<CString>& out);

// The pipe layers of every system of the groups.
QRS_PIPE_PORT CString GetSystemGroupPipeLayers(const CString& groupName, const CString& separator);
QRS_PIPE_PORT CString GetSystemGroupPipeLayers(const CString* groupNames, int count, const CString& separator);
QRS_PIPE_PORT void GetSystemGroupPipeLayers(const std::vector<CString>& groupNames, std::vector<CString>& out);

// The layers of the type in every system of the group.
QRS_PIPE_PORT CString GetSystemGroupLayers(const CString& groupName, const CString& layerType,
                                           const CString& separator);
QRS_PIPE_PORT void GetSystemGroupLayers(const CString& groupName, const CString& layerType, std::vector<CString>& out);

// The layer types of a pipe system: "管线", "立管", "阀门", "文字", "标注", "设备", "电动阀", "喷头", "消火栓", "井".
// out is replaced; without a standard it is left as it is.
QRS_PIPE_PORT void GetSystemLayerType(std::vector<CString>& out);

// --- What a layer belongs to
//
// A layer is given by its name or by its id; an id that is no layer, or one that cannot be opened, gets the answer of a
// miss.

// The first pipe system that has a layer of that name. Empty when there is none.
QRS_PIPE_PORT CString GetPipeSystemNameByLayer(const CString& layerName);
QRS_PIPE_PORT CString GetPipeSystemNameByLayer(AcDbObjectId layer);

// The same for a layer that answers for the type: the system name that its definition records. Empty when there is
// none.
QRS_PIPE_PORT CString GetPipeSystemNameByLayer(const CString& layerName, const CString& layerType);
QRS_PIPE_PORT CString GetPipeSystemNameByLayer(AcDbObjectId layer, const CString& layerType);

// The same for a pipe layer: in each group the types "管线", "立管", "扣弯" are tried in this order.
QRS_PIPE_PORT CString GetPipeSystemNameByPipeLayer(const CString& layerName);
QRS_PIPE_PORT CString GetPipeSystemNameByPipeLayer(AcDbObjectId layer);

// The first group with a pipe system that has a layer of that name. Empty when there is none.
QRS_PIPE_PORT CString GetPipeSystemGroupName(const CString& layerName);

// The target layer of the first pipe system whose layer of vertical pipes ("立管") has the given name; create also
// makes it in the drawing. Empty when there is no such system, and when that one has no target layer: no further system
// is asked then.
QRS_PIPE_PORT CString GetLayerByVPipeLayer(const CString& vPipeLayerName, const CString& targetType, bool create);

// Searches by the pipe layer ("管线") and creates as GetLayerByVPipeLayer does, but always answers an empty text:
// callers use it to have the layer made, and they rely on the empty answer.
QRS_PIPE_PORT CString GetLayerByPipeLayer(const CString& pipeLayerName, const CString& targetType, bool create);

// Writes what kind of pipe layer it is into *kind (which may be null): 0 "管线", 1 "立管", 2 "扣弯". *kind is left as
// it is when the layer is no pipe layer. The result is false in every case: callers look at the kind.
QRS_PIPE_PORT bool IsPipeLayer(const CString& layerName, int* kind);

// Adds the layers that take part in the attachment ("管道", "附件", "设备" or "注释" in the shipped standard), those of
// pipe systems first.
QRS_PIPE_PORT void GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info);

// --- Groups and their systems

// A summary of every group. out is replaced; without a standard it is left as it is. With includeAliases the layer
// names of a system are also given for the types that borrow a layer.
QRS_PIPE_PORT void GetPipeSystems(std::vector<PipeClassificationNode>& out, bool includeAliases);

// The summary, borrowed layers included, of the first group of that name (here without regard to case). False, info
// untouched, when there is none.
QRS_PIPE_PORT bool GetPipeSystemGroup(const CString& groupName, PipeClassificationNode& info);

// Appends the names of the group's systems. Whether out holds any name then, which may be one it held before; false
// without a standard.
QRS_PIPE_PORT bool GetPipeSystemsBySystemGroup(const CString& groupName, std::vector<CString>& out);

// The same for the first group that has the system.
QRS_PIPE_PORT bool GetPipeSystemNamesOfGroupByPipeSystemName(const CString& systemName, std::vector<CString>& out);

// Whether the group has the system.
QRS_PIPE_PORT bool IsGroupIncludedSystem(const CString& groupName, const CString& systemName);

// --- Materials and sizes of pipes
//
// Sizes come from pipe.dbf, prefixes from DataStore.dbf, looked for in the system folder, then along the support search
// path. Each table is read when first asked for and kept as long as the module is loaded: files that change meanwhile
// are not read again. A table that is missing leaves every question with the answer of a miss. No standard is needed,
// except by GetPipeMaterialIndex. Material names are exact, except in GetMaterialIndex. Diameters are in millimetres; a
// size is found by a DN that differs by less than 0.001, the first one in the table's order. A 0 that stands in the
// table is an answer like any other.

// Position of the material in the order of first appearance in pipe.dbf, from 0. -1 when it is not there, and for the
// empty name.
QRS_PIPE_PORT int GetIndexOfPIpeMaterial(const CString& material);

// The material at that position; empty when there is none.
QRS_PIPE_PORT CString GetPipeMaterialByIndex(int index);

// GetIndexOfPIpeMaterial of the system's material. -1 when there is no such system, and without a standard.
QRS_PIPE_PORT int GetPipeMaterialIndex(const CString& systemName, PipeMaterialEnum material);

// Position of the material in a list (without a list: in GetPipeMaterialList of qrs_public.h, which is that of
// pipe.dbf while the module is loaded), without regard to case, from 0. An unknown material is answered by 0 too:
// dialogs show the first one for it.
QRS_PIPE_PORT int GetMaterialIndex(const CString& material);
QRS_PIPE_PORT int GetMaterialIndex(const TWCStringList& materials, const CString& material);

// Appends every DN of the material in the table's order, cut to whole millimetres; none is left out, also when the list
// holds it already. Whether the list holds any then.
QRS_PIPE_PORT bool GetPipeDnByMaterial(const CString& material, TDPtrList<int>& out);

// Outer and inner diameter of the size. The DN itself when there is no such size.
QRS_PIPE_PORT double GetPipeOuterDn(const CString& material, double dn);
QRS_PIPE_PORT double GetPipeInnerDn(const CString& material, double dn);

// Outer less inner diameter of the size, so twice the thickness of its wall: not halved on purpose, as callers reckon
// with the difference. 0.0 when there is no such size.
QRS_PIPE_PORT double GetPipeThick(const CString& material, double dn);

// The prefix that diameters of the material are written with; by index, of the material at that position. Empty when
// there is none. The DN of a size is the number that follows it: "DN100", "dn110" (outer diameter), "Dw22" and "D108"
// (outer diameter in whole millimetres), "d300" (inner diameter). After "D" the wall is written, too: D108×4, with half
// of GetPipeThick.
QRS_PIPE_PORT CString GetPrefixOfPipeMaterial(const CString& material);
QRS_PIPE_PORT CString GetPrefixOfPipeMaterial(int index);

// --- The settings dialog

// Shows the systems and layers of the current standard. editable lets the user change them; OK then writes the standard
// file and makes the changes the current standard, Cancel leaves both. updatesDrawing also gives the drawing's layers
// of the standard, as far as they exist, the colours, lineweights, plot flags and linetypes set there. page is the page
// shown first; there is one, so it is only kept for callers. True when closed with OK; false when cancelled, and, after
// a message, without a standard.
QRS_PIPE_PORT bool ShowPipeSettingDlg(int page, bool editable, bool updatesDrawing);

// --- Layers of the standard in the drawing
//
// They act on the working database. A layer that the drawing has already is taken as it is; a missing one is made with
// what its definition says.

// The name of the layer definition; create also makes its layer in the drawing. Empty when there is no definition, and
// without a standard.
QRS_PIPE_PORT CString GetLayerName(const CString& systemName, const CString& layerType, bool create);

// The layer of a layer definition, made when missing. *name (which may be null) becomes the definition's layer name,
// empty when there is none. The null id when there is no definition or the layer cannot be made.
QRS_PIPE_PORT AcDbObjectId InitLayer(const CString& systemName, const CString& layerType, CString* name = nullptr);

// Every layer definition of the standard: those of pipe systems, then those of the groups of other layers, each in the
// standard's order. A name that several definitions have is met several times; the first one counts. out is replaced.
// False, out untouched, without a standard.
QRS_PIPE_PORT bool GetAllLayerInfo(std::vector<LayerNode>& out);

// Gives the drawing's layer of that name what its first definition says: colour, lineweight, plot flag and linetype,
// which is loaded when the drawing lacks it. What no layer can have ("by layer") and a linetype that cannot be loaded
// leave the layer's own. None is made. True whenever the drawing has the layer and the standard a definition of it.
QRS_PIPE_PORT bool UpdateLayer(const CString& layerName);

// The layer of that name. When the drawing lacks it, it is made from the first definition of that name (without regard
// to case): pipe systems first, then the groups of other layers. The null id when there is no definition either.
QRS_PIPE_PORT AcDbObjectId InitLayer(const CString& layerName);

// The linetype of a layer definition, loaded by PwxTool::LoadQdLineType when the drawing lacks it. The null id when
// there is no definition or the linetype cannot be loaded. Callers are linked against this spelling of the name.
QRS_PIPE_PORT AcDbObjectId InitLinetyle(const CString& systemName, const CString& layerType);

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

// --- Pipes and vertical sections of a drawing
//
// By pointer, by id or by entity name (a TEntitySet, whose header is qrs_select.h); what is no such object, or cannot
// be opened, gets the answer of a miss and is left as it is.

// The current name of the pipe's system: of the name it bears, which may be an old one; where it bears none, of its
// system's type code. "未知系统" on a miss.
QRS_PIPE_PORT CString GetPipeSystemName(const TDbPipe* pipe);
QRS_PIPE_PORT CString GetPipeSystemName(AcDbObjectId pipe);
QRS_PIPE_PORT CString GetPipeSystemName(const TEntitySet& pipe);

// Gives the pipe the system's name and its type code. The pipe keeps its layers. False on a miss.
QRS_PIPE_PORT void SetPipeSystemName(TDbPipe* pipe, const CString& systemName);
QRS_PIPE_PORT bool SetPipeSystemName(AcDbObjectId pipe, const CString& systemName);

// Puts the pipe on the system's layer of vertical pipes when it is one, else on its pipe layer, and gives it the
// system's layers of diameter texts and flow arrows; they are made as InitLayer makes them. A pipe is vertical when it
// is a straight line whose ends lie less than 0.1 drawing units apart in X and in Y. Without a definition of a layer
// the pipe stays on its own, and has none for its texts or arrows. A pipe that is not open for writing is left as it
// is.
QRS_PIPE_PORT void SetPipeLayer(TDbPipe* pipe, const CString& systemName);
QRS_PIPE_PORT void SetPipeLayer(AcDbObjectId pipe, const CString& systemName);

// Whether a vertical section shows the pipes of the system that cross it: the flag kept under the system's name, where
// there is one, else the flag kept under its type code; a flag that was never set is false.
QRS_PIPE_PORT bool IsShowCrossPipe(const TDbVerticalSection* section, const CString& systemName);
QRS_PIPE_PORT bool IsShowCrossPipe(const TDbVerticalSectionFeed* section, const CString& systemName);
QRS_PIPE_PORT bool IsShowCrossPipe(AcDbObjectId section, const CString& systemName);

// Sets both flags.
QRS_PIPE_PORT void SetShowCrossPipe(TDbVerticalSection* section, const CString& systemName, bool shown);
QRS_PIPE_PORT void SetShowCrossPipe(TDbVerticalSectionFeed* section, const CString& systemName, bool shown);
QRS_PIPE_PORT void SetShowCrossPipe(AcDbObjectId section, const CString& systemName, bool shown);

}  // namespace PipeSystemTool
