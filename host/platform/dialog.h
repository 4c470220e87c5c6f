// Dialogs as data: described once, shown as a window or asked as text.
//
//     Dialog dialog(L"打开图层");
//     Control& list = dialog.addList(L"关闭的图层", {L"图层名", L"颜色"}, ListKind::Many);
//     list.addRow({L"给排-洁具", L"7"});
//     Control& all = dialog.addCheckBox(L"全部打开");
//     if (showDialog(dialog) != kDialogOk) return;
//     if (all.checked || list.rows[0].chosen) ...
//
// References to controls stay valid as long as their dialog. What the user did stands in the controls when showDialog
// returns, also when the dialog was cancelled: callers look at its result first.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

// What ends dialogs and message boxes; the values of the framework's IDOK and its fellows.
constexpr int kDialogOk = 1;
constexpr int kDialogCancel = 2;
constexpr int kDialogYes = 6;
constexpr int kDialogNo = 7;

enum class ControlKind {
    Group,     // a box with a caption around the controls up to the next group or endGroup
    Label,     // a text
    CheckBox,  // checked
    List,      // rows under columns, one or many of them chosen
    Edit,      // a text to be typed
    Combo,     // a text out of choices, or typed when it is editable
    Button,    // an action
};

// One: choosing a row drops the one chosen before. Many: every row has a check mark of its own. None: rows only show.
enum class ListKind { None, One, Many };

struct ListRow {
    std::vector<std::wstring> cells;  // one per column; the first one is the row's name
    bool chosen = false;
};

struct QRS_HOST_PORT Control {
    ControlKind kind = ControlKind::Label;
    std::wstring caption;  // what stands on or before it, and what it is called by in text form
    bool enabled = true;   // a control that is not is shown and cannot be changed

    bool checked = false;               // CheckBox
    std::wstring text;                  // Edit, Combo
    std::vector<std::wstring> choices;  // Combo
    bool editable = false;              // Combo: other texts than choices may be typed

    ListKind listKind = ListKind::None;  // List
    std::vector<std::wstring> columns;
    std::vector<ListRow> rows;

    // Edit, Combo: why a new text cannot be taken, one sentence; empty when it can.
    std::function<std::wstring(const std::wstring& text)> refuse;
    // After the user changed it. May change any control of the dialog, and close it.
    std::function<void()> changed;
    // Button: what it does.
    std::function<void()> pressed;
    // Button: the dialog steps aside meanwhile, so that the action can ask at the command line or let the user pick.
    bool stepsAside = false;

    ListRow& addRow(std::vector<std::wstring> cells, bool chosen = false);
    // Position of the first chosen row; nothing when none is.
    std::optional<std::size_t> chosenRow() const;
    // Chooses this row alone; a position outside chooses none.
    void chooseRow(std::size_t position);
};

class QRS_HOST_PORT Dialog {
  public:
    explicit Dialog(std::wstring text) : title(std::move(text)) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    std::wstring title;
    std::wstring okCaption = L"确定";
    std::wstring cancelCaption = L"取消";
    // Asked before OK closes the dialog: why it cannot, one sentence; empty when it can. An answer of only "\n" keeps
    // the dialog open without a word: the reason was told already.
    std::function<std::wstring()> refuseOk;

    // Controls are shown in the order they are added.
    Control& add(ControlKind kind, std::wstring caption);
    void beginGroup(std::wstring caption) { add(ControlKind::Group, std::move(caption)); }
    // What follows stands outside of the group.
    void endGroup() { add(ControlKind::Group, std::wstring()); }
    Control& addLabel(std::wstring text) { return add(ControlKind::Label, std::move(text)); }
    Control& addCheckBox(std::wstring caption, bool checked = false);
    Control& addList(std::wstring caption, std::vector<std::wstring> columns, ListKind kind);
    Control& addEdit(std::wstring caption, std::wstring text = {});
    Control& addCombo(std::wstring caption, std::vector<std::wstring> choices, std::wstring text,
                      bool editable = false);
    Control& addButton(std::wstring caption, std::function<void()> pressed, bool stepsAside = false);

    std::deque<Control>& controls() { return controls_; }
    const std::deque<Control>& controls() const { return controls_; }

    // From inside an action, or refuseOk: the dialog ends with this result; refuseOk is not asked (again).
    void close(int result) { closing_ = result; }
    std::optional<int> closing() const { return closing_; }
    // Before it is shown again.
    void reopen() { closing_.reset(); }

  private:
    std::deque<Control> controls_;
    std::optional<int> closing_;
};

enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageIcon { None, Error, Question, Warning, Information };

struct MessageQuestion {
    std::wstring text;
    std::wstring title;
    MessageButtons buttons = MessageButtons::Ok;
    MessageIcon icon = MessageIcon::None;
    int defaultButton = 0;  // position of the button that Enter presses
};

// A dialog that stays on the screen while commands run: its controls inside a window. It has no buttons that close it:
// closing() hides the window. It goes before its dialog does; the window may go first.
class QRS_HOST_PORT Pane {
  public:
    virtual ~Pane();
    // Brings what is seen up to what the dialog's data says.
    virtual void update() = 0;
    // Takes a message of the system's message loop (a MSG) that is meant for the pane's controls: Tab and the like.
    virtual bool takeMessage(void* message) = 0;
};

// How dialogs are shown. Paths are in the inner form.
class QRS_HOST_PORT DialogPresenter {
  public:
    virtual ~DialogPresenter();
    // Whether dialogs can stay beside commands. Where they are asked as text, they cannot.
    virtual bool hasPanes() const { return false; }
    // Lays the dialog out inside a window, which takes the size that it needs. Null when that cannot be done.
    virtual std::unique_ptr<Pane> showPane(Dialog& dialog, void* window);
    virtual int showDialog(Dialog& dialog) = 0;
    virtual int showMessage(const MessageQuestion& question) = 0;
    virtual std::optional<std::wstring> chooseFolder(const std::wstring& title) = 0;
};

// Who shows dialogs from now on; null: windows, where the system has them. Returns who did before.
QRS_HOST_PORT DialogPresenter* setDialogPresenter(DialogPresenter* presenter);

// Shows a dialog until it is closed: kDialogOk, kDialogCancel, or what an action closed it with. kDialogCancel, too,
// where nobody can show it.
QRS_HOST_PORT int showDialog(Dialog& dialog);

// As the presenter answers; false and null, too, where there is none.
QRS_HOST_PORT bool hasPanes();
QRS_HOST_PORT std::unique_ptr<Pane> showPane(Dialog& dialog, void* window);

// The button that was pressed. Esc, and the lack of anybody to show it, press Cancel or, where there is none, No, or
// OK.
QRS_HOST_PORT int showMessage(const MessageQuestion& question);

// An existing folder, inner form, without a backslash at its end unless it is a root; nothing when cancelled.
QRS_HOST_PORT std::optional<std::wstring> chooseFolder(const std::wstring& title);

}  // namespace qrs::platform
