// Shared libraries on POSIX systems.
#include "host/platform/library.h"

#include <dlfcn.h>
#include <link.h>

#include <cstring>
#include <string>

#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

// Set by an entry that runs inside dlopen, in the same thread.
thread_local bool loadRefused = false;

class PosixLibrary : public Library {
  public:
    explicit PosixLibrary(void* handle) : handle_(handle) {}
    ~PosixLibrary() override { dlclose(handle_); }
    void* symbol(const char* name) const override {
        void* const address = dlsym(handle_, name);
        return address != nullptr && isOwn(address) ? address : nullptr;
    }

  private:
    bool isOwn(void* address) const {
        Dl_info ignored;
        void* holder = nullptr;
        void* own = nullptr;
        return dladdr1(address, &ignored, &holder, RTLD_DL_LINKMAP) != 0 &&
               dlinfo(handle_, RTLD_DI_LINKMAP, &own) == 0 && holder == own;
    }

    void* handle_;
};

// The system's reason without the path, which it puts in front of it.
std::string loaderReason(const fs::path& path) {
    const char* told = dlerror();
    std::string reason = told ? told : translated("cannot be loaded");
    const std::string prefix = path.native() + ": ";
    if (reason.compare(0, prefix.size(), prefix) == 0) reason.erase(0, prefix.size());
    return reason;
}

// The loader maps what a library says of itself without looking at the file's size, and would be ended by a signal
// where the file is shorter. True also for what is no library: the loader tells that better.
bool isWhole(const MappedFile& file) {
    const std::string_view bytes = file.bytes();
    ElfW(Ehdr) head;
    if (bytes.size() < sizeof head) return true;
    std::memcpy(&head, bytes.data(), sizeof head);
    constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (std::memcmp(head.e_ident, ELFMAG, SELFMAG) != 0 || head.e_ident[EI_CLASS] != kClass) return true;
    for (std::size_t i = 0; i < head.e_phnum; ++i) {
        ElfW(Phdr) part;
        const std::size_t at = head.e_phoff + i * sizeof part;
        if (at > bytes.size() || bytes.size() - at < sizeof part) return false;
        std::memcpy(&part, bytes.data() + at, sizeof part);
        if (part.p_offset > bytes.size() || bytes.size() - part.p_offset < part.p_filesz) return false;
    }
    return true;
}

}  // namespace

void refuseLibraryLoad() {
    loadRefused = true;
}

std::unique_ptr<Library> Library::load(const fs::path& native, Error& error) {
    std::error_code failure;
    // A bare name would be looked for in the system's folders.
    const fs::path path = fs::absolute(native, failure);
    if (failure || !fs::exists(path, failure)) {
        fail(error, native, failure ? failure : std::make_error_code(std::errc::no_such_file_or_directory));
        return nullptr;
    }
    const std::unique_ptr<MappedFile> file = MappedFile::open(native, error);
    if (!file) return nullptr;
    if (!isWhole(*file)) {
        fail(error, native, translated("the file is cut off"));
        return nullptr;
    }
    loadRefused = false;
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        fail(error, native, loaderReason(path));
        return nullptr;
    }
    auto library = std::make_unique<PosixLibrary>(handle);
    if (!loadRefused) return library;
    fail(error, native, translated("its entry refused to start"));
    return nullptr;
}

}  // namespace qrs::platform
