// What the module keeps for each open drawing, and the reactor that begins it.
#pragma once

#include <map>
#include <memory>

#include "acdocman.h"
#include "aced.h"

// Listens on behalf of one drawing: it tells when the drawing's database goes.
class TPipeDocReactor : public AcEditorReactor {
  public:
    explicit TPipeDocReactor(AcDbDatabase* database) : database_(database) {}
    void databaseToBeDestroyed(AcDbDatabase* database) override;
    // The drawing's database; null once it is gone.
    AcDbDatabase* database() const { return database_; }

  private:
    AcDbDatabase* database_;
};

// The entry of one document. Its reactor hangs on the editor from attach to detach or to the entry's end.
class TPipeDocEntry {
  public:
    explicit TPipeDocEntry(AcApDocument* document);
    ~TPipeDocEntry();
    TPipeDocEntry(const TPipeDocEntry&) = delete;
    TPipeDocEntry& operator=(const TPipeDocEntry&) = delete;

    // Both do nothing when it is so already.
    void attach();
    void detach();

  private:
    TPipeDocReactor reactor_;
    bool attached_ = false;
};

// The entries of all documents, by document.
class TPipeAppDocGlobals {
  public:
    TPipeAppDocGlobals();
    // The document-manager reactor goes first, then the entries.
    ~TPipeAppDocGlobals();
    TPipeAppDocGlobals(const TPipeAppDocGlobals&) = delete;
    TPipeAppDocGlobals& operator=(const TPipeAppDocGlobals&) = delete;

    // A null document has no entry; a second call for a document changes nothing.
    void create(AcApDocument* document);
    // Null when there is none.
    TPipeDocEntry* find(AcApDocument* document) const;
    // Detaches and drops the entry; nothing happens without one.
    void release(AcApDocument* document);

  private:
    class ManagerReactor;
    std::unique_ptr<ManagerReactor> managerReactor_;
    std::map<AcApDocument*, std::unique_ptr<TPipeDocEntry>> entries_;
};
