// The layer states a drawing keeps: -LAYER's option "State".
#pragma once

#include "dbmain.h"

namespace qrs::host::commands {

// Asks what to do with them, and does it. False when the user cancelled.
bool changeLayerStates(AcDbDatabase* database);

}  // namespace qrs::host::commands
