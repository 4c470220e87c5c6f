// The root of the reactors that listen to the editor.
#pragma once

#include "rxobject.h"

class AcDbDatabase;

// Every function does nothing unless overridden.
class QRS_HOST_PORT AcRxEventReactor : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcRxEventReactor);
    AcRxEventReactor();
    ~AcRxEventReactor() override;

    virtual void databaseConstructed(AcDbDatabase* database);
    virtual void databaseToBeDestroyed(AcDbDatabase* database);
    virtual void beginSave(AcDbDatabase* database, const ACHAR* intendedName);
    virtual void saveComplete(AcDbDatabase* database, const ACHAR* actualName);
    virtual void abortSave(AcDbDatabase* database);
};
