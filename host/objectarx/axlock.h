// A lock of the current document for a scope.
//
//     AcAxDocLock lock;
//     if (lock.lockStatus() == Acad::eOk) ...
#pragma once

#include "acdocman.h"

class QRS_HOST_PORT AcAxDocLock {
  public:
    AcAxDocLock();
    ~AcAxDocLock();
    AcAxDocLock(const AcAxDocLock&) = delete;
    AcAxDocLock& operator=(const AcAxDocLock&) = delete;

    // eNoDocument when there was nothing to lock.
    Acad::ErrorStatus lockStatus() const { return status_; }

  private:
    AcApDocument* document_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNoDocument;
};
