// The application as the program that carries it sees it.
#include "acdocman.h"
#include "host/dxf/drawing.h"
#include "host/editor/documents.h"
#include "host/editor/faults.h"
#include "host/editor/hostapp.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::host {

using platform::translated;

namespace {

Application* theApplication = nullptr;

}  // namespace

Terminal::~Terminal() = default;

Reply Terminal::readMore(std::wstring& line) {
    return readLine(L"(_> ", line);
}

void Terminal::refused(std::wstring_view) {}

void Terminal::commandEnded(std::wstring_view, CommandResult) {}

void Terminal::progress(std::wstring_view, int) {}

struct Application::State {
    explicit State(Terminal& terminal) : session(terminal) {}

    std::filesystem::path locatePlugin(const std::filesystem::path& native) const {
        const auto isFile = [](const std::filesystem::path& path) {
            return platform::fileExists(platform::innerPath(path));
        };
        if (native.has_parent_path() || isFile(native)) return native;
        for (const std::filesystem::path& folder : pluginFolders)
            if (isFile(folder / native)) return folder / native;
        return native;
    }

    ed::Session session;
    std::vector<std::filesystem::path> pluginFolders;
    int backups = 1;
    bool allWarnings = false;
};

Application::Application(Terminal& terminal) : state_(std::make_unique<State>(terminal)) {
    theApplication = this;
}

Application::~Application() {
    state_.reset();
    theApplication = nullptr;
}

Application* Application::current() {
    return theApplication;
}

Terminal& Application::terminal() const {
    return state_->session.output.terminal();
}

void Application::setSystemFolder(std::wstring_view folder) {
    state_->session.systemFolder = folder;
}

void Application::addSupportFolder(std::wstring_view folder) {
    state_->session.supportFolders.emplace_back(folder);
}

const std::wstring& Application::systemFolder() const {
    return state_->session.systemFolder;
}

const std::vector<std::wstring>& Application::supportFolders() const {
    return state_->session.supportFolders;
}

void Application::addPluginFolder(const std::filesystem::path& native) {
    state_->pluginFolders.push_back(native);
}

bool Application::loadPlugin(const std::filesystem::path& native, platform::Error& error) {
    return state_->session.plugins.load(state_->locatePlugin(native), error);
}

bool Application::unloadPlugin(std::wstring_view name, platform::Error& error) {
    return state_->session.plugins.unload(name, error);
}

std::vector<std::wstring> Application::pluginNames() const {
    return state_->session.plugins.names();
}

void Application::newDocument() {
    state_->session.documents.state().openNew();
}

bool Application::openDocument(const std::filesystem::path& native, platform::Error& error) {
    return state_->session.documents.state().open(native, error);
}

std::vector<std::string> Application::documentFaults() const {
    AcApDocument* document = currentDocument();
    return document ? faultLines(*document->database(), state_->allWarnings) : std::vector<std::string>();
}

std::vector<std::string> faultLines(AcDbDatabase& database, bool all) {
    const dxf::Drawing& drawing = DatabaseAccess::drawing(database);
    const auto& faults = drawing.faults();
    const ACHAR* fileName = nullptr;
    database.getFilename(fileName);
    const std::string name = fileName ? platform::nativePath(fileName).filename().u8string() : std::string();
    if (faults.size() > 1 && !all) return {name + ": " + drawing.faultSummary()};
    std::vector<std::string> lines;
    for (const dxf::Fault& fault : faults)
        lines.push_back(name + ": " + fault.message());
    return lines;
}

void Application::setAllWarnings(bool all) {
    state_->allWarnings = all;
}

bool Application::closeDocument(platform::Error& error) {
    AcApDocManager& documents = state_->session.documents;
    switch (documents.state().close(documents.curDocument())) {
        case Acad::eOk:
            return true;
        case Acad::eLockViolation:
            error.message = translated("The drawing cannot be closed while a command works on it.");
            return false;
        default:
            error.message = translated("No drawing is open.");
            return false;
    }
}

bool Application::saveDocument(const std::filesystem::path& native, platform::Error& error) {
    AcApDocManager& documents = state_->session.documents;
    if (AcApDocument* document = documents.curDocument())
        return documents.state().save(document, native, state_->backups, error);
    error.message = translated("No drawing is open.");
    return false;
}

void Application::setBackups(int backups) {
    state_->backups = backups;
}

AcApDocument* Application::currentDocument() const {
    return state_->session.documents.curDocument();
}

bool Application::hasUnsavedChanges() const {
    AcApDocument* document = currentDocument();
    return document && DatabaseAccess::isModified(*document->database());
}

bool Application::run(bool keepGoing) {
    return state_->session.run(keepGoing);
}

bool Application::hasFailedToReadOnly() const {
    return state_->session.hasFailedToReadOnly();
}

bool Application::hasFailedToWriteOnly() const {
    return state_->session.hasFailedToWriteOnly();
}

void Application::setStrict(bool strict) {
    state_->session.setStrict(strict);
}

void Application::requestQuit() {
    state_->session.requestQuit();
}

std::vector<std::wstring> Application::commandNames() const {
    return ed::commandNames(state_->session);
}

std::wstring Application::pluginOf(std::wstring_view command) const {
    const AcEdCommand* const found = state_->session.commands.lookupGlobalCmd(std::wstring(command).c_str());
    const ed::Plugin* const plugin = found ? state_->session.plugins.byHandle(found->commandApp()) : nullptr;
    return plugin ? plugin->name : std::wstring();
}

bool Application::isVariable(std::wstring_view name) {
    return ed::Variables::isKnown(name);
}

Completion Application::complete(std::wstring_view typed) const {
    return ed::complete(state_->session, state_->session.asked(), typed);
}

void Application::setFirstAnswer(std::wstring_view command, Wanted wanted) {
    state_->session.firstAnswers[platform::foldCase(command)] = wanted;
}

std::wstring takeRestOfLine() {
    ed::Session* const session = ed::Session::current();
    return session ? session->input.takeTypedWords() : std::wstring();
}

void failUnknownCommand(const std::wstring& name) {
    if (ed::Session* session = ed::Session::current()) session->fail(session->unknownCommand(name));
}

void failCommand(std::wstring_view message) {
    if (ed::Session* session = ed::Session::current()) session->fail(message);
}

void failReading(std::wstring_view message) {
    if (ed::Session* session = ed::Session::current()) session->failReading(message);
}

void failWriting(std::wstring_view message) {
    if (ed::Session* session = ed::Session::current()) session->failWriting(message);
}

void refuseCommand(std::wstring_view text) {
    if (ed::Session* session = ed::Session::current()) session->refuse(text);
}

void tellRefusal(std::wstring_view message) {
    if (ed::Session* session = ed::Session::current()) session->tellRefusal(message);
}

}  // namespace qrs::host
