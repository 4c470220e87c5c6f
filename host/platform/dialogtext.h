// Dialogs asked as text, for terminals and scripts.
//
// A dialog is printed once: its title, then a line for each control and each row of a list. What the user can change
// bears a number, counted through the whole dialog; "[x]" and "(*)" mark what is chosen. Then the dialog asks until it
// is closed, one answer a line:
//
//     3            the item of that number: a check mark is set or cleared, one of several is chosen, a text is asked
//                  for, a button is pressed
//     2-5,8        all of these
//     门窗         the item of that name, in whatever case; "门窗" in quotes where it could be read as something else
//     给排-*       every check box and row whose name matches ('*' and '?')
//     门窗=1       a check mark set (1, on, yes, 是) or cleared (0, off, no, 否), whatever it was
//     名称=给水    a text for a field; a number or a text for a field with choices
//                  (in a dialog of a single field every answer is its text)
//     ?            prints the dialog again
//     Enter or OK, or what the button says: OK
//     Cancel, or what the button says, Esc or the end of the answers: Cancel
//
// An answer that means nothing is told, changes nothing, and the dialog asks again. After a change the lines that look
// different are printed again.
#pragma once

#include <string>
#include <vector>

#include "host/platform/dialog.h"

namespace qrs::platform {

// What an answer may be, as far as it can be completed.
struct ExpectedAnswer {
    std::vector<std::wstring> words;
    bool isFolder = false;
};

// Where a text presenter prints and asks.
class QRS_HOST_PORT QuestionLine {
  public:
    virtual ~QuestionLine();
    virtual void print(std::wstring_view text) = 0;
    // Prints a text that tells what is not done: a warning, an answer that cannot be taken.
    virtual void refuse(std::wstring_view text);
    // One line; false when the user cancelled or there will be no more.
    virtual bool ask(const std::wstring& prompt, const ExpectedAnswer& expected, std::wstring& answer) = 0;
};

class QRS_HOST_PORT TextPresenter : public DialogPresenter {
  public:
    explicit TextPresenter(QuestionLine& line) : line_(line) {}

    int showDialog(Dialog& dialog) override;
    // Prints the text. With more than one button it asks: the button's first letter, its whole word, in English or
    // Chinese; Enter presses the default button.
    int showMessage(const MessageQuestion& question) override;
    // Asks for a path; one that names no folder is told and asked again. Cancelled by Esc and by an empty line.
    std::optional<std::wstring> chooseFolder(const std::wstring& title) override;

  private:
    QuestionLine& line_;
};

}  // namespace qrs::platform
