// Dialogs as windows of the system.
#pragma once

#include "host/platform/dialog.h"

namespace qrs::platform {

// Shows dialogs as windows, over whatever window is active; null where the system has none.
DialogPresenter* windowPresenter();

// What Esc presses among these buttons: Cancel or, where there is none, No, or OK.
int escapeOf(MessageButtons buttons);

}  // namespace qrs::platform
