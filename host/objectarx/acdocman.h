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
    AcAp::DocLockMode myLockMode() const;
    // True when no command runs in it.
    bool isQuiescent() const;
    // True when the drawing came from, or was saved to, a file.
    bool isNamedDrawing() const;

    struct State;
    State& state() const { return *state_; }

  private:
    friend class AcApDocManager;
    explicit AcApDocument(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

class AcApDocumentIterator : public AcRxObject {
  public:
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcApDocument* document() = 0;
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
    // The command's name comes with the lock and, behind a '#', with the unlock; empty for locks taken by hand.
    virtual void documentLockModeWillChange(AcApDocument* document, AcAp::DocLockMode myCurrentMode,
                                            AcAp::DocLockMode myNewMode, AcAp::DocLockMode currentMode,
                                            const ACHAR* globalCommandName);
    virtual void documentLockModeChanged(AcApDocument* document, AcAp::DocLockMode myPreviousMode,
                                         AcAp::DocLockMode myCurrentMode, AcAp::DocLockMode currentMode,
                                         const ACHAR* globalCommandName);
    virtual void documentLockModeChangeVetoed(AcApDocument* document, const ACHAR* globalCommandName);
    virtual void documentBecameCurrent(AcApDocument* document);
    virtual void documentToBeActivated(AcApDocument* document);
    virtual void documentToBeDeactivated(AcApDocument* document);
    virtual void documentActivated(AcApDocument* document);
    virtual void documentTitleUpdated(AcApDocument* document);

  protected:
    // From inside documentLockModeChanged of a command's lock: the command is not run.
    Acad::ErrorStatus veto();

  private:
    friend class AcApDocManager;
    bool vetoed_ = false;
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
    AcApDocument* mdiActiveDocument() const;
    // The document of a database; null when it belongs to none.
    AcApDocument* document(const AcDbDatabase* database) const;
    bool isApplicationContext() const;
    int documentCount() const;
    // The caller deletes it. It sees the documents of the moment it was made, in the order they were opened.
    AcApDocumentIterator* newAcApDocumentIterator();

    // eNoDocument for a null or closed document.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    Acad::ErrorStatus activateDocument(AcApDocument* document, bool passScript = false);
    // Closes without saving. eLockViolation while a command runs in it.
    Acad::ErrorStatus closeDocument(AcApDocument* document);
    // Opens a drawing by its path in the inner form.
    Acad::ErrorStatus appContextOpenDocument(const ACHAR* fileName);
    Acad::ErrorStatus appContextNewDocument();

    // Locks nest: each needs its unlocking. eLockViolation when there is nothing to unlock.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* globalCommandName = nullptr, const ACHAR* localCommandName = nullptr,
                                   bool prompt = true);
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    // Characters that are typed once the running command has ended, before anything the user answers: a blank or "\n"
    // ends a word, ESC (also written "^C") cancels.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text, bool activate = true,
                                          bool wrapUpInactiveDoc = false, bool echo = true);
    // The number of characters still to be typed.
    int inputPending(AcApDocument* document) const;
    void executeInApplicationContext(void (*procedure)(void*), void* data) const;

    // As AcEditor::addReactor.
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);

    struct State;
    State& state() const { return *state_; }

  private:
    std::unique_ptr<State> state_;
};

// Null while no application lives.
QRS_HOST_PORT AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
#define curDoc() (::acDocManager->curDocument())
