// Dialogs and message boxes of the plug-in interface, over dialogs described by data.
#include "afxwin.h"

using namespace qrs::platform;

namespace {

constexpr UINT kButtonMask = 0xF;
constexpr UINT kIconMask = 0xF0;
constexpr UINT kDefaultMask = 0xF00;

MessageButtons buttonsOf(UINT type) {
    switch (type & kButtonMask) {
        case MB_OKCANCEL:
            return MessageButtons::OkCancel;
        case MB_YESNOCANCEL:
            return MessageButtons::YesNoCancel;
        case MB_YESNO:
            return MessageButtons::YesNo;
        default:
            return MessageButtons::Ok;
    }
}

MessageIcon iconOf(UINT type) {
    switch (type & kIconMask) {
        case MB_ICONERROR:
            return MessageIcon::Error;
        case MB_ICONQUESTION:
            return MessageIcon::Question;
        case MB_ICONEXCLAMATION:
            return MessageIcon::Warning;
        case MB_ICONINFORMATION:
            return MessageIcon::Information;
        default:
            return MessageIcon::None;
    }
}

}  // namespace

int AfxMessageBox(LPCWSTR text, UINT type, UINT) {
    MessageQuestion question;
    question.text = text ? text : L"";
    question.buttons = buttonsOf(type);
    question.icon = iconOf(type);
    question.defaultButton = static_cast<int>((type & kDefaultMask) / MB_DEFBUTTON2);
    return showMessage(question);
}

CDialog::CDialog(LPCWSTR title) : formTitle_(title ? title : L"") {}

INT_PTR CDialog::DoModal() {
    form_ = std::make_unique<Dialog>(formTitle_);
    ended_.reset();
    // Its result only says who takes the focus.
    OnInitDialog();
    // OnOK decides itself whether the dialog ends.
    form_->refuseOk = [this] {
        OnOK();
        return std::wstring(ended_ ? L"" : L"\n");
    };
    if (!ended_) showDialog(*form_);
    if (!ended_) OnCancel();
    return ended_.value_or(IDCANCEL);
}

void CDialog::EndDialog(int result) {
    ended_ = result;
    if (form_) form_->close(result);
}
