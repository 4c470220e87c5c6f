// Names, reading and mapping of files on Windows.
#include "host/platform/files.h"

#include <limits>

#include "host/platform/inside/fileerror.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

Handle openForReading(const fs::path& native, Error& error) {
    // A folder is opened as well, to be told apart from a file that may not be read.
    Handle file(CreateFileW(native.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION status;
    if (!file) {
        fail(error, native, lastError());
    } else if (GetFileType(file.value()) == FILE_TYPE_DISK && GetFileInformationByHandle(file.value(), &status) &&
               (status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        fail(error, native, kIsFolder);
        return Handle();
    }
    return file;
}

// The size of an ordinary file; false, with the reason in error, for a pipe or device.
bool findOrdinarySize(const Handle& file, const fs::path& native, LARGE_INTEGER& size, Error& error) {
    if (GetFileType(file.value()) != FILE_TYPE_DISK || !GetFileSizeEx(file.value(), &size))
        return fail(error, native, kNoOrdinaryFile);
    return true;
}

constexpr DWORD kPiece = DWORD{1} << 20;  // read at once

bool readToEnd(const Handle& file, const fs::path& native, std::uint64_t most, std::string& content, Error& error) {
    for (std::size_t at = 0;;) {
        content.resize(at + kPiece);
        DWORD count = 0;
        if (!ReadFile(file.value(), content.data() + at, kPiece, &count, nullptr) &&
            GetLastError() != ERROR_BROKEN_PIPE) {
            const std::error_code reason = lastError();
            content.clear();
            return fail(error, native, reason);
        }
        at += count;
        content.resize(at);
        if (at > most) {
            content.clear();
            return fail(error, native, largerThan(most));
        }
        if (count == 0) return true;
    }
}

class WindowsMappedFile : public MappedFile {
  public:
    WindowsMappedFile(const fs::path& native, Handle file, Handle mapping, std::string_view bytes)
        : native_(native), file_(std::move(file)), mapping_(std::move(mapping)) {
        bytes_ = bytes;
        GetFileInformationByHandle(file_.value(), &opened_);
    }
    ~WindowsMappedFile() override {
        if (!bytes_.empty()) UnmapViewOfFile(bytes_.data());
    }

    bool isSameFile(const fs::path& native) const override {
        Error unknown;
        const Handle other = openForReading(native, unknown);
        BY_HANDLE_FILE_INFORMATION a;
        BY_HANDLE_FILE_INFORMATION b;
        return other && GetFileInformationByHandle(file_.value(), &a) &&
               GetFileInformationByHandle(other.value(), &b) && a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
               a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
    }

    bool isUnchanged(Error& error) const override {
        BY_HANDLE_FILE_INFORMATION now;
        if (!GetFileInformationByHandle(file_.value(), &now)) return fail(error, native_, lastError());
        if (now.nFileSizeHigh == opened_.nFileSizeHigh && now.nFileSizeLow == opened_.nFileSizeLow &&
            CompareFileTime(&now.ftLastWriteTime, &opened_.ftLastWriteTime) == 0)
            return true;
        return fail(error, native_, kChangedSinceOpened);
    }

  private:
    fs::path native_;
    Handle file_;
    Handle mapping_;
    BY_HANDLE_FILE_INFORMATION opened_{};
};

}  // namespace

fs::path nativePath(std::wstring_view inner) {
    return fs::path(inner);
}

fs::path nativeFromTyped(const std::string& typed) {
    return fs::u8path(typed);
}

std::wstring innerPath(const fs::path& native) {
    return innerFromTyped(native.native());
}

bool readFile(const fs::path& native, std::string& content, Error& error) {
    content.clear();
    const Handle file = openForReading(native, error);
    return file && readToEnd(file, native, std::numeric_limits<std::uint64_t>::max(), content, error);
}

bool readOrdinaryFile(const fs::path& native, std::uint64_t most, std::string& content, Error& error) {
    content.clear();
    const Handle file = openForReading(native, error);
    LARGE_INTEGER size;
    if (!file || !findOrdinarySize(file, native, size, error)) return false;
    if (static_cast<std::uint64_t>(size.QuadPart) > most) return fail(error, native, largerThan(most));
    // Nothing has to grow then.
    content.reserve(static_cast<std::size_t>(size.QuadPart) + kPiece);
    return readToEnd(file, native, most, content, error);
}

std::unique_ptr<MappedFile> MappedFile::open(const fs::path& native, Error& error) {
    Handle file = openForReading(native, error);
    if (!file) return nullptr;
    LARGE_INTEGER size;
    if (!findOrdinarySize(file, native, size, error)) return nullptr;
    if (size.QuadPart == 0)
        return std::make_unique<WindowsMappedFile>(native, std::move(file), Handle(), std::string_view());
    if (static_cast<unsigned long long>(size.QuadPart) > std::numeric_limits<std::size_t>::max()) {
        fail(error, native, systemError(ERROR_NOT_ENOUGH_MEMORY));
        return nullptr;
    }
    Handle mapping(CreateFileMappingW(file.value(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    const void* address = mapping ? MapViewOfFile(mapping.value(), FILE_MAP_READ, 0, 0, 0) : nullptr;
    if (!address) {
        fail(error, native, lastError());
        return nullptr;
    }
    const std::string_view bytes(static_cast<const char*>(address), static_cast<std::size_t>(size.QuadPart));
    return std::make_unique<WindowsMappedFile>(native, std::move(file), std::move(mapping), bytes);
}

fs::path programFile() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return fs::path(path);
        }
        path.resize(path.size() * 2);
    }
}

fs::path programFolder() {
    return programFile().parent_path();
}

bool appendToFile(const fs::path& native, std::string_view bytes, Error& error) {
    Handle file(CreateFileW(native.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD count = 0;
    if (!file ||
        (!bytes.empty() && !WriteFile(file.value(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr)))
        return fail(error, native, lastError());
    return file.close() || fail(error, native, lastError());
}

}  // namespace qrs::platform
