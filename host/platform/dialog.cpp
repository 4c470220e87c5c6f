// Dialogs as data: their controls, and who shows them.
#include "host/platform/dialog.h"

#include <utility>

#include "host/platform/inside/dialogwindow.h"

namespace qrs::platform {

namespace {

DialogPresenter* thePresenter = nullptr;

DialogPresenter* presenter() {
    return thePresenter ? thePresenter : windowPresenter();
}

}  // namespace

Pane::~Pane() = default;

DialogPresenter::~DialogPresenter() = default;

std::unique_ptr<Pane> DialogPresenter::showPane(Dialog&, void*) {
    return nullptr;
}

ListRow& Control::addRow(std::vector<std::wstring> cells, bool chosen) {
    cells.resize(columns.size());
    rows.push_back({std::move(cells), chosen});
    return rows.back();
}

std::optional<std::size_t> Control::chosenRow() const {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].chosen) return i;
    return std::nullopt;
}

void Control::chooseRow(std::size_t position) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].chosen = i == position;
}

Control& Dialog::add(ControlKind kind, std::wstring caption) {
    Control& control = controls_.emplace_back();
    control.kind = kind;
    control.caption = std::move(caption);
    return control;
}

Control& Dialog::addCheckBox(std::wstring caption, bool checked) {
    Control& control = add(ControlKind::CheckBox, std::move(caption));
    control.checked = checked;
    return control;
}

Control& Dialog::addList(std::wstring caption, std::vector<std::wstring> columns, ListKind kind) {
    Control& control = add(ControlKind::List, std::move(caption));
    control.columns = std::move(columns);
    control.listKind = kind;
    return control;
}

Control& Dialog::addEdit(std::wstring caption, std::wstring text) {
    Control& control = add(ControlKind::Edit, std::move(caption));
    control.text = std::move(text);
    return control;
}

Control& Dialog::addCombo(std::wstring caption, std::vector<std::wstring> choices, std::wstring text, bool editable) {
    Control& control = add(ControlKind::Combo, std::move(caption));
    control.choices = std::move(choices);
    control.text = std::move(text);
    control.editable = editable;
    return control;
}

Control& Dialog::addButton(std::wstring caption, std::function<void()> pressed, bool stepsAside) {
    Control& control = add(ControlKind::Button, std::move(caption));
    control.pressed = std::move(pressed);
    control.stepsAside = stepsAside;
    return control;
}

DialogPresenter* setDialogPresenter(DialogPresenter* newPresenter) {
    return std::exchange(thePresenter, newPresenter);
}

int showDialog(Dialog& dialog) {
    dialog.reopen();
    DialogPresenter* const shower = presenter();
    return shower ? shower->showDialog(dialog) : kDialogCancel;
}

bool hasPanes() {
    const DialogPresenter* const shower = presenter();
    return shower && shower->hasPanes();
}

std::unique_ptr<Pane> showPane(Dialog& dialog, void* window) {
    DialogPresenter* const shower = presenter();
    return shower ? shower->showPane(dialog, window) : nullptr;
}

int escapeOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::Ok:
            return kDialogOk;
        case MessageButtons::YesNo:
            return kDialogNo;
        default:
            return kDialogCancel;
    }
}

int showMessage(const MessageQuestion& question) {
    DialogPresenter* const shower = presenter();
    return shower ? shower->showMessage(question) : escapeOf(question.buttons);
}

std::optional<std::wstring> chooseFolder(const std::wstring& title) {
    DialogPresenter* const shower = presenter();
    return shower ? shower->chooseFolder(title) : std::nullopt;
}

}  // namespace qrs::platform
