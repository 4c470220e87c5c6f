// The suite's registry locations and wrapper, over the platform's per-user settings.
#include "qrs_reg.h"

#include <utility>

#include "host/platform/settings.h"

using qrs::platform::Settings;

std::wstring GetRegLocation(const std::wstring& name) {
    return L"Software\\QRS\\PWX\\" + name;
}

TRegKey::TRegKey(std::wstring location) : location_(std::move(location)) {}

namespace {

template <typename Value>
bool taken(const std::optional<Value>& stored, Value& value) {
    if (stored) value = *stored;
    return stored.has_value();
}

}  // namespace

bool TRegKey::ReadString(const std::wstring& name, std::wstring& value) const {
    return taken(Settings::user().text(location_, name), value);
}

bool TRegKey::ReadInteger(const std::wstring& name, std::int32_t& value) const {
    return taken(Settings::user().integer(location_, name), value);
}

bool TRegKey::ReadDouble(const std::wstring& name, double& value) const {
    return taken(Settings::user().real(location_, name), value);
}

std::wstring TRegKey::GetString(const std::wstring& name, const std::wstring& defaultValue) const {
    std::wstring value = defaultValue;
    ReadString(name, value);
    return value;
}

std::int32_t TRegKey::GetInteger(const std::wstring& name, std::int32_t defaultValue) const {
    ReadInteger(name, defaultValue);
    return defaultValue;
}

double TRegKey::GetDouble(const std::wstring& name, double defaultValue) const {
    ReadDouble(name, defaultValue);
    return defaultValue;
}

bool TRegKey::WriteString(const std::wstring& name, const std::wstring& value) const {
    qrs::platform::Error error;
    return Settings::user().setText(location_, name, value, error);
}

bool TRegKey::WriteInteger(const std::wstring& name, std::int32_t value) const {
    qrs::platform::Error error;
    return Settings::user().setInteger(location_, name, value, error);
}

bool TRegKey::WriteDouble(const std::wstring& name, double value) const {
    qrs::platform::Error error;
    return Settings::user().setReal(location_, name, value, error);
}
