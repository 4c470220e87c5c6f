// Hands reads and writes to the store in use, and records them.
#include "host/platform/settings.h"

#include "host/platform/callrecord.h"
#include "host/platform/inside/settingsfile.h"
#include "host/platform/inside/store.h"

namespace qrs::platform {

struct Settings::State {
    std::optional<SettingsValue> read(std::wstring_view key, std::wstring_view name) const {
        if (const SettingsValue* value = held.find(key, name)) return *value;
        // A store that cannot be read has no values; check tells its users why.
        Error unreadable;
        return store->read(key, name, unreadable);
    }

    template <typename Value>
    std::optional<Value> readAs(std::wstring_view key, std::wstring_view name) const {
        std::optional<SettingsValue> value = read(key, name);
        Value* wanted = value ? std::get_if<Value>(&*value) : nullptr;
        return wanted ? std::optional<Value>(std::move(*wanted)) : std::nullopt;
    }

    // A store that cannot be written holds the value all the same when it held it before.
    bool write(std::wstring_view key, std::wstring_view name, const SettingsValue& value, Error& error) {
        if (held.find(key, name) != nullptr) {
            held.set(key, name, value);
            return true;
        }
        return read(key, name) == value || store->write(key, name, value, error);
    }

    void use(std::unique_ptr<SettingsStore> another) {
        store = std::move(another);
        held = SettingsText();
    }

    std::unique_ptr<SettingsStore> store = openUserStore();
    SettingsText held;  // for this run, in front of the store
};

namespace {

template <typename... Values>
void recordAccess(const char* function, std::wstring_view key, std::wstring_view name, const Values&... values) {
    if (CallRecorder::isRecording()) recordCall(function, std::wstring(key), std::wstring(name), values...);
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
    state_->use(std::move(store));
    return true;
}

bool Settings::check(Error& error) const {
    return state_->store->check(error);
}

void Settings::holdText(std::wstring_view key, std::wstring_view name, std::wstring_view value) {
    recordAccess("Settings::holdText", key, name, std::wstring(value));
    state_->held.set(key, name, std::wstring(value));
}

std::optional<std::wstring> Settings::text(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::text", key, name);
    return state_->readAs<std::wstring>(key, name);
}

std::optional<std::int32_t> Settings::integer(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::integer", key, name);
    return state_->readAs<std::int32_t>(key, name);
}

std::optional<double> Settings::real(std::wstring_view key, std::wstring_view name) const {
    recordAccess("Settings::real", key, name);
    return state_->readAs<double>(key, name);
}

bool Settings::setText(std::wstring_view key, std::wstring_view name, std::wstring_view value, Error& error) {
    recordAccess("Settings::setText", key, name, std::wstring(value));
    return state_->write(key, name, std::wstring(value), error);
}

bool Settings::setInteger(std::wstring_view key, std::wstring_view name, std::int32_t value, Error& error) {
    recordAccess("Settings::setInteger", key, name, value);
    return state_->write(key, name, value, error);
}

bool Settings::setReal(std::wstring_view key, std::wstring_view name, double value, Error& error) {
    recordAccess("Settings::setReal", key, name, value);
    return state_->write(key, name, value, error);
}

}  // namespace qrs::platform
