// Per-document entries of the module and the reactor that keeps them.
#include "frame/docglobals.h"

#include "panel/layercontrolbar.h"
#include "tools/guard.h"

void TPipeDocReactor::databaseToBeDestroyed(AcDbDatabase* database) {
    if (database == database_) database_ = nullptr;
}

TPipeDocEntry::TPipeDocEntry(AcApDocument* document) : reactor_(document->database()) {}

TPipeDocEntry::~TPipeDocEntry() {
    detach();
}

void TPipeDocEntry::attach() {
    AcEditor* editor = acedEditor;
    if (attached_ || !editor) return;
    editor->addReactor(&reactor_);
    attached_ = true;
}

void TPipeDocEntry::detach() {
    if (!attached_) return;
    attached_ = false;
    if (AcEditor* editor = acedEditor) editor->removeReactor(&reactor_);
}

// A drawing that is opened while the module is loaded gets its entry here; the message that it is loaded attaches it.
class TPipeAppDocGlobals::ManagerReactor : public AcApDocManagerReactor {
  public:
    // Told of drawings as long as it lives, also when memory runs out while the entries are made.
    explicit ManagerReactor(TPipeAppDocGlobals& globals) : globals_(globals) {
        if (AcApDocManager* manager = acDocManager) manager->addReactor(this);
    }
    ~ManagerReactor() override {
        if (AcApDocManager* manager = acDocManager) manager->removeReactor(this);
    }
    void documentCreated(AcApDocument* document) override {
        qrs::tools::guarded([&] { globals_.create(document); });
    }

    // The panel lists the layers of the current drawing.
    void documentBecameCurrent(AcApDocument*) override { qrs::tools::guarded(CLayerControlBar::Refresh); }

  private:
    TPipeAppDocGlobals& globals_;
};

TPipeAppDocGlobals::TPipeAppDocGlobals() : managerReactor_(std::make_unique<ManagerReactor>(*this)) {
    if (AcApDocManager* manager = acDocManager) create(manager->curDocument());
}

TPipeAppDocGlobals::~TPipeAppDocGlobals() {
    managerReactor_.reset();
    entries_.clear();
}

void TPipeAppDocGlobals::create(AcApDocument* document) {
    if (!document || find(document)) return;
    entries_[document] = std::make_unique<TPipeDocEntry>(document);
}

TPipeDocEntry* TPipeAppDocGlobals::find(AcApDocument* document) const {
    const auto found = entries_.find(document);
    return found == entries_.end() ? nullptr : found->second.get();
}

void TPipeAppDocGlobals::release(AcApDocument* document) {
    entries_.erase(document);
}
