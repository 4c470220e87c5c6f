// Where settings are kept.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "host/platform/error.h"
#include "host/platform/inside/settingsfile.h"

namespace qrs::platform {

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // Nothing when there is no such value; with a reason in error when the store cannot be read.
    virtual std::optional<SettingsValue> read(std::wstring_view key, std::wstring_view name, Error& error) = 0;
    virtual bool write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) = 0;
    // False, with the reason in error, when it cannot be read. One that is not there yet is empty.
    virtual bool check(Error& error) = 0;
};

// One file, shared with other programs.
std::unique_ptr<SettingsStore> openFileStore(const std::filesystem::path& native);
// The store of this user.
std::unique_ptr<SettingsStore> openUserStore();

// Held by one program at a time, from construction to destruction, once taken.
class FileLock {
  public:
    FileLock();
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    // Makes the lock file and waits until nobody else holds it.
    bool take(const std::filesystem::path& lockFile, Error& error);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// Tells whether a name still stands for the very content that was read.
class FileVersion {
  public:
    // Reads the file; a missing one reads as empty. Null, with the reason in error, when it cannot be read.
    static std::unique_ptr<FileVersion> read(const std::filesystem::path& native, std::string& content, Error& error);
    virtual ~FileVersion() = default;
    virtual bool isCurrent(const std::filesystem::path& native) const = 0;
};

}  // namespace qrs::platform
