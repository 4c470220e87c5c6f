// The plug-ins that are loaded.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"
#include "host/platform/library.h"
#include "rxregsvc.h"

class AcApDocument;

namespace qrs::host::ed {

class Session;

// One loaded plug-in; its address is the application handle it is given.
struct Plugin {
    using Entry = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

    std::wstring name;  // of its file, without folder
    std::unique_ptr<platform::Library> library;
    Entry entry = nullptr;
    bool locked = true;
};

class Plugins {
  public:
    explicit Plugins(Session& session) : session_(session) {}

    bool load(const std::filesystem::path& native, platform::Error& error);
    bool unload(std::wstring_view name, platform::Error& error);
    // Newest first, locked ones too.
    void unloadAll();
    // One of the two messages about a drawing, to every plug-in in the order they were loaded.
    void tellDocument(AcRx::AppMsgCode message, AcApDocument* document);

    std::vector<std::wstring> names() const;
    // By file name, extension optional; null when it is not loaded.
    Plugin* find(std::wstring_view name) const;
    // Null when the handle is none of a loaded plug-in.
    Plugin* byHandle(const void* application) const;

  private:
    AcRx::AppRetCode send(Plugin& plugin, AcRx::AppMsgCode message);
    void tellDocument(Plugin& plugin, AcRx::AppMsgCode message, AcApDocument* document);
    void release(Plugin& plugin, bool initialised);
    void removeLeftovers(const Plugin& plugin);

    Session& session_;
    std::vector<std::unique_ptr<Plugin>> plugins_;
};

}  // namespace qrs::host::ed
