// Windows of the system.
#include "host/platform/window.h"

#include <windows.h>

#include <cstdio>

namespace qrs::platform {

void* createWindow(const WindowLook& look, void* parent) {
    const std::wstring windowClass =
        look.windowClass.empty() ? plainWindowClass(0, nullptr, nullptr, nullptr) : look.windowClass;
    return CreateWindowExW(look.extendedStyle, windowClass.c_str(), look.title.c_str(), look.style, look.place.left,
                           look.place.top, look.place.right - look.place.left, look.place.bottom - look.place.top,
                           static_cast<HWND>(parent), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(look.number)),
                           GetModuleHandleW(nullptr), nullptr);
}

bool destroyWindow(void* window) {
    return DestroyWindow(static_cast<HWND>(window)) != 0;
}

bool isWindow(void* window) {
    return IsWindow(static_cast<HWND>(window)) != 0;
}

bool showWindow(void* window, int command) {
    return ShowWindow(static_cast<HWND>(window), command) != 0;
}

bool isWindowShown(void* window) {
    return IsWindowVisible(static_cast<HWND>(window)) != 0;
}

bool windowPlace(void* window, WindowPlace& place) {
    RECT there;
    if (!GetWindowRect(static_cast<HWND>(window), &there)) return false;
    place = {static_cast<int>(there.left), static_cast<int>(there.top), static_cast<int>(there.right),
             static_cast<int>(there.bottom)};
    return true;
}

// Named after what it is made of, so that each is registered once.
std::wstring plainWindowClass(unsigned style, void* cursor, void* background, void* icon) {
    wchar_t name[100];
    std::swprintf(name, 100, L"qrs:%x:%p:%p:%p", style, cursor, background, icon);
    WNDCLASSW plain{};
    plain.style = style;
    plain.lpfnWndProc = DefWindowProcW;
    plain.hInstance = GetModuleHandleW(nullptr);
    plain.hIcon = static_cast<HICON>(icon);
    plain.hCursor = static_cast<HCURSOR>(cursor);
    plain.hbrBackground = static_cast<HBRUSH>(background);
    plain.lpszClassName = name;
    const bool isThere = RegisterClassW(&plain) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return isThere ? name : L"";
}

}  // namespace qrs::platform
