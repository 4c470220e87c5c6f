// Shows a dialog line by line and does what the answers ask, until one of its buttons ends it.
#include "host/platform/dialogtext.h"

#include <algorithm>
#include <filesystem>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/inside/dialoganswer.h"
#include "host/platform/inside/dialogwindow.h"
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

bool isOneOf(const std::wstring& text, std::initializer_list<const wchar_t*> words) {
    return std::any_of(words.begin(), words.end(), [&](const wchar_t* word) { return compareNoCase(text, word) == 0; });
}

// One dialog while it is shown.
class Showing {
  public:
    Showing(Dialog& dialog, QuestionLine& line) : dialog_(dialog), line_(line) {}

    int run() {
        const std::wstring prompt = onlyField() ? translated(L"Value [?/OK/Cancel] <OK>: ")
                                                : translated(L"Number, name or name=value [?/OK/Cancel] <OK>: ");
        printAll();
        while (!dialog_.closing()) {
            std::wstring answer;
            if (!line_.ask(prompt, {expectedWords()}, answer)) return kDialogCancel;
            take(std::wstring(trimmed(answer)));
        }
        return *dialog_.closing();
    }

  private:
    void refuse(const std::wstring& text) { line_.refuse(text + L"\n"); }

    void printAll() {
        shown_ = linesOf(dialog_);
        std::wstring text = L"\n" + dialog_.title + L"\n";
        for (const std::wstring& line : shown_)
            text += line + L"\n";
        line_.print(text);
    }

    // What looks different from what was printed last. When lines came or went, numbers mean other things: all of it.
    void printChanges() {
        std::vector<std::wstring> now = linesOf(dialog_);
        if (now.size() != shown_.size()) return printAll();
        std::wstring text;
        for (std::size_t i = 0; i < now.size(); ++i)
            if (now[i] != shown_[i]) text += now[i] + L"\n";
        shown_ = std::move(now);
        if (!text.empty()) line_.print(text);
    }

    void take(const std::wstring& answer) {
        if (answer == L"?") return printAll();
        if (answer.empty() || answer == dialog_.okCaption || isOneOf(answer, {L"OK", L"确定"})) return pressOk();
        if (answer == dialog_.cancelCaption || isOneOf(answer, {L"Cancel", L"取消"}))
            return dialog_.close(kDialogCancel);
        const DialogAnswer meant = onlyField() ? textOf(answer) : parseAnswer(dialog_, answer);
        if (!meant.refusal.empty()) return refuse(meant.refusal);
        if (apply(meant) && !dialog_.closing()) printChanges();
    }

    std::vector<std::wstring> expectedWords() {
        std::vector<std::wstring> words = {L"OK", L"Cancel", dialog_.okCaption, dialog_.cancelCaption};
        const bool isField = onlyField();
        for (const DialogItem& item : itemsOf(dialog_)) {
            words.push_back(nameOf(item));
            if (isField) words.insert(words.end(), item.control->choices.begin(), item.control->choices.end());
        }
        return words;
    }

    // A dialog that asks for a single text takes every answer as that.
    bool onlyField() {
        const std::vector<DialogItem> items = itemsOf(dialog_);
        return items.size() == 1 && !isMark(items[0]) && items[0].control->kind != ControlKind::Button &&
               items[0].control->enabled;
    }

    DialogAnswer textOf(const std::wstring& answer) {
        std::vector<DialogItem> field = itemsOf(dialog_);
        const std::wstring start = nameOf(field[0]) + L"=";
        const bool isNamed = compareNoCase(answer.substr(0, start.size()), start) == 0;
        return {std::move(field),
                isNamed ? std::wstring(trimmed(std::wstring_view(answer).substr(start.size()))) : answer,
                {}};
    }

    void pressOk() {
        const std::wstring refusal = dialog_.refuseOk ? dialog_.refuseOk() : std::wstring();
        if (dialog_.closing()) return;
        if (refusal.empty()) return dialog_.close(kDialogOk);
        if (refusal != L"\n") refuse(refusal);
        printChanges();
    }

    // Marks first, then one notice for each control that has changed, then fields and buttons one after the other.
    bool apply(const DialogAnswer& meant) {
        std::optional<bool> wanted;
        const bool anyMark = std::any_of(meant.items.begin(), meant.items.end(), isMark);
        if (anyMark && meant.value && !(wanted = parseSwitch(*meant.value))) {
            refuse(translated(L"\"%1\" is neither 1 nor 0.", *meant.value));
            return false;
        }
        std::vector<Control*> touched;
        for (const DialogItem& item : meant.items) {
            if (!isMark(item)) continue;
            setMark(item, wanted.value_or(!isMarked(item)));
            if (std::find(touched.begin(), touched.end(), item.control) == touched.end())
                touched.push_back(item.control);
        }
        for (Control* control : touched)
            if (control->changed && !dialog_.closing()) control->changed();
        for (const DialogItem& item : meant.items)
            if (!isMark(item) && !dialog_.closing()) act(*item.control, meant.value);
        return true;
    }

    static void setMark(const DialogItem& item, bool marked) {
        Control& control = *item.control;
        if (control.kind == ControlKind::CheckBox) {
            control.checked = marked;
        } else if (control.kind == ControlKind::List && control.listKind == ListKind::Many) {
            control.rows[item.part].chosen = marked;
        } else {
            control.chooseRow(item.part);
        }
    }

    void act(Control& control, const std::optional<std::wstring>& value) {
        if (control.kind == ControlKind::Button) {
            if (control.pressed) control.pressed();
            return;
        }
        if (!value) return askText(control);
        const std::wstring refusal = takeText(control, *value);
        if (!refusal.empty()) refuse(refusal);
    }

    // Why the text cannot be taken; empty when it was.
    static std::wstring takeText(Control& control, std::wstring text) {
        if (control.kind == ControlKind::Combo) {
            const auto same = std::find_if(control.choices.begin(), control.choices.end(),
                                           [&](const std::wstring& one) { return compareNoCase(one, text) == 0; });
            const std::size_t number = numberOf(text);
            if (same != control.choices.end())
                text = *same;
            else if (!control.editable && number >= 1 && number <= control.choices.size())
                text = control.choices[number - 1];
            else if (!control.editable)
                return translated(L"\"%1\" is none of the choices.", text);
        }
        std::wstring refusal = control.refuse ? control.refuse(text) : std::wstring();
        if (!refusal.empty()) return refusal;
        control.text = std::move(text);
        if (control.changed) control.changed();
        return refusal;
    }

    static std::size_t numberOf(const std::wstring& text) {
        const bool digits =
            !text.empty() && text.size() < 6 && text.find_first_not_of(L"0123456789") == std::wstring::npos;
        return digits ? std::stoul(text) : 0;
    }

    // Enter keeps the text, as does Esc; a single "." empties it.
    void askText(Control& control) {
        std::wstring choices;
        for (std::size_t i = 0; i < control.choices.size(); ++i)
            choices += (control.editable ? L"     " : std::to_wstring(i + 1) + L" ") + control.choices[i] + L"\n";
        if (!choices.empty()) line_.print(choices);
        const std::wstring name = nameOf({&control});
        for (;;) {
            std::wstring answer;
            if (!line_.ask(name + L" <" + control.text + L">: ", {control.choices}, answer)) return;
            answer = std::wstring(trimmed(answer));
            if (answer.empty()) return;
            const std::wstring refusal = takeText(control, answer == L"." ? std::wstring() : answer);
            if (refusal.empty()) return;
            refuse(refusal);
        }
    }

    Dialog& dialog_;
    QuestionLine& line_;
    std::vector<std::wstring> shown_;
};

struct MessageButton {
    int result;
    const wchar_t* letter;
    const wchar_t* english;
    const wchar_t* chinese;
};

constexpr MessageButton kOkButton = {kDialogOk, L"O", L"OK", L"确定"};
constexpr MessageButton kCancelButton = {kDialogCancel, L"C", L"Cancel", L"取消"};
constexpr MessageButton kYesButton = {kDialogYes, L"Y", L"Yes", L"是"};
constexpr MessageButton kNoButton = {kDialogNo, L"N", L"No", L"否"};

std::vector<MessageButton> buttonsOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::OkCancel:
            return {kOkButton, kCancelButton};
        case MessageButtons::YesNo:
            return {kYesButton, kNoButton};
        case MessageButtons::YesNoCancel:
            return {kYesButton, kNoButton, kCancelButton};
        default:
            return {kOkButton};
    }
}

// The full path, inner form, of what a person typed.
std::wstring fullPath(const std::wstring& typed) {
    const std::filesystem::path native = nativeFromTyped(toUtf8(typed));
    std::error_code failed;
    const std::filesystem::path full = std::filesystem::absolute(native, failed).lexically_normal();
    std::wstring inner = innerPath(failed ? native : full);
    while (inner.size() > 1 && inner.back() == L'\\' && inner[inner.size() - 2] != L':')
        inner.pop_back();
    return inner;
}

}  // namespace

QuestionLine::~QuestionLine() = default;

void QuestionLine::refuse(std::wstring_view text) {
    print(text);
}

int TextPresenter::showDialog(Dialog& dialog) {
    return Showing(dialog, line_).run();
}

int TextPresenter::showMessage(const MessageQuestion& question) {
    const std::vector<MessageButton> buttons = buttonsOf(question.buttons);
    // One button is no question.
    if (buttons.size() == 1) {
        const bool warns = question.icon == MessageIcon::Error || question.icon == MessageIcon::Warning;
        const std::wstring text = L"\n" + question.text + L"\n";
        warns ? line_.refuse(text) : line_.print(text);
        return buttons.front().result;
    }
    const std::size_t position = static_cast<std::size_t>(std::max(question.defaultButton, 0));
    const MessageButton fallback = buttons[std::min(position, buttons.size() - 1)];
    std::wstring prompt = question.text + L" [";
    std::vector<std::wstring> words;
    for (const MessageButton& button : buttons) {
        words.insert(words.end(), {button.english, button.chinese});
        prompt += (button.result == buttons.front().result ? L"" : L"/") + std::wstring(button.english);
    }
    prompt += L"] <" + std::wstring(fallback.english) + L">: ";
    for (;;) {
        std::wstring answer;
        if (!line_.ask(prompt, {words}, answer)) return escapeOf(question.buttons);
        answer = std::wstring(trimmed(answer));
        if (answer.empty()) return fallback.result;
        for (const MessageButton& button : buttons)
            if (isOneOf(answer, {button.letter, button.english, button.chinese})) return button.result;
        line_.refuse(translated(L"\"%1\" is none of the buttons.\n", answer));
    }
}

std::optional<std::wstring> TextPresenter::chooseFolder(const std::wstring& title) {
    for (;;) {
        std::wstring answer;
        if (!line_.ask(L"\n" + title + L": ", {{}, true}, answer)) return std::nullopt;
        answer = unquoted(std::wstring(trimmed(answer)));
        if (answer.empty()) return std::nullopt;
        std::wstring path = fullPath(answer);
        if (folderExists(path)) return path;
        line_.refuse(translated(L"There is no folder \"%1\".\n", answer));
    }
}

}  // namespace qrs::platform
