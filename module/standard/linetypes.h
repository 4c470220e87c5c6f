// Linetypes in the drawing.
#pragma once

#include "afxstr.h"
#include "dbid.h"

namespace qrs::standard {

// The working database's linetype for a layer: the one of that name, loaded when missing, or "Continuous" where neither
// the drawing nor linetype.dbf has it and for "ByLayer" and "ByBlock", which a layer cannot have. "Continuous" is made
// when the drawing lacks it. The null id only without a working database.
AcDbObjectId layerLinetype(const CString& name);

}  // namespace qrs::standard
