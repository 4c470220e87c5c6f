// The registry of a user, and sharing a settings file with other programs.
#include "host/platform/inside/store.h"

#include <cstring>
#include <functional>
#include <string>

#include "host/platform/files.h"
#include "host/platform/fileturn.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/text.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

class RegistryKey {
  public:
    RegistryKey() = default;
    ~RegistryKey() {
        if (key_) RegCloseKey(key_);
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    LSTATUS open(const std::wstring& path, REGSAM access) {
        return RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, access, &key_);
    }
    LSTATUS create(const std::wstring& path) {
        return RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key_, nullptr);
    }
    HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

bool registryFailure(const std::wstring& path, LSTATUS status, Error& error) {
    return fail(error, fs::path(L"HKEY_CURRENT_USER\\" + path), systemError(static_cast<DWORD>(status)));
}

// Texts are REG_SZ, whole numbers REG_DWORD, and real numbers the eight bytes of a double as REG_BINARY, so that each
// kind is told apart when it is read.
std::optional<SettingsValue> valueOf(DWORD type, const std::string& data) {
    if (type == REG_SZ || type == REG_EXPAND_SZ) {
        std::wstring text(data.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
        while (!text.empty() && text.back() == L'\0')
            text.pop_back();
        return text;
    }
    if (type == REG_DWORD && data.size() == sizeof(std::int32_t)) {
        std::int32_t integer;
        std::memcpy(&integer, data.data(), sizeof integer);
        return integer;
    }
    if (type == REG_BINARY && data.size() == sizeof(double)) {
        double real;
        std::memcpy(&real, data.data(), sizeof real);
        return real;
    }
    return std::nullopt;
}

class RegistryStore : public SettingsStore {
  public:
    std::optional<SettingsValue> read(std::wstring_view key, std::wstring_view name, Error& error) override;
    bool write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) override;
    bool check(Error&) override { return true; }
};

std::optional<SettingsValue> RegistryStore::read(std::wstring_view key, std::wstring_view name, Error& error) {
    const std::wstring path = normalKey(key);
    const std::wstring valueName(name);
    RegistryKey handle;
    LSTATUS status = handle.open(path, KEY_QUERY_VALUE);
    std::string data;
    DWORD type = 0;
    DWORD size = 0;
    // The value may grow between the question for its size and the one for its content.
    while (status == ERROR_SUCCESS) {
        size = static_cast<DWORD>(data.size());
        status = RegQueryValueExW(handle.get(), valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                                  &size);
        if (status == ERROR_SUCCESS && size <= data.size()) break;
        if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
            data.resize(size);
            status = ERROR_SUCCESS;
        }
    }
    if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
    if (status != ERROR_SUCCESS) {
        registryFailure(path, status, error);
        return std::nullopt;
    }
    data.resize(size);
    return valueOf(type, data);
}

bool RegistryStore::write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) {
    const std::wstring path = normalKey(key);
    const std::wstring valueName(name);
    RegistryKey handle;
    LSTATUS status = handle.create(path);
    const auto set = [&](DWORD type, const void* data, std::size_t size) {
        return RegSetValueExW(handle.get(), valueName.c_str(), 0, type, static_cast<const BYTE*>(data),
                              static_cast<DWORD>(size));
    };
    if (status != ERROR_SUCCESS) return registryFailure(path, status, error);
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        status = set(REG_SZ, text->c_str(), (text->size() + 1) * sizeof(wchar_t));
    } else if (const auto* integer = std::get_if<std::int32_t>(&value)) {
        status = set(REG_DWORD, integer, sizeof *integer);
    } else {
        status = set(REG_BINARY, &std::get<double>(value), sizeof(double));
    }
    return status == ERROR_SUCCESS || registryFailure(path, status, error);
}

class WindowsFileVersion : public FileVersion {
  public:
    explicit WindowsFileVersion(const fs::path& native) : exists_(look(native, status_)) {}

    bool isCurrent(const fs::path& native) const override {
        WIN32_FILE_ATTRIBUTE_DATA now{};
        if (look(native, now) != exists_) return false;
        return !exists_ || (now.nFileSizeLow == status_.nFileSizeLow && now.nFileSizeHigh == status_.nFileSizeHigh &&
                            CompareFileTime(&now.ftLastWriteTime, &status_.ftLastWriteTime) == 0 &&
                            CompareFileTime(&now.ftCreationTime, &status_.ftCreationTime) == 0);
    }

  private:
    static bool look(const fs::path& native, WIN32_FILE_ATTRIBUTE_DATA& status) {
        return GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &status) != 0;
    }

    WIN32_FILE_ATTRIBUTE_DATA status_{};
    bool exists_;
};

}  // namespace

std::unique_ptr<SettingsStore> openUserStore() {
    return std::make_unique<RegistryStore>();
}

struct FileLock::State {
    Handle file;
};

FileLock::FileLock() : state_(std::make_unique<State>()) {}

FileLock::~FileLock() = default;

bool FileLock::take(const fs::path& lockFile, Error& error) {
    state_->file =
        Handle(CreateFileW(lockFile.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    OVERLAPPED whole{};
    if (!state_->file || !LockFileEx(state_->file.value(), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &whole)) {
        return fail(error, lockFile, lastError());
    }
    return true;
}

// A file that is open cannot be replaced, so the turn is a name made of its path.
struct FileTurn::State {
    Handle mutex;
    bool isTaken = false;
};

FileTurn::FileTurn(const fs::path& native) : state_(std::make_unique<State>()) {
    std::error_code unknown;
    const std::wstring path = foldCase(fs::weakly_canonical(native, unknown).native());
    const std::wstring name = L"qrs-turn-" + std::to_wstring(std::hash<std::wstring>()(path));
    state_->mutex = Handle(CreateMutexW(nullptr, FALSE, name.c_str()));
    // One who was killed in between has left it behind.
    const DWORD waited = state_->mutex ? WaitForSingleObject(state_->mutex.value(), INFINITE) : WAIT_FAILED;
    state_->isTaken = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
}

FileTurn::~FileTurn() {
    if (state_->isTaken) ReleaseMutex(state_->mutex.value());
}

std::unique_ptr<FileVersion> FileVersion::read(const fs::path& native, std::string& content, Error& error) {
    content.clear();
    auto version = std::make_unique<WindowsFileVersion>(native);
    std::error_code unknown;
    if (!fs::exists(native, unknown) && !unknown) return version;
    if (!readFile(native, content, error)) return nullptr;
    return version;
}

}  // namespace qrs::platform
