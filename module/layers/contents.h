// What lies on layers: in model space and every layout, not in block definitions.
#pragma once

#include <string>

#include "dbid.h"

namespace qrs::layers {

// The objects on a layer, in drawing order. Names of layers are never taken as patterns.
AcDbObjectIdArray objectsOn(AcDbObjectId layer);

// Puts an object on another layer, and with it its attributes or vertices that lie where it lay; those on other layers
// keep theirs. False when it cannot be changed.
bool moveObject(AcDbObjectId object, AcDbObjectId layer);

// Puts everything on the one layer on the other.
void moveObjects(AcDbObjectId source, AcDbObjectId target);

// Layers of external references hold nothing of this drawing's: true, with a message, for the name of one.
bool refuseAsTarget(const std::wstring& layer);

}  // namespace qrs::layers
