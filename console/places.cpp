// Where the program's own files lie.
#include "console/places.h"

#include <algorithm>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/process.h"
#include "host/platform/text.h"

namespace qrs::console {

namespace {

#if defined(_WIN32)
// The editor's own extension first, so that one folder can serve both.
constexpr const char* kModuleNames[] = {"qrs_pipeSystem.arx", "qrs_pipeSystem.dll"};
#else
constexpr const char* kModuleNames[] = {"qrs_pipeSystem.so"};
#endif

bool isFile(const std::filesystem::path& native) {
    return platform::fileExists(platform::innerPath(native));
}

std::filesystem::path module() {
    for (const std::filesystem::path& folder : pluginFolders())
        for (const char* name : kModuleNames)
            if (isFile(folder / name)) return folder / name;
    // Loading it tells that it is missing.
    return platform::programFolder() / kModuleNames[0];
}

bool isModule(const std::filesystem::path& plugin) {
    const std::wstring name = platform::fromUtf8(plugin.filename().u8string());
    return std::any_of(std::begin(kModuleNames), std::end(kModuleNames), [&](const char* module) {
        return platform::compareNoCase(name, platform::fromUtf8(module)) == 0;
    });
}

}  // namespace

std::wstring innerFolder(const std::filesystem::path& folder) {
    return platform::innerPath(std::filesystem::absolute(folder).lexically_normal());
}

std::wstring systemFolder(const Options& options) {
    return innerFolder(options.system ? *options.system
                                      : platform::programFolder() / ".." / "share" / "qrs_pipeSystem");
}

std::vector<std::filesystem::path> pluginFolders() {
    const std::filesystem::path folder = platform::programFolder();
    return {folder, folder / ".." / "lib" / "qrs_pipeSystem"};
}

std::vector<std::filesystem::path> pluginsToLoad(const Options& options) {
    std::vector<std::filesystem::path> plugins;
    if (!options.withoutModule && std::none_of(options.plugins.begin(), options.plugins.end(), isModule))
        plugins.push_back(module());
    for (const std::filesystem::path& plugin : options.plugins)
        plugins.push_back(plugin);
    return plugins;
}

}  // namespace qrs::console
