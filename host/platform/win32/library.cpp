// Shared libraries on Windows.
#include "host/platform/library.h"

#include "host/platform/inside/fileerror.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

class WindowsLibrary : public Library {
  public:
    explicit WindowsLibrary(HMODULE module) : module_(module) {}
    ~WindowsLibrary() override { FreeLibrary(module_); }
    void* symbol(const char* name) const override { return reinterpret_cast<void*>(GetProcAddress(module_, name)); }

  private:
    HMODULE module_;
};

}  // namespace

// The system asks the entry itself and fails the load when it answers 0.
void refuseLibraryLoad() {}

std::unique_ptr<Library> Library::load(const fs::path& native, Error& error) {
    std::error_code failure;
    const fs::path path = fs::absolute(native, failure);
    const HMODULE module = failure ? nullptr : LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module) return std::make_unique<WindowsLibrary>(module);
    fail(error, native, failure ? failure : lastError());
    return nullptr;
}

}  // namespace qrs::platform
