// OPEN, NEW, QSAVE, SAVEAS, CLOSE, QUIT.
#include <filesystem>

#include "acdocman.h"
#include "acutads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

constexpr const wchar_t* kExtension = L".dxf";

// A name without an extension means a drawing file, unless a file of that very name is there.
std::wstring drawingName(const std::wstring& typed) {
    const std::wstring inner = platform::innerFromTyped(typed);
    const std::size_t dot = inner.find_last_of(L".\\");
    const bool hasExtension = dot != std::wstring::npos && inner[dot] == L'.';
    return hasExtension || platform::fileExists(inner) ? inner : inner + kExtension;
}

void save(const std::wstring& inner) {
    platform::Error error;
    if (!Application::current()->saveDocument(platform::nativePath(inner), error)) failWith(error);
}

// True when nothing would be lost, when nobody is there to be asked, or when the user agrees.
bool mayDiscard(const std::wstring& prompt) {
    const Application& application = *Application::current();
    if (!application.hasUnsavedChanges() || !application.terminal().isInteractive()) return true;
    return askYesNo(prompt, false).value_or(false);
}

}  // namespace

void openDrawing() {
    const std::optional<std::wstring> name =
        askText(translated(L"\nEnter name of drawing to open: "), Blanks::Kept, Wanted::Drawing);
    if (!name || name->empty()) return;
    platform::Error error;
    if (!Application::current()->openDocument(platform::nativePath(drawingName(*name)), error)) {
        return failWith(error);
    }
    for (const std::string& fault : Application::current()->documentFaults())
        acutPrintf(L"\n%s", platform::fromUtf8(fault).c_str());
}

void newDrawing() {
    Application::current()->newDocument();
}

void saveDrawing() {
    const AcApDocument* const document = Application::current()->currentDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing to save."));
    if (!document->isNamedDrawing()) return saveDrawingAs();
    // Written only when there is something to write: the .bak keeps what was before the last change.
    if (Application::current()->hasUnsavedChanges()) save(document->fileName());
}

void saveDrawingAs() {
    if (Application::current()->currentDocument() == nullptr)
        return failCommand(translated(L"There is no drawing to save."));
    const std::optional<std::wstring> name = askText(translated(L"\nSave drawing as: "), Blanks::Kept, Wanted::Drawing);
    if (!name || name->empty()) return;
    const std::wstring inner = drawingName(*name);
    // In a script the replaced file stays as .bak; a script could not know whether it will be asked.
    if (Application::current()->terminal().isInteractive() && platform::fileExists(inner)) {
        const std::optional<bool> replaces = askYesNo(
            translated(L"\nA drawing with this name already exists.\nDo you want to replace it? [Yes/No] <N>: "),
            false);
        if (!replaces.value_or(false)) return;
    }
    save(inner);
}

void closeDrawing() {
    if (!mayDiscard(translated(L"\nReally want to discard all changes to drawing? [Yes/No] <N>: "))) return;
    platform::Error error;
    if (!Application::current()->closeDocument(error)) failWith(error);
}

void quit() {
    if (mayDiscard(translated(L"\nReally want to discard all changes to drawing? [Yes/No] <N>: ")))
        Application::current()->requestQuit();
}

}  // namespace qrs::host::commands
