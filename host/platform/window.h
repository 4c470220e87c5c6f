// Windows as far as the plug-in interface needs them: made, known, gone.
#pragma once

#include <string_view>

namespace qrs::platform {

// A handle of a new window with a title, or null. Without a screen a window is only its life.
void* createWindow(std::wstring_view title, void* parent);
// False for null and for a window that is gone. The windows it is parent of go with it.
bool destroyWindow(void* window);
bool isWindow(void* window);

}  // namespace qrs::platform
