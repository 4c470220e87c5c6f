// Windows as far as the plug-in interface needs them: made, shown, hidden, gone; and whose windows come on top of them.
#pragma once

#include <string>

#include "host/platform/port.h"

namespace qrs::platform {

// Dots of the screen.
struct WindowPlace {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// How a window looks on a screen, in the system's own numbers.
struct WindowLook {
    std::wstring windowClass;  // empty: a plain one
    std::wstring title;
    unsigned long style = 0;
    unsigned long extendedStyle = 0;
    WindowPlace place;
    unsigned number = 0;  // of a window inside its parent
};

// A handle of a new window, or null. Without a screen a window is only its life, and whether it would be seen.
void* createWindow(const WindowLook& look, void* parent);
// False for null and for a window that is gone. The windows it is parent of go with it.
QRS_HOST_PORT bool destroyWindow(void* window);
bool isWindow(void* window);
// command: the system's number for how (0 hides). Whether it was to be seen before.
bool showWindow(void* window, int command);
QRS_HOST_PORT bool isWindowShown(void* window);
// Where it lies; false when there is no such window.
bool windowPlace(void* window, WindowPlace& place);

// The name of a window class that answers as a plain window does; empty when the system refuses it. background: a brush
// of the system, or one of its colours' numbers and 1.
std::wstring plainWindowClass(unsigned style, void* cursor, void* background, void* icon);

// Dialogs and message boxes of the platform are shown over this window from now on, as the editor's frame; null: over
// whatever window is active.
QRS_HOST_PORT void setWindowOwner(void* window);
QRS_HOST_PORT void* windowOwner();

}  // namespace qrs::platform
