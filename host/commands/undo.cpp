// U: takes back what the last command changed in the drawing.
#include "acdocman.h"
#include "acutads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostapp.h"
#include "host/editor/layouts.h"

namespace qrs::host::commands {

void undo() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(L"There is no drawing.");
    std::wstring name;
    if (!ed::takeBackStep(*document, name)) {
        acutPrintf(L"\nEverything has been undone\n");
        return;
    }
    acutPrintf(L"\n%s\n", name.c_str());
}

}  // namespace qrs::host::commands
