// The temporary file of AtomicFile on Windows.
#include <algorithm>
#include <string>

#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/partialfile.h"
#include "host/platform/tree.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kStep = std::size_t{8} << 20;

// Readers and virus scanners hold a file for moments.
constexpr int kAttempts = 50;
constexpr DWORD kPause = 20;  // milliseconds

bool isHeld(DWORD reason) {
    return reason == ERROR_ACCESS_DENIED || reason == ERROR_SHARING_VIOLATION;
}

// The file that a link leads to; empty, with the system's reason set, when it leads nowhere.
fs::path endOfLink(const fs::path& link) {
    const Handle file(CreateFileW(link.c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring path(file ? GetFinalPathNameByHandleW(file.value(), nullptr, 0, 0) : 0, L'\0');
    if (path.empty()) return {};
    path.resize(GetFinalPathNameByHandleW(file.value(), path.data(), static_cast<DWORD>(path.size()), 0));
    return path;
}

}  // namespace

class WindowsPartialFile final : public PartialFile {
  public:
    bool begin(const fs::path& named, Error& error) override;
    void put(std::string_view bytes) override;
    bool finish(int backups, Error& error) override;
    void discard() override;

  private:
    Handle file;
    DWORD attributes = INVALID_FILE_ATTRIBUTES;  // of the target; invalid when it did not exist

    bool existed() const { return attributes != INVALID_FILE_ATTRIBUTES; }

    bool checkTarget(Error& error);
    bool create(Error& error);

    std::error_code move(const fs::path& from, const fs::path& to) const override;
    std::error_code setAside(const fs::path& from, const fs::path& to) const override;
    void drop(const fs::path& aside) const override;
};

bool WindowsPartialFile::checkTarget(Error& error) {
    target = kindOfName(shown) == NameKind::Link ? endOfLink(shown) : shown;
    if (target.empty()) return fail(error, shown, lastError());
    attributes = GetFileAttributesW(target.c_str());
    if (!existed()) {
        const DWORD reason = GetLastError();
        return reason == ERROR_FILE_NOT_FOUND || fail(error, shown, systemError(reason));
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return fail(error, shown, translated(kIsFolder));
    if (attributes & FILE_ATTRIBUTE_READONLY) return fail(error, shown, translated("is read-only"));
    return true;
}

bool WindowsPartialFile::create(Error& error) {
    for (int attempt = 0; attempt < 16; ++attempt) {
        fs::path path = besideTarget();
        const bool made = makeTemporary(path, [&] {
            file = Handle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            return static_cast<bool>(file);
        });
        if (made) {
            partial.swap(path);
            return true;
        }
        if (GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return fail(error, shown, lastError());
}

void WindowsPartialFile::put(std::string_view bytes) {
    while (!bytes.empty() && !failure) {
        DWORD count = 0;
        if (!WriteFile(file.value(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kStep)), &count,
                       nullptr)) {
            failure = lastError();
        } else if (count == 0) {
            failure = systemError(ERROR_DISK_FULL);
        }
        bytes.remove_prefix(count);
    }
}

bool WindowsPartialFile::finish(int backups, Error& error) {
    if (!failure && !FlushFileBuffers(file.value())) failure = lastError();
    if (!file.close() && !failure) failure = lastError();
    if (!failure && existed() && !SetFileAttributesW(partial.c_str(), attributes)) failure = lastError();
    if (failure) return fail(error, shown, failure);
    // The target's own name is taken away for a moment: a file that another program keeps open or mapped can be
    // renamed, but neither replaced nor can a second name of it be removed.
    const bool keeps = backups > 0 && kindOfName(target) != NameKind::Missing;  // it may have been removed meanwhile
    return takePlace(keeps ? target : fs::path(), backups, error);
}

std::error_code WindowsPartialFile::move(const fs::path& from, const fs::path& to) const {
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return {};
        const DWORD reason = GetLastError();
        if (!isHeld(reason) || attempt == kAttempts) return systemError(reason);
        Sleep(kPause);
    }
}

std::error_code WindowsPartialFile::setAside(const fs::path& from, const fs::path& to) const {
    return move(from, to);
}

void WindowsPartialFile::drop(const fs::path& aside) const {
    SetFileAttributesW(aside.c_str(), FILE_ATTRIBUTE_NORMAL);          // a read-only file is not deleted
    if (!DeleteFileW(aside.c_str())) RemoveDirectoryW(aside.c_str());  // the name of a folder elsewhere
}

void WindowsPartialFile::discard() {
    if (partial.empty()) return;
    file.close();
    DeleteFileW(partial.c_str());
    forgetTemporary(partial);
    partial.clear();
}

bool WindowsPartialFile::begin(const fs::path& named, Error& error) {
    shown = named;
    return checkTarget(error) && create(error);
}

std::unique_ptr<PartialFile> PartialFile::make() {
    return std::make_unique<WindowsPartialFile>();
}

}  // namespace qrs::platform
