// The open drawings and what the editor keeps with each.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "acdocman.h"
#include "dbid.h"
#include "dbmain.h"
#include "host/editor/reactors.h"
#include "host/editor/viewport.h"
#include "host/pick/bounds.h"
#include "host/pick/references.h"
#include "host/platform/error.h"

namespace qrs::host::ed {
class Session;
}

// How much a lock allows; 0 when it is none.
int strengthOf(AcAp::DocLockMode mode);

struct AcApDocument::State {
    struct Lock {
        AcAp::DocLockMode mode;
        std::wstring commandName;
    };
    std::unique_ptr<AcDbDatabase> database;
    std::vector<Lock> locks;
    AcDbObjectIdArray pickFirst;
    bool pickFirstSetAnew = false;  // by the command that runs
    AcDbObjectIdArray previousSelection;
    qrs::host::ed::ViewMemory views;
    qrs::host::pick::References references;
    std::wstring openedFrom;         // the whole path; empty for a new drawing
    qrs::host::pick::Bounds bounds;  // of the database's drawing
    // Texts whose addresses were given out.
    mutable std::wstring fileName;
    mutable std::wstring title;

    AcAp::DocLockMode strongestLock() const;
};

// There is an application's session as long as there is a manager.
struct AcApDocManager::State {
    void attach(qrs::host::ed::Session* session) { session_ = session; }

    bool open(const std::filesystem::path& native, qrs::platform::Error& error);
    void openNew();
    bool save(AcApDocument* document, const std::filesystem::path& native, int backups, qrs::platform::Error& error);
    Acad::ErrorStatus close(AcApDocument* document);
    // Newest first, whatever holds them.
    void closeAll();

    bool holds(const AcApDocument* document) const;
    std::vector<AcApDocument*> all() const;
    AcApDocument* current() const { return current_; }
    // The working database follows. Null is allowed.
    void makeCurrent(AcApDocument* document);
    void activate(AcApDocument* document);

    void lock(AcApDocument* document, AcAp::DocLockMode mode, const std::wstring& commandName);
    bool unlock(AcApDocument* document);

    qrs::host::ed::ReactorList<AcApDocManagerReactor> reactors;

  private:
    void adopt(std::unique_ptr<AcDbDatabase> database, const std::wstring& fileName);
    void destroy(AcApDocument* document);

    qrs::host::ed::Session* session_ = nullptr;
    std::vector<std::unique_ptr<AcApDocument>> documents_;
    AcApDocument* current_ = nullptr;
    AcApDocument* active_ = nullptr;
    int newCount_ = 0;
};
