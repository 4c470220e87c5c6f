// Windows of the plug-in interface: CWnd, CFrameWnd, and the module handles.
#pragma once

#include "afx.h"

// The module whose resources are found first; null before anything set it.
QRS_HOST_PORT HINSTANCE AfxGetResourceHandle();
QRS_HOST_PORT void AfxSetResourceHandle(HINSTANCE module);

// TRUE while the window behind the handle exists; null and stale handles answer FALSE.
#if defined(_WIN32)
extern "C" __declspec(dllimport) BOOL WINAPI IsWindow(HWND window);
#else
QRS_HOST_PORT BOOL IsWindow(HWND window);
#endif

// A window and the object that stands for it. The window goes with the object.
class QRS_HOST_PORT CWnd : public CObject {
  public:
    HWND m_hWnd = nullptr;

    CWnd() = default;
    ~CWnd() override;

    // FALSE when the object has a window already or the system makes none. Class name, style, place and number say
    // how it looks on a screen; without one only the title and the life of the window count.
    virtual BOOL Create(LPCWSTR className, LPCWSTR title, DWORD style, const RECT& place, CWnd* parent, UINT number);
    // FALSE when there is no window. Calls PostNcDestroy last, which may delete the object.
    virtual BOOL DestroyWindow();

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }
    BOOL Attach(HWND window);
    HWND Detach();

    void SetWindowText(LPCWSTR text);
    void GetWindowText(CString& text) const;

  protected:
    virtual void PostNcDestroy() {}
};

// The inside of a frame, where a document is shown.
class QRS_HOST_PORT CView : public CWnd {};

// A frame; as the framework has it, it is made by new and deletes itself when its window goes.
class QRS_HOST_PORT CFrameWnd : public CWnd {
  protected:
    void PostNcDestroy() override { delete this; }
};
