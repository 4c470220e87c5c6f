// Stand-in for the kernel library's registry wrapper: where the suite keeps its per-user settings, and reading them.
//
//     TRegKey config(GetRegLocation(L"PWXConfig"));
//     int update = config.GetInteger(L"LayerLockShowUpdate", 1);
//
// Keys lie below HKEY_CURRENT_USER (elsewhere: the user's settings file). Nothing is cached: every read looks afresh.
#pragma once

#include <cstdint>
#include <string>

#include "host/platform/port.h"

// The registry path of "PWXConfig", "PipeSystemSetting" or "PipeCanalSetting" below HKEY_CURRENT_USER, without a
// backslash at its end.
QRS_HOST_PORT std::wstring GetRegLocation(const std::wstring& name);

class QRS_HOST_PORT TRegKey {
  public:
    explicit TRegKey(std::wstring location);

    // False, value untouched, when the value is missing or of another kind.
    bool ReadString(const std::wstring& name, std::wstring& value) const;
    bool ReadInteger(const std::wstring& name, std::int32_t& value) const;
    bool ReadDouble(const std::wstring& name, double& value) const;

    // The value, or the default when it is missing or of another kind.
    std::wstring GetString(const std::wstring& name, const std::wstring& defaultValue) const;
    std::int32_t GetInteger(const std::wstring& name, std::int32_t defaultValue) const;
    double GetDouble(const std::wstring& name, double defaultValue) const;

    // False when the store cannot be written; it is then left as it was.
    bool WriteString(const std::wstring& name, const std::wstring& value) const;
    bool WriteInteger(const std::wstring& name, std::int32_t value) const;
    bool WriteDouble(const std::wstring& name, double value) const;

  private:
    std::wstring location_;
};
