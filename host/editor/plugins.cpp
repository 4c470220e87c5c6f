// Loading and unloading of plug-ins, and the messages sent to them.
#include "host/editor/plugins.h"

#include <algorithm>
#include <utility>

#include "host/editor/documents.h"
#include "host/editor/reactors.h"
#include "host/editor/session.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

constexpr char kEntryName[] = "acrxEntryPoint";

std::wstring withoutExtension(std::wstring_view name) {
    return std::wstring(name.substr(0, name.rfind(L'.')));
}

// The last part of a path in either form.
std::wstring_view lastPart(std::wstring_view path) {
    const std::size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring_view::npos ? path : path.substr(slash + 1);
}

}  // namespace

bool Plugins::load(const std::filesystem::path& native, platform::Error& error) {
    auto plugin = std::make_unique<Plugin>();
    plugin->name = platform::fromUtf8(native.filename().u8string());
    const std::string shown = native.u8string();
    if (find(plugin->name)) {
        error.message = shown + ": " + translated("a plug-in of that name is loaded already");
        return false;
    }
    Plugin& loaded = *plugins_.emplace_back(std::move(plugin));
    {
        // What the library's own entry registers belongs to it already.
        const ApplicationScope scope(&loaded);
        loaded.library = platform::Library::load(native, error);
    }
    if (loaded.library) {
        loaded.entry = reinterpret_cast<Plugin::Entry>(loaded.library->symbol(kEntryName));
        if (!loaded.entry) error.message = shown + ": " + translated("not a plug-in, it has no %1", kEntryName);
    }
    if (!loaded.entry) {
        release(loaded, false);
        return false;
    }
    if (send(loaded, AcRx::kInitAppMsg) != AcRx::kRetOK) {
        release(loaded, false);
        error.message = shown + ": " + translated("the plug-in refused to start");
        return false;
    }
    for (AcApDocument* document : session_.documents.state().all())
        tellDocument(loaded, AcRx::kLoadDwgMsg, document);
    return true;
}

bool Plugins::unload(std::wstring_view name, platform::Error& error) {
    Plugin* plugin = find(name);
    const std::string shown = platform::toUtf8(name);
    if (!plugin) {
        error.message = shown + ": " + translated("no such plug-in is loaded");
    } else if (plugin->locked) {
        error.message = shown + ": " + translated("the plug-in is locked");
    } else if (isAtWork(plugin) || session_.isRunningCommandOf(plugin)) {
        error.message = shown + ": " + translated("the plug-in is at work");
    } else {
        release(*plugin, true);
        return true;
    }
    return false;
}

void Plugins::unloadAll() {
    while (!plugins_.empty())
        release(*plugins_.back(), true);
}

void Plugins::release(Plugin& plugin, bool initialised) {
    if (initialised) {
        for (AcApDocument* document : session_.documents.state().all())
            tellDocument(plugin, AcRx::kUnloadDwgMsg, document);
        send(plugin, AcRx::kUnloadAppMsg);
    }
    removeLeftovers(plugin);
    // The library's own exit may still call; the plug-in leaves the list only after that.
    const ApplicationScope scope(&plugin);
    plugin.library.reset();
    plugins_.erase(
        std::find_if(plugins_.begin(), plugins_.end(), [&](const auto& one) { return one.get() == &plugin; }));
}

// Whatever a plug-in leaves registered would be called in memory that is gone.
void Plugins::removeLeftovers(const Plugin& plugin) {
    const std::size_t count = session_.removeRegistrations(&plugin);
    if (count > 0)
        session_.output.error(
            plugin.name + L": " +
            translated(L"the plug-in left %1 commands, reactors or filters behind; they were removed", count));
}

void Plugins::tellDocument(AcRx::AppMsgCode message, AcApDocument* document) {
    std::vector<Plugin*> now;
    for (const auto& plugin : plugins_)
        now.push_back(plugin.get());
    for (Plugin* plugin : now)
        if (byHandle(plugin)) tellDocument(*plugin, message, document);
}

void Plugins::tellDocument(Plugin& plugin, AcRx::AppMsgCode message, AcApDocument* document) {
    AcApDocManager::State& documents = session_.documents.state();
    // A plug-in told before may have closed it.
    if (!documents.holds(document)) return;
    AcApDocument* const previous = documents.current();
    documents.makeCurrent(document);
    send(plugin, message);
    if (documents.holds(previous)) documents.makeCurrent(previous);
}

AcRx::AppRetCode Plugins::send(Plugin& plugin, AcRx::AppMsgCode message) {
    AcRx::AppRetCode answer = AcRx::kRetError;
    if (!plugin.entry) return answer;
    callOutside(&plugin, plugin.name.c_str(), [&] { answer = plugin.entry(message, &plugin); });
    return answer;
}

std::vector<std::wstring> Plugins::names() const {
    std::vector<std::wstring> names;
    for (const auto& plugin : plugins_)
        names.push_back(plugin->name);
    return names;
}

Plugin* Plugins::find(std::wstring_view name) const {
    name = lastPart(name);
    for (const auto& plugin : plugins_)
        if (platform::compareNoCase(plugin->name, name) == 0 ||
            platform::compareNoCase(withoutExtension(plugin->name), name) == 0)
            return plugin.get();
    return nullptr;
}

Plugin* Plugins::byHandle(const void* application) const {
    for (const auto& plugin : plugins_)
        if (plugin.get() == application) return plugin.get();
    return nullptr;
}

}  // namespace qrs::host::ed
