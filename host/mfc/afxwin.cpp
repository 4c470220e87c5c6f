// Windows of the plug-in interface, and the libraries that take part in the framework.
#include "afxwin.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "afxdllx.h"
#include "host/platform/callrecord.h"
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

LPCWSTR AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
    static std::set<std::wstring> names;
    return names.insert(qrs::platform::plainWindowClass(style, cursor, background, icon)).first->c_str();
}

BOOL CWnd::CreateEx(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, const RECT& place, CWnd* parent,
                    UINT number, LPVOID) {
    if (m_hWnd) return FALSE;
    qrs::platform::WindowLook look;
    look.windowClass = className ? className : L"";
    look.title = title ? title : L"";
    look.style = style;
    look.extendedStyle = extendedStyle;
    look.place = {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
                  static_cast<int>(place.bottom)};
    look.number = number;
    m_hWnd = static_cast<HWND>(qrs::platform::createWindow(look, parent ? parent->m_hWnd : nullptr));
    return m_hWnd != nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    const BOOL destroyed = qrs::platform::destroyWindow(std::exchange(m_hWnd, nullptr));
    PostNcDestroy();
    return destroyed;
}

BOOL CWnd::ShowWindow(int command) {
    return qrs::platform::showWindow(m_hWnd, command);
}

BOOL CWnd::IsWindowVisible() const {
    return qrs::platform::isWindowShown(m_hWnd);
}

void CWnd::GetWindowRect(RECT* place) const {
    qrs::platform::WindowPlace there;
    if (!qrs::platform::windowPlace(m_hWnd, there)) return;
    place->left = there.left;
    place->top = there.top;
    place->right = there.right;
    place->bottom = there.bottom;
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
