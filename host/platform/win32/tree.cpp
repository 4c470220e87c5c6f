// Folders on Windows: what a name is, making and emptying.
#include "host/platform/tree.h"

#include <string>

#include "host/platform/inside/fileerror.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

// A search that closes itself.
class Search {
  public:
    explicit Search(HANDLE value) : value_(value) {}
    ~Search() {
        if (value_ != INVALID_HANDLE_VALUE) FindClose(value_);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    explicit operator bool() const { return value_ != INVALID_HANDLE_VALUE; }
    HANDLE value() const { return value_; }

  private:
    HANDLE value_;
};

// A junction, a symbolic link or a mounted volume: never gone into, only taken away.
bool isLink(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool isFolder(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

class Emptying {
  public:
    void empty(const fs::path& folder) {
        WIN32_FIND_DATAW entry;
        const Search search(FindFirstFileW((folder / L"*").c_str(), &entry));
        if (!search) {
            keep(folder, lastError());
            return;
        }
        do {
            const std::wstring name = entry.cFileName;
            if (name != L"." && name != L"..") remove(folder / name, entry.dwFileAttributes);
        } while (FindNextFileW(search.value(), &entry));
        if (GetLastError() != ERROR_NO_MORE_FILES) keep(folder, lastError());
    }
    // Of the first thing that stayed; empty when all is gone.
    Error error;

  private:
    void keep(const fs::path& shown, const std::error_code& reason) {
        if (!error) fail(error, shown, reason);
    }

    void remove(const fs::path& path, DWORD attributes) {
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
            SetFileAttributesW(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
        if (isFolder(attributes) && !isLink(attributes)) empty(path);
        const BOOL gone = isFolder(attributes) ? RemoveDirectoryW(path.c_str()) : DeleteFileW(path.c_str());
        if (!gone) keep(path, lastError());
    }
};

// A path whose last character is a separator names what a link points to.
fs::path withoutSeparator(const fs::path& native) {
    return native.has_filename() || !native.has_relative_path() ? native : native.parent_path();
}

}  // namespace

NameKind kindOfName(const fs::path& native) {
    const DWORD attributes = GetFileAttributesW(withoutSeparator(native).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD reason = GetLastError();
        return reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND ? NameKind::Missing : NameKind::Other;
    }
    if (isLink(attributes)) return NameKind::Link;
    return isFolder(attributes) ? NameKind::Folder : NameKind::Other;
}

bool isOwnFolder(const fs::path& native) {
    return kindOfName(native) == NameKind::Folder;
}

bool makePrivateFolder(const fs::path& native, Error& error) {
    return CreateDirectoryW(withoutSeparator(native).c_str(), nullptr) != 0 || fail(error, native, lastError());
}

bool emptyFolder(const fs::path& native, Error& error) {
    if (kindOfName(native) != NameKind::Folder) return fail(error, native, translated("is no folder"));
    Emptying emptying;
    emptying.empty(withoutSeparator(native));
    if (!emptying.error) return true;
    error = emptying.error;
    return false;
}

}  // namespace qrs::platform
