// The documents' side of the editor's interface.
#include <utility>

#include "acdocman.h"
#include "axlock.h"
#include "host/editor/documents.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

ACRX_DEFINE_MEMBERS(AcApDocument, AcRxObject)
ACRX_DEFINE_MEMBERS(AcApDocManager, AcRxObject)
ACRX_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject)

using qrs::host::DatabaseAccess;
using qrs::host::ed::Session;
using qrs::platform::recordCall;

namespace {

// The address given out earlier stays good as long as the text is the same.
const ACHAR* kept(std::wstring& place, std::wstring now) {
    if (place != now) place = std::move(now);
    return place.c_str();
}

}  // namespace

AcApDocument::AcApDocument(std::unique_ptr<State> state) : state_(std::move(state)) {}
AcApDocument::~AcApDocument() = default;

const ACHAR* AcApDocument::fileName() const {
    const std::filesystem::path& native = DatabaseAccess::nativePath(*database());
    return native.empty() ? docTitle() : kept(state_->fileName, qrs::platform::innerPath(native));
}

const ACHAR* AcApDocument::docTitle() const {
    return kept(state_->title, DatabaseAccess::displayName(*database()));
}

AcDbDatabase* AcApDocument::database() const {
    return state_->database.get();
}

AcAp::DocLockMode AcApDocument::lockMode(bool includeMyLocks) const {
    return includeMyLocks ? state_->strongestLock() : AcAp::kNotLocked;
}

bool AcApDocument::isNamedDrawing() const {
    return !DatabaseAccess::nativePath(*database()).empty();
}

AcApDocManagerReactor::AcApDocManagerReactor() = default;
AcApDocManagerReactor::~AcApDocManagerReactor() = default;
void AcApDocManagerReactor::documentCreateStarted(AcApDocument*) {}
void AcApDocManagerReactor::documentCreated(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDestroyed(AcApDocument*) {}
void AcApDocManagerReactor::documentDestroyed(const ACHAR*) {}
void AcApDocManagerReactor::documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                                       AcAp::DocLockMode, const ACHAR*) {}
void AcApDocManagerReactor::documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                                    AcAp::DocLockMode, const ACHAR*) {}
void AcApDocManagerReactor::documentBecameCurrent(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDeactivated(AcApDocument*) {}
void AcApDocManagerReactor::documentActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentTitleUpdated(AcApDocument*) {}

AcApDocManager::AcApDocManager() : state_(std::make_unique<State>()) {}
AcApDocManager::~AcApDocManager() = default;

AcApDocument* AcApDocManager::curDocument() const {
    return state_->current();
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    for (AcApDocument* document : state_->all())
        if (database && document->database() == database) return document;
    return nullptr;
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode, bool activate) {
    if (!state_->holds(document)) return Acad::eNoDocument;
    if (activate)
        state_->activate(document);
    else
        state_->makeCurrent(document);
    if (mode != AcAp::kNone && mode != AcAp::kNotLocked) state_->lock(document, mode, std::wstring());
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* document) {
    return state_->close(document);
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                               const ACHAR* globalCommandName, const ACHAR*, bool) {
    recordCall("AcApDocManager::lockDocument");
    if (!state_->holds(document)) return Acad::eNoDocument;
    if (strengthOf(mode) == 0) return Acad::eInvalidInput;
    state_->lock(document, mode, globalCommandName ? globalCommandName : L"");
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    recordCall("AcApDocManager::unlockDocument");
    if (!state_->holds(document)) return Acad::eNoDocument;
    return state_->unlock(document) ? Acad::eOk : Acad::eLockViolation;
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* document, const ACHAR* text, bool, bool,
                                                      bool echo) {
    recordCall("AcApDocManager::sendStringToExecute", text);
    if (!state_->holds(document)) return Acad::eNoDocument;
    if (!text) return Acad::eInvalidInput;
    Session* session = Session::current();
    session->input.send(document, text, echo, !session->running.empty());
    return Acad::eOk;
}

void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
    recordCall("AcApDocManager::addReactor");
    state_->reactors.add(reactor);
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) {
    recordCall("AcApDocManager::removeReactor");
    state_->reactors.remove(reactor);
}

AcApDocManager* acDocManagerPtr() {
    Session* session = Session::current();
    return session ? &session->documents : nullptr;
}

AcAxDocLock::AcAxDocLock() {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager ? manager->curDocument() : nullptr;
    if (!document) return;
    status_ = manager->lockDocument(document, AcAp::kWrite);
    if (status_ == Acad::eOk) document_ = document;
}

AcAxDocLock::~AcAxDocLock() {
    AcApDocManager* manager = acDocManagerPtr();
    if (manager && document_) manager->unlockDocument(document_);
}
