// Per-user settings: the registry below HKEY_CURRENT_USER on Windows, one file in the user's configuration folder
// elsewhere, with the same key and value names.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::platform {

// A key is a path with backslashes below the user's root, for example "Software\\QRS\\PWX\\PipeSystemSetting"; keys
// and value names match without regard to case. Every read looks at the store as it is now, so that several programs
// can share it; every write is atomic and leaves the values of the others as they are (a lock is held for the
// read-change-write on POSIX).
class QRS_HOST_PORT Settings {
  public:
    // The store of this user (POSIX: $XDG_CONFIG_HOME or ~/.config, qrs_pipeSystem/settings.ini).
    static Settings& user();

    // Uses another file instead (POSIX and Windows alike). False, with the reason in error, when the file exists and
    // cannot be read or is damaged (the message names the line); it is then neither used nor written over.
    bool useFile(const std::filesystem::path& native, Error& error);

    // False, with the reason in error, when the store in use cannot be read or is damaged; every value is then missing
    // and nothing can be written. A file that does not exist is an empty store.
    bool check(Error& error) const;

    // From now on the value is this one, whatever the store holds; what is written to it stays in this program. It ends
    // when another store is used.
    void holdText(std::wstring_view key, std::wstring_view name, std::wstring_view value);

    // The value, or nothing when it is missing or not of the kind asked for.
    std::optional<std::wstring> text(std::wstring_view key, std::wstring_view name) const;
    std::optional<std::int32_t> integer(std::wstring_view key, std::wstring_view name) const;
    std::optional<double> real(std::wstring_view key, std::wstring_view name) const;

    // A value that is there already is not written again, so a store that cannot be written takes it too. False, with
    // the reason in error, when the store cannot be written (read-only file, damaged file, full disk); it is then left
    // as it was.
    bool setText(std::wstring_view key, std::wstring_view name, std::wstring_view value, Error& error);
    bool setInteger(std::wstring_view key, std::wstring_view name, std::int32_t value, Error& error);
    bool setReal(std::wstring_view key, std::wstring_view name, double value, Error& error);

  private:
    Settings();
    ~Settings();
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace qrs::platform
