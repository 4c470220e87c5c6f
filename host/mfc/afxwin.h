// Windows of the plug-in interface: CWnd, message boxes, and the module handles.
#pragma once

#include "afx.h"

#ifndef MB_OK
#define MB_OK 0x0u
#define MB_OKCANCEL 0x1u
#define MB_YESNOCANCEL 0x3u
#define MB_YESNO 0x4u
#define MB_ICONERROR 0x10u
#define MB_ICONSTOP MB_ICONERROR
#define MB_ICONQUESTION 0x20u
#define MB_ICONEXCLAMATION 0x30u
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONINFORMATION 0x40u
#define MB_DEFBUTTON1 0x0u
#define MB_DEFBUTTON2 0x100u
#define MB_DEFBUTTON3 0x200u
#endif
#ifndef WS_POPUP
#define WS_POPUP 0x80000000u
#define WS_CAPTION 0x00C00000u
#define WS_SYSMENU 0x00080000u
#define WS_CLIPCHILDREN 0x02000000u
#define WS_EX_TOOLWINDOW 0x00000080u
#define SW_HIDE 0
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define COLOR_BTNFACE 15
#endif
#ifndef IDOK
#define IDOK 1
#define IDCANCEL 2
#define IDYES 6
#define IDNO 7
#endif

// A box with a text and buttons: MB_OK, MB_OKCANCEL, MB_YESNO or MB_YESNOCANCEL, with an icon (MB_ICON...) and a
// default button (MB_DEFBUTTON...) if wanted; other flags are ignored. The button's number (IDOK, IDCANCEL, IDYES,
// IDNO); Esc is Cancel or, where there is none, No, or OK.
QRS_HOST_PORT int AfxMessageBox(LPCWSTR text, UINT type = MB_OK, UINT help = 0);

// The module whose resources are found first; null before anything set it.
QRS_HOST_PORT HINSTANCE AfxGetResourceHandle();
QRS_HOST_PORT void AfxSetResourceHandle(HINSTANCE module);

// TRUE while the window behind the handle exists; null and stale handles answer FALSE.
#if defined(_WIN32)
extern "C" __declspec(dllimport) BOOL WINAPI IsWindow(HWND window);
#else
QRS_HOST_PORT BOOL IsWindow(HWND window);
#endif

// The name of a window class whose windows look like that; the framework answers their messages. Styles CS_..., the
// background a brush or, as one, a colour of the system and 1. The text stays good.
QRS_HOST_PORT LPCWSTR AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                                          HICON icon = nullptr);

// A window and the object that stands for it. The window goes with the object.
class QRS_HOST_PORT CWnd : public CObject {
  public:
    HWND m_hWnd = nullptr;

    CWnd() = default;
    ~CWnd() override;

    // FALSE when the object has a window already or the system makes none. Class name (null: a plain one), style and
    // place say how it looks on a screen; without one only its life counts, and whether it is shown. number: of a
    // window inside its parent.
    virtual BOOL CreateEx(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, const RECT& place,
                          CWnd* parent, UINT number, LPVOID parameter = nullptr);
    // FALSE when there is no window. Calls PostNcDestroy last, which may delete the object.
    virtual BOOL DestroyWindow();

    // command: SW_HIDE, SW_SHOW and their like. Whether it was to be seen before.
    BOOL ShowWindow(int command);
    // FALSE as well while a window that it lies in is hidden.
    BOOL IsWindowVisible() const;
    // In dots of the screen; there must be a window.
    void GetWindowRect(RECT* place) const;

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

  protected:
    virtual void PostNcDestroy() {}
};

// The inside of a frame, where a document is shown.
class QRS_HOST_PORT CView : public CWnd {};

// The window of a program, with its menus and bars; of one that shows several documents, too.
class QRS_HOST_PORT CFrameWnd : public CWnd {};
class QRS_HOST_PORT CMDIFrameWnd : public CFrameWnd {};
