// U: takes back what the last command changed in the drawing.
#include "acdocman.h"
#include "acedads.h"
#include "acutads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostapp.h"
#include "host/editor/layouts.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

void undo() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing."));
    std::wstring name;
    if (!ed::takeBackStep(*document, name)) {
        acedPrompt(translated(L"\nEverything has been undone\n").c_str());
        return;
    }
    acutPrintf(L"\n%s\n", name.c_str());
}

}  // namespace qrs::host::commands
