// One dialog as a window of the system, or inside one.
#pragma once

#include <windows.h>

#include <memory>

#include "host/platform/dialog.h"

namespace qrs::platform {

// Modal over dialogOwner().
int showDialogWindow(Dialog& dialog);

// What comes next is shown over this window: the dialog that is open, or else windowOwner() or what is active.
HWND dialogOwner();

// Null when the system does not make it.
std::unique_ptr<Pane> makePane(Dialog& dialog, HWND window);

}  // namespace qrs::platform
