// Windows of the plug-in interface, and the libraries that take part in the framework.
#include "afxwin.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "afxdllx.h"
#include "host/platform/callrecord.h"
#include "host/platform/library.h"
#include "host/platform/window.h"

using qrs::platform::recordCall;

namespace {

HINSTANCE resourceHandle = nullptr;

std::vector<CDynLinkLibrary*>& libraries() {
    static std::vector<CDynLinkLibrary*> all;
    return all;
}

}  // namespace

HINSTANCE AfxGetResourceHandle() {
    return resourceHandle;
}

void AfxSetResourceHandle(HINSTANCE module) {
    resourceHandle = module;
}

#if !defined(_WIN32)
BOOL IsWindow(HWND window) {
    return qrs::platform::isWindow(window);
}
#endif

CWnd::~CWnd() {
    // Not DestroyWindow: the object is on its way out and must not delete itself again.
    if (m_hWnd) qrs::platform::destroyWindow(m_hWnd);
}

BOOL CWnd::Create(LPCWSTR, LPCWSTR title, DWORD, const RECT&, CWnd* parent, UINT) {
    if (m_hWnd) return FALSE;
    m_hWnd = static_cast<HWND>(qrs::platform::createWindow(title ? title : L"", parent ? parent->m_hWnd : nullptr));
    return m_hWnd != nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    const BOOL destroyed = qrs::platform::destroyWindow(std::exchange(m_hWnd, nullptr));
    PostNcDestroy();
    return destroyed;
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& extension, HMODULE module) {
    recordCall("AfxInitExtensionModule");
    if (!extension.bInitialized) extension = {TRUE, module, module};
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& extension, BOOL all) {
    recordCall("AfxTermExtensionModule");
    if (!extension.bInitialized) return;
    const std::vector<CDynLinkLibrary*> entered = libraries();
    for (CDynLinkLibrary* library : entered) {
        if (all || library->m_hModule == extension.hModule) delete library;
    }
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& extension, BOOL system)
    : m_hModule(extension.hModule), m_hResource(extension.hResource), m_bSystem(system) {
    recordCall("CDynLinkLibrary::CDynLinkLibrary");
    libraries().push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
    libraries().erase(std::remove(libraries().begin(), libraries().end(), this), libraries().end());
}

#if !defined(_WIN32)
AfxLibraryEntry::AfxLibraryEntry(Entry entry) : entry_(entry) {
    if (!entry_(reinterpret_cast<HINSTANCE>(this), DLL_PROCESS_ATTACH, nullptr)) qrs::platform::refuseLibraryLoad();
}

AfxLibraryEntry::~AfxLibraryEntry() {
    entry_(reinterpret_cast<HINSTANCE>(this), DLL_PROCESS_DETACH, nullptr);
}
#endif
