// One dialog as a window of the system.
#pragma once

#include <windows.h>

#include "host/platform/dialog.h"

namespace qrs::platform {

// Modal over the owner, which may be null.
int showDialogWindow(Dialog& dialog, HWND owner);

}  // namespace qrs::platform
