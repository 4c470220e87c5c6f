// Settings in one file.
#include <mutex>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/inside/store.h"

namespace qrs::platform {

namespace fs = std::filesystem;

namespace {

class FileStore : public SettingsStore {
  public:
    explicit FileStore(fs::path native) : path_(std::move(native)) {}

    std::optional<SettingsValue> read(std::wstring_view key, std::wstring_view name, Error& error) override {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!refresh(error)) return std::nullopt;
        const SettingsValue* value = text_.find(key, name);
        return value ? std::optional<SettingsValue>(*value) : std::nullopt;
    }

    bool write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) override;

    bool check(Error& error) override {
        const std::lock_guard<std::mutex> lock(mutex_);
        return refresh(error);
    }

  private:
    bool refresh(Error& error);

    fs::path path_;
    std::mutex mutex_;
    std::unique_ptr<FileVersion> version_;  // of the content that text_ was made of
    SettingsText text_;
};

// Brings text_ to what the file holds now.
bool FileStore::refresh(Error& error) {
    if (version_ && version_->isCurrent(path_)) return true;
    std::string content;
    std::unique_ptr<FileVersion> version = FileVersion::read(path_, content, error);
    if (!version) return false;
    version_.reset();
    std::string reason;
    if (!text_.parse(content, reason)) {
        error.message = shownPath(path_) + ':' + reason;
        return false;
    }
    version_ = std::move(version);
    return true;
}

bool isWritableKey(std::wstring_view key) {
    for (std::size_t i = 0; i < key.size();) {
        const char32_t codePoint = nextCodePoint(key, i);
        if (codePoint < 0x20 || codePoint == 0x7F) return false;
    }
    std::wstring sameKey;
    return decodeStrict(kUtf8, toUtf8(key), sameKey) && !normalKey(key).empty();
}

bool FileStore::write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) {
    if (!isWritableKey(key)) return fail(error, path_, translated("a key is empty or holds what is no text"));
    std::error_code failure;
    if (path_.has_parent_path() && !fs::exists(path_.parent_path(), failure)) {
        fs::create_directories(path_.parent_path(), failure);
        if (failure) return fail(error, path_.parent_path(), failure);
    }
    fs::path lockPath = path_;
    lockPath += ".lock";
    FileLock fileLock;
    if (!fileLock.take(lockPath, error)) return false;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!refresh(error)) return false;
    SettingsText changed = text_;
    changed.set(key, name, value);
    if (!writeFileAtomically(path_, changed.bytes(), false, error)) return false;
    version_.reset();
    return true;
}

}  // namespace

std::unique_ptr<SettingsStore> openFileStore(const fs::path& native) {
    std::error_code unknown;
    const fs::path absolute = fs::absolute(native, unknown);
    return std::make_unique<FileStore>(unknown ? native : absolute);
}

}  // namespace qrs::platform
