// Windows of the system.
#include "host/platform/window.h"

#include <windows.h>

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

bool setWindowTitle(void* window, std::wstring_view title) {
    return SetWindowTextW(static_cast<HWND>(window), std::wstring(title).c_str()) != 0;
}

std::wstring windowTitle(void* window) {
    std::wstring title(static_cast<std::size_t>(GetWindowTextLengthW(static_cast<HWND>(window))) + 1, L'\0');
    title.resize(static_cast<std::size_t>(
        GetWindowTextW(static_cast<HWND>(window), title.data(), static_cast<int>(title.size()))));
    return title;
}

}  // namespace qrs::platform
