// One dialog as a window: an empty template in memory, and the controls laid out below one another when it opens.
#include "host/platform/win32/dialogwindow.h"

#include "host/platform/window.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

namespace qrs::platform {

namespace {

// Sizes in dialog units.
constexpr int kWidth = 320;
constexpr int kMargin = 7;
constexpr int kGap = 3;
constexpr int kLineHeight = 10;
constexpr int kFieldHeight = 13;
constexpr int kCaptionWidth = 80;
constexpr int kButtonWidth = 72;
constexpr int kListHeight = 120;
constexpr int kComboDrop = 120;
constexpr int kHeadingMargins = 16;  // in dots, both together
constexpr int kFirstNumber = 1000;   // of the controls

// The controls of the window that stand for one control of the dialog.
struct Shown {
    Shown(Control* shown, int first) : control(shown), number(first) {}
    Control* control;
    int number;
    HWND label = nullptr;
    HWND window = nullptr;
    std::vector<std::wstring> columns;
    std::wstring text;                  // of a field, as it was filled in last
    std::vector<std::wstring> offered;  // of a combo, likewise
};

class DialogWindow {
  public:
    explicit DialogWindow(Dialog& dialog) : dialog_(dialog) {
        int number = kFirstNumber;
        for (Control& control : dialog.controls())
            shown_.emplace_back(&control, number++);
    }

    ~DialogWindow() {
        if (window_) DestroyWindow(window_);
    }
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    int run() {
        const Template form = makeTemplate(DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
        owner_ = dialogOwner();
        before_ = openDialog;
        const INT_PTR result = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &form.head, owner_, &handle,
                                                       reinterpret_cast<LPARAM>(this));
        openDialog = before_;
        return result > 0 ? static_cast<int>(result) : kDialogCancel;
    }

    // Inside a window, which takes the size of the dialog.
    bool open(HWND parent) {
        isPane_ = true;
        const Template form = makeTemplate(DS_CONTROL | WS_CHILD | WS_VISIBLE);
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &form.head, parent, &handle,
                                   reinterpret_cast<LPARAM>(this));
        if (!window_) return false;
        RECT size{};
        GetWindowRect(window_, &size);
        OffsetRect(&size, -size.left, -size.top);
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(parent, GWL_STYLE));
        AdjustWindowRectEx(&size, style, FALSE, static_cast<DWORD>(GetWindowLongPtrW(parent, GWL_EXSTYLE)));
        SetWindowPos(parent, nullptr, 0, 0, size.right - size.left, size.bottom - size.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return true;
    }

    void update() {
        if (window_) show();
    }

    bool takeMessage(MSG& message) {
        const bool isOurs = window_ && (message.hwnd == window_ || IsChild(window_, message.hwnd));
        return isOurs && IsDialogMessageW(window_, &message);
    }

    // The dialog that is open; of several, the last.
    inline static HWND openDialog = nullptr;

  private:
    // A template without controls: menu, class and title follow it as empty texts, then the font.
    struct Template {
        DLGTEMPLATE head;
        WORD menu, windowClass, title, pointSize;
        wchar_t font[13];
    };

    Template makeTemplate(DWORD style) const {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
        InitCommonControlsEx(&classes);
        Template form{};
        form.head.style = style | DS_SETFONT;
        form.head.cx = kWidth;
        form.head.cy = static_cast<short>(height());
        form.pointSize = 9;
        std::copy_n(L"MS Shell Dlg", 13, form.font);
        return form;
    }

    static INT_PTR CALLBACK handle(HWND window, UINT message, WPARAM word, LPARAM value) {
        if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, static_cast<LONG_PTR>(value));
        auto* const self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
        if (!self) return FALSE;
        switch (message) {
            case WM_INITDIALOG:
                self->window_ = window;
                if (!self->isPane_) openDialog = window;
                self->build();
                // A pane does not take the focus from where the user types.
                return self->isPane_ ? FALSE : TRUE;
            case WM_DESTROY:
                self->window_ = nullptr;
                return FALSE;
            case WM_COMMAND:
                self->command(LOWORD(word), HIWORD(word));
                return TRUE;
            case WM_NOTIFY:
                self->notify(*reinterpret_cast<const NMHDR*>(value));
                return FALSE;
            default:
                return FALSE;
        }
    }

    static int heightOf(const Control& control) {
        switch (control.kind) {
            case ControlKind::Group:
                return control.caption.empty() ? 0 : kLineHeight + kGap;
            case ControlKind::List:
                return kLineHeight + kGap + kListHeight + kGap;
            case ControlKind::Button:
                return 0;  // side by side; counted by rows
            case ControlKind::Label:
                return kLineHeight + kGap;
            default:
                return kFieldHeight + kGap;
        }
    }

    static int buttonsPerRow() { return (kWidth - 2 * kMargin) / (kButtonWidth + kGap); }

    int height() const {
        int total = kMargin, buttons = 0;
        for (const Shown& one : shown_) {
            const bool isButton = one.control->kind == ControlKind::Button;
            if (isButton && buttons++ % buttonsPerRow() == 0) total += kFieldHeight + kGap;
            if (!isButton) buttons = 0;
            total += heightOf(*one.control);
        }
        return isPane_ ? total + kMargin : total + kGap + kFieldHeight + kMargin;
    }

    HWND make(const wchar_t* windowClass, const std::wstring& text, DWORD style, int x, int y, int width, int high,
              int number, DWORD extended = 0) {
        RECT place{x, y, x + width, y + high};
        MapDialogRect(window_, &place);
        HWND made =
            CreateWindowExW(extended, windowClass, text.c_str(), WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                            place.right - place.left, place.bottom - place.top, window_,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), GetModuleHandleW(nullptr), nullptr);
        SendMessageW(made, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)), TRUE);
        return made;
    }

    void build() {
        SetWindowTextW(window_, dialog_.title.c_str());
        int y = kMargin, buttons = 0;
        for (Shown& one : shown_) {
            if (one.control->kind == ControlKind::Button) {
                const int place = buttons++ % buttonsPerRow();
                if (place == 0) y += kFieldHeight + kGap;
                one.window = make(L"BUTTON", one.control->caption, WS_TABSTOP | BS_PUSHBUTTON,
                                  kMargin + place * (kButtonWidth + kGap), y - kFieldHeight - kGap, kButtonWidth,
                                  kFieldHeight, one.number);
                continue;
            }
            buttons = 0;
            buildOne(one, y);
            y += heightOf(*one.control);
        }
        if (!isPane_) buildEnd(y + kGap);
        show();
    }

    void buildEnd(int y) {
        make(L"BUTTON", dialog_.okCaption, WS_TABSTOP | BS_DEFPUSHBUTTON, kWidth - kMargin - 2 * kButtonWidth - kGap, y,
             kButtonWidth, kFieldHeight, IDOK);
        make(L"BUTTON", dialog_.cancelCaption, WS_TABSTOP | BS_PUSHBUTTON, kWidth - kMargin - kButtonWidth, y,
             kButtonWidth, kFieldHeight, IDCANCEL);
    }

    void buildOne(Shown& one, int y) {
        const Control& control = *one.control;
        const int width = kWidth - 2 * kMargin;
        switch (control.kind) {
            case ControlKind::Group:
            case ControlKind::Label:
                one.window = make(L"STATIC", {}, SS_LEFT | SS_NOPREFIX, kMargin, y, width, kLineHeight, one.number);
                break;
            case ControlKind::CheckBox:
                one.window = make(L"BUTTON", control.caption, WS_TABSTOP | BS_AUTOCHECKBOX, kMargin, y, width,
                                  kFieldHeight, one.number);
                break;
            case ControlKind::List:
                one.label = make(L"STATIC", control.caption, SS_LEFT | SS_NOPREFIX, kMargin, y, width, kLineHeight, -1);
                one.window =
                    make(WC_LISTVIEWW, {}, WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL,
                         kMargin, y + kLineHeight + kGap, width, kListHeight, one.number);
                ListView_SetExtendedListViewStyle(
                    one.window, LVS_EX_FULLROWSELECT | (control.listKind == ListKind::Many ? LVS_EX_CHECKBOXES : 0));
                break;
            case ControlKind::Edit:
            case ControlKind::Combo:
                one.label = make(L"STATIC", control.caption, SS_LEFT | SS_NOPREFIX, kMargin, y + 2, kCaptionWidth,
                                 kLineHeight, -1);
                buildField(one, y, width - kCaptionWidth);
                break;
            case ControlKind::Button:
                break;
        }
    }

    void buildField(Shown& one, int y, int width) {
        const int x = kMargin + kCaptionWidth;
        if (one.control->kind == ControlKind::Edit)
            one.window =
                make(L"EDIT", {}, WS_TABSTOP | ES_AUTOHSCROLL, x, y, width, kFieldHeight, one.number, WS_EX_CLIENTEDGE);
        else
            one.window = make(L"COMBOBOX", {},
                              WS_TABSTOP | WS_VSCROLL | (one.control->editable ? CBS_DROPDOWN : CBS_DROPDOWNLIST), x, y,
                              width, kComboDrop, one.number);
    }

    // Brings the window up to what the dialog's data says.
    void show() {
        filling_ = true;
        for (Shown& one : shown_)
            showOne(one);
        filling_ = false;
    }

    static void showOne(Shown& one) {
        const Control& control = *one.control;
        if (one.window) EnableWindow(one.window, control.enabled);
        switch (control.kind) {
            case ControlKind::Group:
                SetWindowTextW(one.window, control.caption.c_str());
                break;
            case ControlKind::Label:
                SetWindowTextW(one.window, (control.caption + control.text).c_str());
                break;
            case ControlKind::CheckBox:
                SendMessageW(one.window, BM_SETCHECK, control.checked ? BST_CHECKED : BST_UNCHECKED, 0);
                break;
            case ControlKind::List:
                showList(one);
                break;
            case ControlKind::Edit:
                fillField(one);
                break;
            case ControlKind::Combo:
                // Filling the list anew takes the field's text away.
                if (one.offered == control.choices && control.editable) {
                    fillField(one);
                    break;
                }
                one.offered = control.choices;
                one.text.clear();
                SendMessageW(one.window, CB_RESETCONTENT, 0, 0);
                for (const std::wstring& choice : control.choices)
                    SendMessageW(one.window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.c_str()));
                if (control.editable)
                    fillField(one);
                else
                    SendMessageW(one.window, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                 reinterpret_cast<LPARAM>(control.text.c_str()));
                break;
            case ControlKind::Button:
                break;
        }
    }

    // What was typed and not read yet stays, unless the dialog has given the field another text.
    static void fillField(Shown& one) {
        if (one.text == one.control->text) return;
        one.text = one.control->text;
        SetWindowTextW(one.window, one.text.c_str());
    }

    static void showList(Shown& one) {
        const Control& list = *one.control;
        if (one.columns != list.columns) {
            while (ListView_DeleteColumn(one.window, 0)) {
            }
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.cx = 100;
            for (std::size_t i = 0; i < list.columns.size(); ++i) {
                column.pszText = const_cast<wchar_t*>(list.columns[i].c_str());
                SendMessageW(one.window, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
            }
            one.columns = list.columns;
        }
        ListView_DeleteAllItems(one.window);
        for (std::size_t i = 0; i < list.rows.size(); ++i)
            showRow(one, static_cast<int>(i));
        for (std::size_t i = 0; i < list.columns.size(); ++i) {
            const int column = static_cast<int>(i);
            ListView_SetColumnWidth(one.window, column, LVSCW_AUTOSIZE_USEHEADER);
            // The system's own measure leaves a heading too little room in some fonts.
            const auto heading = reinterpret_cast<LPARAM>(list.columns[i].c_str());
            const int least =
                static_cast<int>(SendMessageW(one.window, LVM_GETSTRINGWIDTHW, 0, heading)) + kHeadingMargins;
            if (ListView_GetColumnWidth(one.window, column) < least) ListView_SetColumnWidth(one.window, column, least);
        }
    }

    static void showRow(const Shown& one, int row) {
        const Control& list = *one.control;
        const ListRow& data = list.rows[static_cast<std::size_t>(row)];
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        for (std::size_t i = 0; i < data.cells.size(); ++i) {
            item.iSubItem = static_cast<int>(i);
            item.pszText = const_cast<wchar_t*>(data.cells[i].c_str());
            SendMessageW(one.window, i == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW, i == 0 ? 0 : static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&item));
        }
        if (list.listKind == ListKind::Many) {
            ListView_SetCheckState(one.window, row, data.chosen);
        } else if (data.chosen) {
            ListView_SetItemState(one.window, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        }
    }

    static std::wstring textOf(HWND window) {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
        return text;
    }

    // Reads the fields that were typed into; the first one that cannot be taken is told and keeps the focus.
    bool readFields() {
        for (Shown& one : shown_) {
            Control& control = *one.control;
            const bool typed =
                control.kind == ControlKind::Edit || (control.kind == ControlKind::Combo && control.editable);
            const std::wstring text = typed ? textOf(one.window) : std::wstring();
            if (!typed || text == control.text) continue;
            const std::wstring refusal = control.refuse ? control.refuse(text) : std::wstring();
            if (!refusal.empty()) {
                MessageBoxW(window_, refusal.c_str(), dialog_.title.c_str(), MB_OK | MB_ICONEXCLAMATION);
                SetFocus(one.window);
                return false;
            }
            control.text = one.text = text;
            if (control.changed) control.changed();
        }
        return true;
    }

    void changed(Control& control) {
        if (control.changed) control.changed();
        afterAction();
    }

    void afterAction() {
        if (!window_) return;
        if (!dialog_.closing())
            show();
        else if (isPane_)
            hidePane();
        else
            EndDialog(window_, *dialog_.closing());
    }

    void hidePane() {
        dialog_.reopen();
        ShowWindow(GetParent(window_), SW_HIDE);
    }

    // Esc and Enter.
    void key(int number) {
        if (number == IDOK)
            pressOk();
        else
            EndDialog(window_, kDialogCancel);
    }

    void keyInPane(int number) {
        if (number == IDOK)
            readFields();
        else
            hidePane();
    }

    void command(int number, int notice) {
        if (number == IDCANCEL || number == IDOK) return isPane_ ? keyInPane(number) : key(number);
        if (filling_ || number < kFirstNumber) return;
        const std::size_t position = static_cast<std::size_t>(number - kFirstNumber);
        if (position >= shown_.size()) return;
        Shown& one = shown_[position];
        Control& control = *one.control;
        if (control.kind == ControlKind::Button && notice == BN_CLICKED) {
            press(control);
        } else if (control.kind == ControlKind::CheckBox && notice == BN_CLICKED) {
            control.checked = SendMessageW(one.window, BM_GETCHECK, 0, 0) == BST_CHECKED;
            changed(control);
        } else if (control.kind == ControlKind::Combo && !control.editable && notice == CBN_SELCHANGE) {
            const LRESULT chosen = SendMessageW(one.window, CB_GETCURSEL, 0, 0);
            if (chosen < 0) return;
            control.text = control.choices[static_cast<std::size_t>(chosen)];
            changed(control);
        }
    }

    void pressOk() {
        if (!readFields()) return;
        const std::wstring refusal = dialog_.refuseOk ? dialog_.refuseOk() : std::wstring();
        if (!dialog_.closing() && refusal.empty()) dialog_.close(kDialogOk);
        if (!refusal.empty() && refusal != L"\n")
            MessageBoxW(window_, refusal.c_str(), dialog_.title.c_str(), MB_OK | MB_ICONEXCLAMATION);
        afterAction();
    }

    void press(const Control& control) {
        if (!readFields() || !control.pressed) return;
        const bool stepsAside = control.stepsAside && !isPane_;
        if (stepsAside) stepAside(true);
        control.pressed();
        if (stepsAside) stepAside(false);
        afterAction();
    }

    // A modal dialog keeps its owner from the user, who is to pick there meanwhile.
    void stepAside(bool away) {
        ShowWindow(window_, away ? SW_HIDE : SW_SHOW);
        openDialog = away ? before_ : window_;
        if (!owner_) return;
        EnableWindow(owner_, away);
        SetActiveWindow(away ? owner_ : window_);
    }

    void notify(const NMHDR& notice) {
        if (filling_ || notice.code != static_cast<UINT>(LVN_ITEMCHANGED)) return;
        const auto found =
            std::find_if(shown_.begin(), shown_.end(), [&](const Shown& one) { return one.window == notice.hwndFrom; });
        if (found == shown_.end()) return;
        Control& list = *found->control;
        bool isOther = false;
        for (std::size_t i = 0; i < list.rows.size(); ++i) {
            const int row = static_cast<int>(i);
            const bool chosen = list.listKind == ListKind::Many
                                    ? ListView_GetCheckState(found->window, row) != 0
                                    : ListView_GetItemState(found->window, row, LVIS_SELECTED) != 0;
            isOther = isOther || chosen != list.rows[i].chosen;
            list.rows[i].chosen = chosen;
        }
        if (isOther && list.changed) changed(list);
    }

    Dialog& dialog_;
    std::vector<Shown> shown_;
    HWND window_ = nullptr;
    HWND owner_ = nullptr;   // while it is modal
    HWND before_ = nullptr;  // the dialog that was open before
    bool isPane_ = false;
    bool filling_ = false;  // what changes now is the window's doing, not the user's
};

class WindowPane : public Pane {
  public:
    explicit WindowPane(Dialog& dialog) : content_(dialog) {}
    bool open(HWND window) { return content_.open(window); }
    void update() override { content_.update(); }
    bool takeMessage(void* message) override { return content_.takeMessage(*static_cast<MSG*>(message)); }

  private:
    DialogWindow content_;
};

}  // namespace

int showDialogWindow(Dialog& dialog) {
    return DialogWindow(dialog).run();
}

HWND dialogOwner() {
    if (DialogWindow::openDialog) return DialogWindow::openDialog;
    void* const owner = windowOwner();
    return isWindow(owner) ? static_cast<HWND>(owner) : GetActiveWindow();
}

std::unique_ptr<Pane> makePane(Dialog& dialog, HWND window) {
    auto pane = std::make_unique<WindowPane>(dialog);
    return pane->open(window) ? std::move(pane) : nullptr;
}

}  // namespace qrs::platform
