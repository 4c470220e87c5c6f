// PwxTool: helpers for drawing objects that the module offers to its siblings.
//
//     AcDbObjectIdArray layers;
//     PwxTool::GetAllLayerIds(acdbHostApplicationServices()->workingDatabase(), layers);
//     AcDbObjectId dashed = PwxTool::LoadQdLineType(L"DASHED");   // null when nobody knows it
#pragma once

#include <vector>

#include "afxstr.h"
#include "dbid.h"
#include "pipeport.h"

class AcDbDatabase;

// What a list of linetypes shows of one.
struct QRS_PIPE_PORT LinetypeNode {
    CString Name;
    CString Comment;
};

namespace PwxTool {

// Every layer of the drawing, in the order of its layer table. out is replaced; a null database, or one whose layer
// table cannot be opened, leaves it empty.
QRS_PIPE_PORT void GetAllLayerIds(AcDbDatabase* database, AcDbObjectIdArray& out);

// --- Linetypes
//
// linetype.dbf is looked for in the system folder, then along the support search path, and read anew by every call that
// needs it. Names are compared without regard to case; of several rows of one name the first one counts. Rows bearing
// the deletion mark count like others.

// The working database's linetype of that name. One that the drawing has already stays as it is; a missing one is made
// as linetype.dbf describes it, with the name as the table spells it.
//
// A text of the pattern stands centred in its gap and along the line. It is as high as the setting LineTypeHeight says
// (drawing units at linetype scale 1) and written in the text style "文字线形", which is made when the drawing lacks it
// from the settings LineTypeEngShx and LineTypeChnShx (font files) and LineTypeScale (width divided by height).
// Drawings of R12 have no texts in linetypes, nor have those whose text styles lack handles: there the gap stays empty.
//
// The null id when there is no working database, when neither the drawing nor the table knows the name, when the table
// is missing, or when its row is damaged (no pattern, or one that Num and Length do not describe); of the last two a
// message tells. The drawing is then as it was.
QRS_PIPE_PORT AcDbObjectId LoadQdLineType(const CString& name);

// The linetypes of linetype.dbf in the table's order, whether or not the drawing has them, none twice. out is replaced.
// False, out empty, when the table is missing.
QRS_PIPE_PORT bool GetAllLinetype(std::vector<LinetypeNode>& out);

}  // namespace PwxTool
