// Windows without a screen.
#include "host/platform/window.h"

#include <cstdint>
#include <map>

namespace qrs::platform {

namespace {

struct Window {
    std::wstring title;
    void* parent;
};

struct Windows {
    std::map<void*, Window> known;
    std::uintptr_t last = 0;  // handles are numbers, never given twice
};

Windows& windows() {
    static Windows all;
    return all;
}

}  // namespace

void* createWindow(std::wstring_view title, void* parent) {
    if (parent && !isWindow(parent)) return nullptr;
    void* handle = reinterpret_cast<void*>(++windows().last);
    windows().known.emplace(handle, Window{std::wstring(title), parent});
    return handle;
}

bool destroyWindow(void* window) {
    if (windows().known.erase(window) == 0) return false;
    for (auto child = windows().known.begin(); child != windows().known.end();) {
        void* const handle = child->first;
        const bool isChild = child->second.parent == window;
        ++child;
        if (!isChild) continue;
        destroyWindow(handle);
        child = windows().known.upper_bound(handle);
    }
    return true;
}

bool isWindow(void* window) {
    return windows().known.count(window) != 0;
}

bool setWindowTitle(void* window, std::wstring_view title) {
    const auto found = windows().known.find(window);
    if (found == windows().known.end()) return false;
    found->second.title = title;
    return true;
}

std::wstring windowTitle(void* window) {
    const auto found = windows().known.find(window);
    return found == windows().known.end() ? std::wstring() : found->second.title;
}

}  // namespace qrs::platform
