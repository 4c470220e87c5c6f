// Windows of the plug-in interface: CWnd, CDialog, message boxes, and the module handles.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "afx.h"
#include "host/platform/dialog.h"

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

  protected:
    virtual void PostNcDestroy() {}
};

// The inside of a frame, where a document is shown.
class QRS_HOST_PORT CView : public CWnd {};

// A modal dialog whose controls are described by data instead of a resource:
//
//     class CGreetingDlg : public CDialog {
//       public:
//         CGreetingDlg() : CDialog(L"Greeting") {}
//         bool m_loud = false;
//       protected:
//         BOOL OnInitDialog() override { loud_ = &form().addCheckBox(L"Loud"); return TRUE; }
//         void OnOK() override { m_loud = loud_->checked; CDialog::OnOK(); }
//       private:
//         qrs::platform::Control* loud_ = nullptr;
//     };
class QRS_HOST_PORT CDialog : public CWnd {
  public:
    explicit CDialog(LPCWSTR title = L"");

    // Shows the dialog until it ends: IDOK, IDCANCEL or what EndDialog was given. Each call builds it anew.
    virtual INT_PTR DoModal();

  protected:
    // Adds the controls to form(), which is empty then. A dialog that ends here is not shown.
    virtual BOOL OnInitDialog() { return TRUE; }
    // OK was pressed: ends the dialog. An override that does not call this keeps it open and has told why.
    virtual void OnOK() { EndDialog(IDOK); }
    // The dialog was cancelled.
    virtual void OnCancel() { EndDialog(IDCANCEL); }
    // The dialog ends with this result as soon as the running action returns.
    void EndDialog(int result);

    qrs::platform::Dialog& form() { return *form_; }

  private:
    std::wstring formTitle_;
    std::unique_ptr<qrs::platform::Dialog> form_;
    std::optional<int> ended_;
};
