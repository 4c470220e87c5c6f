// Message boxes of the plug-in interface.
#include "afxwin.h"

#include "host/platform/dialog.h"

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
