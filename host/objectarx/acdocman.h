// The open drawings: documents, their manager, and the reactors that listen to it.
#pragma once

#include <memory>

#include "acadstrc.h"
#include "adesk.h"
#include "rxobject.h"

class AcDbDatabase;

struct AcAp {
    enum DocLockMode {
        kNone = 0x00,
        kAutoWrite = 0x01,
        kNotLocked = 0x02,
        kWrite = 0x04,
        kProtectedAutoWrite = 0x14,
        kRead = 0x20,
        kXWrite = 0x40,
    };
};

class QRS_HOST_PORT AcApDocument : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcApDocument);
    ~AcApDocument() override;
    AcApDocument(const AcApDocument&) = delete;
    AcApDocument& operator=(const AcApDocument&) = delete;

    // The drawing's path in the inner form; the title alone for a drawing that was never saved.
    const ACHAR* fileName() const;
    // The file's name without its folder.
    const ACHAR* docTitle() const;
    AcDbDatabase* database() const;
    // The strongest lock held, kNotLocked without any. There is one context of execution, so every lock is an own one
    // and lockMode(false) never finds another's.
    AcAp::DocLockMode lockMode(bool includeMyLocks = false) const;
    // True when the drawing came from, or was saved to, a file.
    bool isNamedDrawing() const;

    struct State;
#ifndef QRS_PUBLISHED_ONLY
    State& state() const {
        return *state_;
    }
#endif  // QRS_PUBLISHED_ONLY

  private:
    friend class AcApDocManager;
    explicit AcApDocument(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

// Every function does nothing unless overridden. A drawing that opens is told in this order: documentCreateStarted,
// documentCreated, documentToBeDeactivated (the earlier one), documentToBeActivated, documentBecameCurrent, then the
// plug-ins' kLoadDwgMsg, then documentActivated. One that closes: documentToBeDestroyed, the plug-ins' kUnloadDwgMsg,
// activation of the next one, documentDestroyed.
class QRS_HOST_PORT AcApDocManagerReactor : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcApDocManagerReactor);
    AcApDocManagerReactor();
    ~AcApDocManagerReactor() override;

    virtual void documentCreateStarted(AcApDocument* document);
    virtual void documentCreated(AcApDocument* document);
    virtual void documentToBeDestroyed(AcApDocument* document);
    virtual void documentDestroyed(const ACHAR* fileName);
    // The command's name comes with the lock and, after a '#', with the unlock; empty for locks taken by hand.
    virtual void documentLockModeWillChange(AcApDocument* document, AcAp::DocLockMode myCurrentMode,
                                            AcAp::DocLockMode myNewMode, AcAp::DocLockMode currentMode,
                                            const ACHAR* globalCommandName);
    virtual void documentLockModeChanged(AcApDocument* document, AcAp::DocLockMode myPreviousMode,
                                         AcAp::DocLockMode myCurrentMode, AcAp::DocLockMode currentMode,
                                         const ACHAR* globalCommandName);
    virtual void documentBecameCurrent(AcApDocument* document);
    virtual void documentToBeActivated(AcApDocument* document);
    virtual void documentToBeDeactivated(AcApDocument* document);
    virtual void documentActivated(AcApDocument* document);
    virtual void documentTitleUpdated(AcApDocument* document);
};

class QRS_HOST_PORT AcApDocManager : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcApDocManager);
    AcApDocManager();
    ~AcApDocManager() override;
    AcApDocManager(const AcApDocManager&) = delete;
    AcApDocManager& operator=(const AcApDocManager&) = delete;

    // Null when no drawing is open.
    AcApDocument* curDocument() const;
    // The document of a database; null when it belongs to none.
    AcApDocument* document(const AcDbDatabase* database) const;

    // eNoDocument for a null or closed document.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    // Closes without saving. eLockViolation while a command runs in it.
    Acad::ErrorStatus closeDocument(AcApDocument* document);

    // Locks nest: each needs its unlocking. eLockViolation when there is nothing to unlock.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* globalCommandName = nullptr, const ACHAR* localCommandName = nullptr,
                                   bool prompt = true);
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    // Characters that are typed once the running command has ended, before anything the user answers: a blank or "\n"
    // ends a word, ESC (also written "^C") cancels.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text, bool activate = true,
                                          bool wrapUpInactiveDoc = false, bool echo = true);

    // As AcEditor::addReactor.
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);

    struct State;
#ifndef QRS_PUBLISHED_ONLY
    State& state() const {
        return *state_;
    }
#endif  // QRS_PUBLISHED_ONLY

  private:
    std::unique_ptr<State> state_;
};

// Null while no application lives.
QRS_HOST_PORT AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
#define curDoc() (::acDocManager->curDocument())
