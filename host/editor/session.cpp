// The application's services: their start, their end, and what belongs to no single one of them.
#include "host/editor/session.h"

#include <algorithm>
#include <cassert>
#include <cwchar>
#include <exception>

#include "host/editor/documents.h"
#include "host/editor/editorstate.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

Session* theSession = nullptr;
const ApplicationScope* innermostScope = nullptr;

}  // namespace

const void* activeApplication() {
    return innermostScope ? innermostScope->application() : nullptr;
}

bool isAtWork(const void* application) {
    for (const ApplicationScope* scope = innermostScope; scope; scope = scope->outer())
        if (scope->application() == application) return true;
    return false;
}

ApplicationScope::ApplicationScope(const void* application) : application_(application), outer_(innermostScope) {
    innermostScope = this;
}

ApplicationScope::~ApplicationScope() {
    innermostScope = outer_;
}

void reportException(const wchar_t* where, const std::exception* exception) {
    const std::wstring reason =
        exception ? platform::fromUtf8(platform::reasonOf(*exception)) : translated(L"an unknown exception");
    if (theSession) theSession->fail(translated(L"%1 failed: %2", where ? where : translated(L"A reactor"), reason));
}

Session::Session(Terminal& terminal) : output(terminal), input(output), plugins(*this) {
    assert(!theSession);
    theSession = this;
    documents.state().attach(this);
    acdbSetHostApplicationServices(this);
    Adesk::UInt32 id = 0;
    acrxSysRegistry()->atPut(ACED_REGISTERED_COMMANDS, &commands, id);
    acrxSysRegistry()->atPut(AC_EDITOR_OBJ, &editor, id);
    acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, &linker, id);
}

Session::~Session() {
    editor.reactors().list.tell([](AcEditorReactor& reactor) { reactor.quitWillStart(); });
    plugins.unloadAll();
    documents.state().closeAll();
    for (const ACHAR* key : {ACED_REGISTERED_COMMANDS, AC_EDITOR_OBJ, ACRX_DYNAMIC_LINKER})
        acrxSysRegistry()->remove(key);
    acdbSetHostApplicationServices(nullptr);
    theSession = nullptr;
}

Session* Session::current() {
    return theSession;
}

void Session::initGet(int flags, std::wstring_view keywords) {
    flags_ = flags;
    keywords_ = Keywords(keywords);
}

std::size_t Session::removeRegistrations(const void* application) {
    return commands.removeCommandsOf(application) + editor.reactors().list.removeOf(application) +
           documents.state().reactors.removeOf(application) + frame.removeFiltersOf(application);
}

std::wstring Session::findInFolders(const std::wstring& name) const {
    if (name.empty()) return std::wstring();
    const bool absolute = name.front() == L'\\' || (name.size() > 1 && name[1] == L':');
    if (absolute) return platform::fileExists(name) ? name : std::wstring();
    std::vector<std::wstring> folders;
    if (AcApDocument* document = documents.curDocument(); document && document->isNamedDrawing()) {
        // Whole also when it was opened by a name without folder: what is found is looked for from there again.
        const std::wstring drawing = platform::wholePath(document->fileName());
        folders.push_back(drawing.substr(0, drawing.rfind(L'\\') + 1));
        // What lies beside the drawing does not go along when it is saved elsewhere.
        const std::wstring& opened = document->state().openedFrom;
        folders.push_back(opened.substr(0, opened.rfind(L'\\') + 1));
    }
    folders.insert(folders.end(), supportFolders.begin(), supportFolders.end());
    folders.push_back(systemFolder);
    for (const std::wstring& folder : folders) {
        if (folder.empty()) continue;
        std::wstring path = platform::joinPath(folder, name);
        if (platform::fileExists(path)) return path;
    }
    return std::wstring();
}

Acad::ErrorStatus Session::findFile(ACHAR* pathOut, int length, const ACHAR* name, AcDbDatabase*, FindFileHint) {
    if (!pathOut || length < 1 || !name) return Acad::eInvalidInput;
    const std::wstring path = findInFolders(name);
    if (path.empty()) return Acad::eFileNotFound;
    if (path.size() >= static_cast<std::size_t>(length)) return Acad::eInvalidInput;
    std::wmemcpy(pathOut, path.c_str(), path.size() + 1);
    return Acad::eOk;
}

bool Session::isRunningIn(const AcApDocument* document) const {
    return std::any_of(running.begin(), running.end(), [&](const Running& one) { return one.document == document; });
}

bool Session::isRunningCommandOf(const void* application) const {
    return std::any_of(running.begin(), running.end(),
                       [&](const Running& one) { return one.application == application; });
}

std::wstring Session::runningNames() const {
    std::wstring names;
    for (const Running& one : running) {
        if (!names.empty()) names += L'\'';
        names += one.name;
    }
    return names;
}

}  // namespace qrs::host::ed
