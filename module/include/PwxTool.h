// PwxTool: helpers for drawing objects that the module offers to its siblings.
//
//     AcDbObjectIdArray layers;
//     PwxTool::GetAllLayerIds(acdbHostApplicationServices()->workingDatabase(), layers);
#pragma once

#include "dbid.h"
#include "pipeport.h"

class AcDbDatabase;

namespace PwxTool {

// Every layer of the drawing, in the order of its layer table. out is replaced; a null database, or one whose layer
// table cannot be opened, leaves it empty.
QRS_PIPE_PORT void GetAllLayerIds(AcDbDatabase* database, AcDbObjectIdArray& out);

}  // namespace PwxTool
