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

class DocumentIterator : public AcApDocumentIterator {
  public:
    explicit DocumentIterator(std::vector<AcApDocument*> documents) : documents_(std::move(documents)) {}
    bool done() const override { return position_ >= documents_.size(); }
    void step() override { ++position_; }
    AcApDocument* document() override { return done() ? nullptr : documents_[position_]; }

  private:
    std::vector<AcApDocument*> documents_;
    std::size_t position_ = 0;
};

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

AcAp::DocLockMode AcApDocument::myLockMode() const {
    return state_->strongestLock();
}

bool AcApDocument::isQuiescent() const {
    Session* session = Session::current();
    return !session || !session->isRunningIn(this);
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
void AcApDocManagerReactor::documentLockModeChangeVetoed(AcApDocument*, const ACHAR*) {}
void AcApDocManagerReactor::documentBecameCurrent(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDeactivated(AcApDocument*) {}
void AcApDocManagerReactor::documentActivated(AcApDocument*) {}
void AcApDocManagerReactor::documentTitleUpdated(AcApDocument*) {}

Acad::ErrorStatus AcApDocManagerReactor::veto() {
    vetoed_ = true;
    return Acad::eOk;
}

AcApDocManager::AcApDocManager() : state_(std::make_unique<State>(*this)) {}
AcApDocManager::~AcApDocManager() = default;

AcApDocument* AcApDocManager::curDocument() const {
    return state_->current();
}

AcApDocument* AcApDocManager::mdiActiveDocument() const {
    return state_->active();
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    for (AcApDocument* document : state_->all())
        if (database && document->database() == database) return document;
    return nullptr;
}

bool AcApDocManager::isApplicationContext() const {
    Session* session = Session::current();
    return !session || session->running.empty();
}

int AcApDocManager::documentCount() const {
    return static_cast<int>(state_->all().size());
}

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() {
    return new DocumentIterator(state_->all());
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

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* document, bool) {
    return setCurDocument(document, AcAp::kNone, true);
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* document) {
    return state_->close(document);
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const ACHAR* fileName) {
    if (!fileName) return Acad::eInvalidInput;
    if (!qrs::platform::fileExists(fileName)) return Acad::eFileNotFound;
    qrs::platform::Error error;
    if (state_->open(qrs::platform::nativePath(fileName), error)) return Acad::eOk;
    Session::current()->output.error(qrs::platform::fromUtf8(error.message));
    return Acad::eBadDxfFile;
}

Acad::ErrorStatus AcApDocManager::appContextNewDocument() {
    qrs::platform::Error error;
    return state_->openNew(error) ? Acad::eOk : Acad::eFilerError;
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

int AcApDocManager::inputPending(AcApDocument* document) const {
    Session* session = Session::current();
    return session ? static_cast<int>(session->input.pendingCharacters(document)) : 0;
}

void AcApDocManager::executeInApplicationContext(void (*procedure)(void*), void* data) const {
    if (procedure) procedure(data);
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
    lock(acDocManagerPtr() ? acDocManagerPtr()->curDocument() : nullptr, kNormal);
}

AcAxDocLock::AcAxDocLock(DocLockType type) {
    lock(acDocManagerPtr() ? acDocManagerPtr()->curDocument() : nullptr, type);
}

AcAxDocLock::AcAxDocLock(AcDbDatabase* database, DocLockType type) {
    lock(acDocManagerPtr() ? acDocManagerPtr()->document(database) : nullptr, type);
}

AcAxDocLock::AcAxDocLock(const AcDbObjectId& id, DocLockType type) {
    lock(acDocManagerPtr() ? acDocManagerPtr()->document(id.database()) : nullptr, type);
}

void AcAxDocLock::lock(AcApDocument* document, DocLockType type) {
    if (!document) return;
    AcApDocManager* manager = acDocManagerPtr();
    status_ = manager->lockDocument(document, AcAp::kWrite);
    if (status_ != Acad::eOk) return;
    document_ = document;
    if (type == kCurDocSwitch && manager->curDocument() != document) {
        previous_ = manager->curDocument();
        manager->setCurDocument(document);
    }
}

AcAxDocLock::~AcAxDocLock() {
    AcApDocManager* manager = acDocManagerPtr();
    if (!manager || !document_) return;
    manager->unlockDocument(document_);
    if (previous_) manager->setCurDocument(previous_);
}
