// Records that hold a chain of values of any kind.
#pragma once

#include "dbmain.h"

class QRS_HOST_PORT AcDbXrecord : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord)
    AcDbXrecord() = default;

    // The chain of values; released with acutRelRb; null when there is nothing in it. Handles come as texts. database
    // is accepted and not needed.
    Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* database = nullptr) const;
};
