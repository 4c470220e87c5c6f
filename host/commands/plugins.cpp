// ARX: lists, loads and unloads plug-ins.
#include "acedads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostapp.h"
#include "host/platform/files.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

void printPlugins() {
    const std::vector<std::wstring> names = Application::current()->pluginNames();
    if (names.empty()) acedPrompt(translated(L"\nNo plug-ins are loaded.").c_str());
    for (const std::wstring& name : names)
        acedPrompt((L"\n" + name).c_str());
}

// The typed path itself, or the file of that name on the support search path. Loading looks beside the program, too.
std::wstring findPlugin(const std::wstring& typed) {
    const std::wstring inner = platform::innerFromTyped(typed);
    if (platform::fileExists(inner)) return inner;
    ACHAR found[4096] = {};
    return acedFindFile(inner.c_str(), found) == RTNORM ? found : inner;
}

void load(const std::wstring& typed) {
    platform::Error error;
    if (!Application::current()->loadPlugin(platform::nativePath(findPlugin(typed)), error)) return failWith(error);
    acedPrompt(translated(L"\n%1 successfully loaded.", typed).c_str());
}

void unload(const std::wstring& name) {
    platform::Error error;
    if (!Application::current()->unloadPlugin(name, error)) return failWith(error);
    acedPrompt(translated(L"\n%1 successfully unloaded.", name).c_str());
}

}  // namespace

void managePlugins() {
    const std::optional<std::wstring> option =
        askKeyword(L"? Load Unload", translated(L"\nEnter an option [?/Load/Unload]: "));
    if (!option || option->empty()) return;
    if (*option == L"?") return printPlugins();
    const bool loads = *option == L"Load";
    const std::optional<std::wstring> name = askText(loads ? translated(L"\nEnter plug-in file name to load: ")
                                                           : translated(L"\nEnter plug-in file name to unload: "),
                                                     Blanks::Kept, loads ? Wanted::Plugin : Wanted::LoadedPlugin);
    if (!name || name->empty()) return;
    loads ? load(*name) : unload(*name);
}

}  // namespace qrs::host::commands
