// Names and reading of files on Windows.
#include "host/platform/files.h"

#include <algorithm>
#include <limits>

#include "host/platform/codepage.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/lastchange.h"
#include "host/platform/inside/temporary.h"
#include "host/platform/lostfile.h"
#include "host/platform/win32/handle.h"

// After the system's main header.
#include <objbase.h>
#include <shlobj.h>

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
        fail(error, native, translated(kIsFolder));
        return Handle();
    }
    return file;
}

// The size of an ordinary file; false, with the reason in error, for a pipe or device.
bool findOrdinarySize(const Handle& file, const fs::path& native, LARGE_INTEGER& size, Error& error) {
    if (GetFileType(file.value()) != FILE_TYPE_DISK || !GetFileSizeEx(file.value(), &size))
        return fail(error, native, translated(kNoOrdinaryFile));
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

// What a path names now, without keeping anybody from anything.
bool look(const fs::path& native, BY_HANDLE_FILE_INFORMATION& status) {
    const Handle file(CreateFileW(native.c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return file && GetFileInformationByHandle(file.value(), &status);
}

bool isOneFile(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) {
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
           a.nFileIndexLow == b.nFileIndexLow;
}

// A copy in memory, and the file closed: the system lets nobody replace a file that is mapped, not even the program
// that has mapped it.
class WindowsFileCopy : public MappedFile {
  public:
    WindowsFileCopy(const fs::path& native, const BY_HANDLE_FILE_INFORMATION& opened, std::size_t size)
        : native_(native), opened_(opened), copy_(new char[size]) {}

    // Reads until the size or, in a file that is cut short meanwhile, the end.
    bool read(const Handle& file, std::size_t size, Error& error) {
        std::size_t at = 0;
        for (DWORD count = 0; at < size; at += count) {
            const auto piece = static_cast<DWORD>(std::min<std::size_t>(size - at, kPiece));
            if (!ReadFile(file.value(), copy_.get() + at, piece, &count, nullptr))
                return fail(error, native_, lastError());
            if (count == 0) break;
        }
        bytes_ = std::string_view(copy_.get(), at);
        return true;
    }

    bool isSameFile(const fs::path& native) const override {
        BY_HANDLE_FILE_INFORMATION other;
        return look(native, other) && isOneFile(opened_, other);
    }

    bool isUnchanged(Error& error) const override {
        BY_HANDLE_FILE_INFORMATION now;
        if (isReplaced_ || !look(native_, now)) return true;
        // Once its name is another file's, its number may be given to a third one.
        isReplaced_ = !isOneFile(now, opened_);
        if (isReplaced_ || (now.nFileSizeHigh == opened_.nFileSizeHigh && now.nFileSizeLow == opened_.nFileSizeLow &&
                            CompareFileTime(&now.ftLastWriteTime, &opened_.ftLastWriteTime) == 0))
            return true;
        return fail(error, native_, translated(kChangedSinceOpened));
    }

  private:
    fs::path native_;
    BY_HANDLE_FILE_INFORMATION opened_;
    std::unique_ptr<char[]> copy_;
    mutable bool isReplaced_ = false;
};

}  // namespace

std::string textOf(const std::error_code& reason) {
    // What is no number of the system's own is told in ASCII.
    if (reason.category() != std::system_category()) return reason.message();
    wchar_t text[1024];
    const WORD chosen = language() == Language::Chinese ? MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED)
                                                        : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    DWORD length = 0;
    // Where the system has not the language of these messages, it speaks its own.
    for (const WORD spoken : {chosen, WORD{0}}) {
        if (length > 0) break;
        length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(reason.value()), spoken, text, static_cast<DWORD>(std::size(text)),
                                nullptr);
    }
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.' || text[length - 1] == L'\u3002'))
        --length;
    return length > 0 ? toUtf8({text, length}) : translated("error %1 of the system", reason.value());
}

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
    const Handle file = openForReading(native, error);
    if (!file) return nullptr;
    LARGE_INTEGER size;
    if (!findOrdinarySize(file, native, size, error)) return nullptr;
    BY_HANDLE_FILE_INFORMATION opened;
    if (!GetFileInformationByHandle(file.value(), &opened)) {
        fail(error, native, lastError());
        return nullptr;
    }
    if (static_cast<unsigned long long>(size.QuadPart) > std::numeric_limits<std::size_t>::max()) {
        fail(error, native, systemError(ERROR_NOT_ENOUGH_MEMORY));
        return nullptr;
    }
    const auto wanted = static_cast<std::size_t>(size.QuadPart);
    std::error_code unknown;
    const fs::path whole = fs::absolute(native, unknown);  // the working folder may be another one later
    auto copy = std::make_unique<WindowsFileCopy>(unknown ? native : whole, opened, wanted);
    return copy->read(file, wanted, error) ? std::move(copy) : nullptr;
}

// Files are copied, not mapped.
fs::path lostFile() {
    return {};
}
void forgetLostFiles() {}
bool takeLoss(std::string_view) {
    return false;
}

std::int64_t lastChange(const fs::path& native) {
    BY_HANDLE_FILE_INFORMATION now;
    if (!look(native, now)) return 0;
    const std::uint64_t high = now.ftLastWriteTime.dwHighDateTime;
    return static_cast<std::int64_t>(high << 32 | now.ftLastWriteTime.dwLowDateTime);
}

fs::path lastTemporaryFolder() {
    // The folder which a new user's variables name; the system's own, when even the user's folder is not there.
    PWSTR local = nullptr;
    fs::path folder;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &local))) folder = fs::path(local) / L"Temp";
    CoTaskMemFree(local);
    std::error_code unknown;
    if (fs::is_directory(folder, unknown)) return folder;
    wchar_t windows[MAX_PATH] = {};
    GetWindowsDirectoryW(windows, MAX_PATH);
    return fs::path(windows) / L"Temp";
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
