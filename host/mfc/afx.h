// Base of the framework classes: CObject, with the text class and texts by index.
#pragma once

#include "afxstr.h"
#include "afxtypes.h"

// Base of what is owned by pointer; not copied.
class QRS_HOST_PORT CObject {
  public:
    virtual ~CObject();
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

  protected:
    CObject();
};

// Ends the program at once, as an error does that nothing can be done about. Whoever calls it has told the reason.
[[noreturn]] QRS_HOST_PORT void AfxAbort();

#include "afxcoll.h"
