// A library with an entry, as a plug-in has it; it answers what its build says.
#include "afxdllx.h"
#include "host/platform/libraryentry.h"

static AFX_EXTENSION_MODULE extension = {FALSE, nullptr, nullptr};

extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        AfxInitExtensionModule(extension, instance);
        new CDynLinkLibrary(extension);
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(extension);
    }
    return ENTRY_ANSWER;
}
QRS_LIBRARY_ENTRY(DllMain)

extern "C" QRS_HOST_PORT HMODULE entryModule();
HMODULE entryModule() {
    return extension.hModule;
}
