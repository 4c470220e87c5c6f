// Shows a dialog through the session: its lines go to the output, answers come from the input.
#include "host/editor/dialogs.h"

#include "host/editor/session.h"

namespace qrs::host::ed {

Dialogs::Dialogs(Session& session)
    : session_(session), presenter_(*this), before_(platform::setDialogPresenter(&presenter_)) {}

Dialogs::~Dialogs() {
    platform::setDialogPresenter(before_);
}

// Buttons may run something that prints without ending its line.
void Dialogs::print(std::wstring_view text) {
    session_.output.freshLine();
    session_.output.print(text);
}

void Dialogs::refuse(std::wstring_view text) {
    session_.output.freshLine();
    session_.refuse(text);
}

bool Dialogs::ask(const std::wstring& prompt, const platform::ExpectedAnswer& expected, std::wstring& answer) {
    // Flags and keywords that a command set for its next prompt are not meant for a dialog.
    session_.takeFlags();
    session_.takeKeywords();
    session_.output.freshLine();
    if (expected.isFolder) session_.want(Wanted::Folder);
    Answer given = session_.ask(prompt, Extent::Line, expected.words);
    if (given.reply != Reply::Line) return false;
    answer = std::move(given.text);
    return true;
}

}  // namespace qrs::host::ed
