// A dialog as a class of its own: described by data, shown as a window or asked as text.
//
//     class CGreetingDlg : public qrs::platform::Form {
//       public:
//         CGreetingDlg() : Form(L"Greeting") {}
//         bool m_loud = false;
//
//       protected:
//         void describe() override { loud_ = &form().addCheckBox(L"Loud"); }
//         void pressOk() override {
//             m_loud = loud_->checked;
//             Form::pressOk();
//         }
//
//       private:
//         qrs::platform::Control* loud_ = nullptr;
//     };
//
//     CGreetingDlg dialog;
//     if (dialog.show() == qrs::platform::kDialogOk) greet(dialog.m_loud);
//
// As a window it is modal over the window of setWindowOwner (host/platform/window.h).
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/platform/dialog.h"

namespace qrs::platform {

class QRS_HOST_PORT Form {
  public:
    explicit Form(std::wstring title);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    // Shows the form until it ends: kDialogOk, kDialogCancel or what end was given. Each call describes it anew.
    virtual int show();

  protected:
    // Adds the controls to form(), which is empty then. A form that ends here is not shown.
    virtual void describe() = 0;
    // OK was pressed: ends the form. An override that does not call this keeps it open and has told why.
    virtual void pressOk() { end(kDialogOk); }
    // The form ends with this result as soon as the running action returns.
    void end(int result);

    Dialog& form() { return *form_; }

  private:
    std::wstring title_;
    std::unique_ptr<Dialog> form_;
    std::optional<int> ended_;
};

}  // namespace qrs::platform
