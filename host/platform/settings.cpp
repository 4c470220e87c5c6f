// Per-user settings.
#include "host/platform/settings.h"

#include "host/platform/callrecord.h"
#include "host/platform/inside/store.h"

namespace qrs::platform {

struct Settings::State {
    std::unique_ptr<SettingsStore> store = openUserStore();
};

namespace {

template <typename... Values>
void recordAccess(const char* function, std::wstring_view key, std::wstring_view name, const Values&... values) {
    if (CallRecorder::isRecording()) recordCall(function, std::wstring(key), std::wstring(name), values...);
}

template <typename Value>
std::optional<Value> readAs(SettingsStore& store, std::wstring_view key, std::wstring_view name) {
    // A store that cannot be read has no values; check tells its users why.
    Error unreadable;
    std::optional<SettingsValue> value = store.read(key, name, unreadable);
    if (!value) return std::nullopt;
    Value* wanted = std::get_if<Value>(&*value);
    return wanted ? std::optional<Value>(std::move(*wanted)) : std::nullopt;
}

// A store that cannot be written holds the value all the same when it held it before.
bool writeAs(SettingsStore& store, std::wstring_view key, std::wstring_view name, const SettingsValue& value,
             Error& error) {
    Error unreadable;
    return store.read(key, name, unreadable) == value || store.write(key, name, value, error);
}

}  // namespace

Settings::Settings() : state_(std::make_unique<State>()) {}

Settings::~Settings() = default;

Settings& Settings::user() {
    static Settings settings;
    return settings;
}

bool Settings::useFile(const std::filesystem::path& native, Error& error) {
    std::unique_ptr<SettingsStore> store = openFileStore(native);
    if (!store->check(error)) return false;
    state_->store = std::move(store);
    return true;
}

void Settings::useDefault() {
    state_->store = openUserStore();
}

bool Settings::check(Error& error) const {
    return state_->store->check(error);
}

std::optional<std::wstring> Settings::text(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::text", key, name);
    return readAs<std::wstring>(*state_->store, key, name);
}

std::optional<std::int32_t> Settings::integer(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::integer", key, name);
    return readAs<std::int32_t>(*state_->store, key, name);
}

std::optional<double> Settings::real(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::real", key, name);
    return readAs<double>(*state_->store, key, name);
}

bool Settings::setText(std::wstring_view key, std::wstring_view name, std::wstring_view value, Error& error) {
    recordAccess("Settings::setText", key, name, std::wstring(value));
    return writeAs(*state_->store, key, name, std::wstring(value), error);
}

bool Settings::setInteger(std::wstring_view key, std::wstring_view name, std::int32_t value, Error& error) {
    recordAccess("Settings::setInteger", key, name, value);
    return writeAs(*state_->store, key, name, value, error);
}

bool Settings::setReal(std::wstring_view key, std::wstring_view name, double value, Error& error) {
    recordAccess("Settings::setReal", key, name, value);
    return writeAs(*state_->store, key, name, value, error);
}

}  // namespace qrs::platform
