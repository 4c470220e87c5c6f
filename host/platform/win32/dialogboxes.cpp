// Message boxes and folder dialogs of the system, and who shows dialogs as windows.
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <memory>

#include "host/platform/inside/dialogwindow.h"
#include "host/platform/win32/dialogwindow.h"

namespace qrs::platform {

namespace {

UINT buttonsOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::OkCancel:
            return MB_OKCANCEL;
        case MessageButtons::YesNo:
            return MB_YESNO;
        case MessageButtons::YesNoCancel:
            return MB_YESNOCANCEL;
        default:
            return MB_OK;
    }
}

UINT iconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Error:
            return MB_ICONERROR;
        case MessageIcon::Question:
            return MB_ICONQUESTION;
        case MessageIcon::Warning:
            return MB_ICONEXCLAMATION;
        case MessageIcon::Information:
            return MB_ICONINFORMATION;
        default:
            return 0;
    }
}

// The shell's lists of folders live on its components.
class ShellComponents {
  public:
    ShellComponents() : started_(SUCCEEDED(CoInitialize(nullptr))) {}
    ~ShellComponents() {
        if (started_) CoUninitialize();
    }
    ShellComponents(const ShellComponents&) = delete;
    ShellComponents& operator=(const ShellComponents&) = delete;

  private:
    bool started_;
};

struct FreeItem {
    void operator()(ITEMIDLIST* item) const { CoTaskMemFree(item); }
};

// Of any length.
std::optional<std::wstring> pathOf(const ITEMIDLIST& item) {
    wchar_t* name = nullptr;
    if (FAILED(SHGetNameFromIDList(&item, SIGDN_FILESYSPATH, &name))) return std::nullopt;
    std::wstring path = name;
    CoTaskMemFree(name);
    return path;
}

class WindowPresenter : public DialogPresenter {
  public:
    int showDialog(Dialog& dialog) override { return showDialogWindow(dialog); }
    bool hasPanes() const override { return true; }
    std::unique_ptr<Pane> showPane(Dialog& dialog, void* window) override {
        return makePane(dialog, static_cast<HWND>(window));
    }

    int showMessage(const MessageQuestion& question) override {
        const UINT type = buttonsOf(question.buttons) | iconOf(question.icon) |
                          static_cast<UINT>(question.defaultButton) * MB_DEFBUTTON2;
        const wchar_t* const title = question.title.empty() ? L"qrs_pipeSystem" : question.title.c_str();
        const int pressed = MessageBoxW(dialogOwner(), question.text.c_str(), title, type | MB_TASKMODAL);
        return pressed == 0 ? escapeOf(question.buttons) : pressed;
    }

    std::optional<std::wstring> chooseFolder(const std::wstring& title) override {
        const ShellComponents components;
        BROWSEINFOW info{};
        info.hwndOwner = dialogOwner();
        info.lpszTitle = title.c_str();
        info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
        const std::unique_ptr<ITEMIDLIST, FreeItem> item(SHBrowseForFolderW(&info));
        return item ? pathOf(*item) : std::nullopt;
    }
};

}  // namespace

DialogPresenter* windowPresenter() {
    static WindowPresenter presenter;
    return &presenter;
}

}  // namespace qrs::platform
