// Opening, saving, closing and locking of drawings.
#include "host/editor/documents.h"

#include <algorithm>
#include <utility>

#include "dbapserv.h"
#include "host/editor/editorstate.h"
#include "host/editor/session.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

using qrs::host::DatabaseAccess;

int strengthOf(AcAp::DocLockMode mode) {
    switch (mode) {
        case AcAp::kXWrite:
            return 4;
        case AcAp::kWrite:
        case AcAp::kProtectedAutoWrite:
            return 3;
        case AcAp::kAutoWrite:
            return 2;
        case AcAp::kRead:
            return 1;
        default:
            return 0;
    }
}

AcAp::DocLockMode AcApDocument::State::strongestLock() const {
    AcAp::DocLockMode strongest = AcAp::kNotLocked;
    for (const Lock& lock : locks)
        if (strengthOf(lock.mode) > strengthOf(strongest)) strongest = lock.mode;
    return strongest;
}

bool AcApDocManager::State::open(const std::filesystem::path& native, qrs::platform::Error& error) {
    std::wstring name = qrs::platform::innerPath(native);
    session_->editor.reactors().list.tell([&](AcEditorReactor& reactor) { reactor.beginDwgOpen(name.data()); });
    std::unique_ptr<AcDbDatabase> database = DatabaseAccess::open(native, error);
    if (!database) return false;
    adopt(std::move(database), name);
    return true;
}

void AcApDocManager::State::openNew() {
    auto database = std::make_unique<AcDbDatabase>(true);
    DatabaseAccess::setDisplayName(*database, L"Drawing" + std::to_wstring(++newCount_) + L".dxf");
    adopt(std::move(database), std::wstring());
}

void AcApDocManager::State::adopt(std::unique_ptr<AcDbDatabase> database, const std::wstring& fileName) {
    auto state = std::make_unique<AcApDocument::State>();
    state->database = std::move(database);
    if (!fileName.empty()) state->openedFrom = qrs::platform::wholePath(fileName);
    AcApDocument* document =
        documents_.emplace_back(std::unique_ptr<AcApDocument>(new AcApDocument(std::move(state)))).get();
    AcDbDatabase* opened = document->database();
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentCreateStarted(document); });
    session_->editor.reactors().list.tell([&](AcEditorReactor& reactor) {
        reactor.databaseConstructed(opened);
        if (!fileName.empty()) reactor.endDwgOpen(fileName.c_str(), opened);
    });
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentCreated(document); });
    if (active_) reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentToBeDeactivated(active_); });
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentToBeActivated(document); });
    active_ = document;
    makeCurrent(document);
    session_->plugins.tellDocument(AcRx::kLoadDwgMsg, document);
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentActivated(document); });
}

bool AcApDocManager::State::save(AcApDocument* document, const std::filesystem::path& native, int backups,
                                 qrs::platform::Error& error) {
    AcDbDatabase* database = document->database();
    const std::wstring name = qrs::platform::innerPath(native);
    const std::wstring earlier = document->fileName();
    auto& listeners = session_->editor.reactors().list;
    listeners.tell([&](AcEditorReactor& reactor) { reactor.beginSave(database, name.c_str()); });
    if (!DatabaseAccess::save(*database, native, backups, error)) {
        listeners.tell([&](AcEditorReactor& reactor) { reactor.abortSave(database); });
        return false;
    }
    listeners.tell([&](AcEditorReactor& reactor) { reactor.saveComplete(database, name.c_str()); });
    if (earlier != document->fileName())
        reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentTitleUpdated(document); });
    return true;
}

Acad::ErrorStatus AcApDocManager::State::close(AcApDocument* document) {
    if (!holds(document)) return Acad::eNoDocument;
    if (session_->isRunningIn(document)) return Acad::eLockViolation;
    destroy(document);
    return Acad::eOk;
}

void AcApDocManager::State::closeAll() {
    while (!documents_.empty())
        destroy(documents_.back().get());
}

void AcApDocManager::State::destroy(AcApDocument* document) {
    const std::wstring fileName = document->fileName();
    AcDbDatabase* database = document->database();
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentToBeDestroyed(document); });
    session_->plugins.tellDocument(AcRx::kUnloadDwgMsg, document);
    session_->editor.reactors().list.tell([&](AcEditorReactor& reactor) {
        reactor.beginClose(database);
        reactor.databaseToBeDestroyed(database);
    });
    session_->input.forget(document);
    session_->sets.forget(DatabaseAccess::number(*database));

    const auto place =
        std::find_if(documents_.begin(), documents_.end(), [&](const auto& one) { return one.get() == document; });
    const std::unique_ptr<AcApDocument> closing = std::move(*place);
    documents_.erase(place);
    if (active_ == document) {
        active_ = nullptr;
        activate(documents_.empty() ? nullptr : documents_.back().get());
    } else if (current_ == document) {
        makeCurrent(active_);
    }
    closing->state().database.reset();
    reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentDestroyed(fileName.c_str()); });
}

bool AcApDocManager::State::holds(const AcApDocument* document) const {
    return document &&
           std::any_of(documents_.begin(), documents_.end(), [&](const auto& one) { return one.get() == document; });
}

std::vector<AcApDocument*> AcApDocManager::State::all() const {
    std::vector<AcApDocument*> documents;
    for (const auto& document : documents_)
        documents.push_back(document.get());
    return documents;
}

void AcApDocManager::State::makeCurrent(AcApDocument* document) {
    if (document == current_) return;
    current_ = document;
    acdbHostApplicationServices()->setWorkingDatabase(document ? document->database() : nullptr);
    if (document) reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentBecameCurrent(document); });
}

void AcApDocManager::State::activate(AcApDocument* document) {
    if (document != active_) {
        if (active_) reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentToBeDeactivated(active_); });
        if (document) reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentToBeActivated(document); });
        active_ = document;
        makeCurrent(document);
        if (document) reactors.tell([&](AcApDocManagerReactor& reactor) { reactor.documentActivated(document); });
    } else {
        makeCurrent(document);
    }
}

void AcApDocManager::State::lock(AcApDocument* document, AcAp::DocLockMode mode, const std::wstring& commandName) {
    AcApDocument::State& state = document->state();
    const AcAp::DocLockMode before = state.strongestLock();
    state.locks.push_back(AcApDocument::State::Lock{mode, commandName});
    const AcAp::DocLockMode after = state.strongestLock();
    reactors.tell([&](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeWillChange(document, before, after, after, commandName.c_str());
    });
    reactors.tell([&](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeChanged(document, before, after, after, commandName.c_str());
    });
}

bool AcApDocManager::State::unlock(AcApDocument* document) {
    AcApDocument::State& state = document->state();
    if (state.locks.empty()) return false;
    const AcAp::DocLockMode before = state.strongestLock();
    const std::wstring released = state.locks.back().commandName;
    const std::wstring name = released.empty() ? std::wstring() : L'#' + released;
    state.locks.pop_back();
    const AcAp::DocLockMode after = state.strongestLock();
    reactors.tell([&](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeWillChange(document, before, after, after, name.c_str());
    });
    reactors.tell([&](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeChanged(document, before, after, after, name.c_str());
    });
    return true;
}
