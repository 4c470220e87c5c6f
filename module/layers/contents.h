// What lies on layers: in model space and every layout, not in block definitions.
#pragma once

#include <string>
#include <vector>

#include "dbid.h"

namespace qrs::layers {

// The objects on the layers of those names, in drawing order, found in one pass. The drawing need not define the
// layers; their names are never taken as patterns.
AcDbObjectIdArray objectsOn(const std::vector<std::wstring>& layers);

// Puts an object on another layer, and with it its attributes or vertices that lie where it lay; those on other layers
// keep theirs. False when it cannot be changed.
bool moveObject(AcDbObjectId object, AcDbObjectId layer);

// Puts everything on the one layer on the other.
void moveObjects(AcDbObjectId source, AcDbObjectId target);

// Layers of external references hold nothing of this drawing's: true, with a message, for the name of one.
bool refuseAsTarget(const std::wstring& layer);

}  // namespace qrs::layers
