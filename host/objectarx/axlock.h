// A document lock for a scope.
#pragma once

#include "acdocman.h"
#include "dbid.h"

//     AcAxDocLock lock;
//     if (lock.lockStatus() == Acad::eOk) ...
class QRS_HOST_PORT AcAxDocLock {
  public:
    enum DocLockType { kNormal, kCurDocSwitch };

    // The current document; the document of a database or an object. kCurDocSwitch also makes it the current one for
    // the scope.
    AcAxDocLock();
    explicit AcAxDocLock(DocLockType type);
    explicit AcAxDocLock(AcDbDatabase* database, DocLockType type = kNormal);
    explicit AcAxDocLock(const AcDbObjectId& id, DocLockType type = kNormal);
    ~AcAxDocLock();
    AcAxDocLock(const AcAxDocLock&) = delete;
    AcAxDocLock& operator=(const AcAxDocLock&) = delete;

    // eNoDocument when there was nothing to lock.
    Acad::ErrorStatus lockStatus() const { return status_; }
    AcApDocument* document() const { return document_; }

  private:
    void lock(AcApDocument* document, DocLockType type);

    AcApDocument* document_ = nullptr;
    AcApDocument* previous_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNoDocument;
};
