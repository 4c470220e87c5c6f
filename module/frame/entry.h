// The module's place in the process.
#pragma once

#include "afxtypes.h"

namespace qrs::frame {

// The handle of the module's library, whose resources its dialogs use; null before the library entry ran.
HINSTANCE moduleInstance();

}  // namespace qrs::frame
