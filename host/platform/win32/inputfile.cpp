// Reading piece by piece on Windows.
#include "host/platform/inputfile.h"

#include <algorithm>

#include "host/platform/inside/fileerror.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace {

class Win32InputFile : public InputFile {
  public:
    explicit Win32InputFile(Handle file) : file_(std::move(file)) {}

    // False, with the system's error set, when the size cannot be told.
    bool findSize() {
        LARGE_INTEGER size;
        if (!GetFileSizeEx(file_.value(), &size)) return false;
        size_ = static_cast<std::uint64_t>(size.QuadPart);
        return true;
    }

    std::uint64_t size() const override { return size_; }

    std::size_t readAt(std::uint64_t offset, char* target, std::size_t count) override {
        constexpr std::size_t kMost = 1u << 30;  // a DWORD holds it
        std::size_t done = 0;
        while (done < count) {
            const std::uint64_t place = offset + done;
            OVERLAPPED at = {};
            at.Offset = static_cast<DWORD>(place & 0xFFFFFFFFu);
            at.OffsetHigh = static_cast<DWORD>(place >> 32);
            DWORD got = 0;
            const auto wanted = static_cast<DWORD>(std::min(count - done, kMost));
            if (!ReadFile(file_.value(), target + done, wanted, &got, &at) || got == 0) break;
            done += got;
        }
        return done;
    }

  private:
    Handle file_;
    std::uint64_t size_ = 0;
};

}  // namespace

std::unique_ptr<InputFile> InputFile::open(const std::filesystem::path& native, Error& error) {
    // Others may write, rename or delete the file meanwhile, as everywhere else.
    Handle handle(CreateFileW(native.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) {
        fail(error, native, lastError());
        return nullptr;
    }
    if (GetFileType(handle.value()) != FILE_TYPE_DISK) {
        fail(error, native, translated(kNoOrdinaryFile));
        return nullptr;
    }
    auto file = std::make_unique<Win32InputFile>(std::move(handle));
    if (!file->findSize()) {
        fail(error, native, lastError());
        return nullptr;
    }
    return file;
}

}  // namespace qrs::platform
