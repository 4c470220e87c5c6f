// What a plug-in library needs to take part in the framework.
//
//     static AFX_EXTENSION_MODULE extension = {FALSE, nullptr, nullptr};
//
//     extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
//         if (reason == DLL_PROCESS_ATTACH) {
//             if (!AfxInitExtensionModule(extension, instance)) return 0;
//             new CDynLinkLibrary(extension);
//         } else if (reason == DLL_PROCESS_DETACH) {
//             AfxTermExtensionModule(extension);
//         }
//         return 1;
//     }
//     QRS_LIBRARY_ENTRY(DllMain)  // host/platform/libraryentry.h
#pragma once

#include "afxwin.h"

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

// TRUE; fills the structure unless it is initialised already.
QRS_HOST_PORT BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& extension, HMODULE module);
// Deletes the CDynLinkLibrary objects of the module (all of its libraries with all). The flag in the structure stays.
QRS_HOST_PORT void AfxTermExtensionModule(AFX_EXTENSION_MODULE& extension, BOOL all = FALSE);

// Enters a library among those whose resources are searched. Made by new; AfxTermExtensionModule deletes it.
class QRS_HOST_PORT CDynLinkLibrary : public CObject {
  public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& extension, BOOL system = FALSE);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
};
