// Linetypes in the drawing.
#pragma once

#include "afx.h"
#include "dbid.h"

namespace qrs::standard {

// The working database's linetype for a layer: the one of that name, loaded when missing, or "Continuous" where neither
// the drawing nor linetype.dbf has it and for "ByLayer" and "ByBlock", which a layer cannot have. "Continuous" is made
// when the drawing lacks it. The null id only without a working database.
AcDbObjectId layerLinetype(const CString& name);

// How long a text of a linetype is, in drawing units, written one unit high in a style as wide as high: estimated, as
// shape fonts cannot be measured here.
double linetypeTextWidth(const CString& text);

}  // namespace qrs::standard
