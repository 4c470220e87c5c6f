// Windows without a screen.
#include "host/platform/window.h"

#include <cstdint>
#include <map>

namespace qrs::platform {

namespace {

struct Window {
    void* parent = nullptr;
    bool isShown = false;
};

struct Windows {
    std::map<void*, Window> all;
    std::uintptr_t last = 0;  // handles are numbers, never given twice
};

Windows& windows() {
    static Windows known;
    return known;
}

}  // namespace

void* createWindow(const WindowLook&, void* parent) {
    if (parent && !isWindow(parent)) return nullptr;
    void* handle = reinterpret_cast<void*>(++windows().last);
    windows().all[handle].parent = parent;
    return handle;
}

bool destroyWindow(void* window) {
    std::map<void*, Window>& all = windows().all;
    if (all.erase(window) == 0) return false;
    for (auto child = all.begin(); child != all.end();) {
        void* const handle = child->first;
        const bool isChild = child->second.parent == window;
        ++child;
        if (!isChild) continue;
        destroyWindow(handle);
        child = all.upper_bound(handle);
    }
    return true;
}

bool isWindow(void* window) {
    return windows().all.count(window) != 0;
}

bool showWindow(void* window, int command) {
    const auto found = windows().all.find(window);
    if (found == windows().all.end()) return false;
    const bool wasShown = found->second.isShown;
    found->second.isShown = command != 0;
    return wasShown;
}

bool isWindowShown(void* window) {
    const auto found = windows().all.find(window);
    return found != windows().all.end() && found->second.isShown;
}

bool windowPlace(void* window, WindowPlace& place) {
    if (!isWindow(window)) return false;
    place = {};
    return true;
}

std::wstring plainWindowClass(unsigned, void*, void*, void*) {
    return L"qrs";
}

}  // namespace qrs::platform
