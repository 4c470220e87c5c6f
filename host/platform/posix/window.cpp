// Windows without a screen.
#include "host/platform/window.h"

#include <cstdint>
#include <map>

namespace qrs::platform {

namespace {

struct Windows {
    std::map<void*, void*> parents;  // of every window there is
    std::uintptr_t last = 0;         // handles are numbers, never given twice
};

Windows& windows() {
    static Windows all;
    return all;
}

}  // namespace

void* createWindow(std::wstring_view, void* parent) {
    if (parent && !isWindow(parent)) return nullptr;
    void* handle = reinterpret_cast<void*>(++windows().last);
    windows().parents.emplace(handle, parent);
    return handle;
}

bool destroyWindow(void* window) {
    if (windows().parents.erase(window) == 0) return false;
    for (auto child = windows().parents.begin(); child != windows().parents.end();) {
        void* const handle = child->first;
        const bool isChild = child->second == window;
        ++child;
        if (!isChild) continue;
        destroyWindow(handle);
        child = windows().parents.upper_bound(handle);
    }
    return true;
}

bool isWindow(void* window) {
    return windows().parents.count(window) != 0;
}

}  // namespace qrs::platform
