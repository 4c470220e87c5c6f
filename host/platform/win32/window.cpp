// Windows of the system.
#include "host/platform/window.h"

#include <windows.h>

#include <string>

namespace qrs::platform {

void* createWindow(std::wstring_view title, void* parent) {
    const std::wstring text(title);
    return CreateWindowExW(0, L"STATIC", text.c_str(), parent ? WS_POPUP : WS_OVERLAPPED, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, static_cast<HWND>(parent), nullptr, GetModuleHandleW(nullptr),
                           nullptr);
}

bool destroyWindow(void* window) {
    return DestroyWindow(static_cast<HWND>(window)) != 0;
}

bool isWindow(void* window) {
    return IsWindow(static_cast<HWND>(window)) != 0;
}

}  // namespace qrs::platform
