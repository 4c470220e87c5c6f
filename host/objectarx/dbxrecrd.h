// Records that hold a chain of values of any kind.
#pragma once

#include "dbmain.h"

class QRS_HOST_PORT AcDbXrecord : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord)
    // Empty.
    AcDbXrecord();

    // The chain of values; released with acutRelRb; null when there is nothing in it. Handles come as texts. database
    // is accepted and not needed.
    Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* database = nullptr) const;
    // Puts a chain in the place of what the record holds. Texts (1 to 9, 100, 300 to 309 ...), numbers,
    // points, binary data and object names (330 to 369) with the types the group codes have. eInvalidInput for a type
    // that is none of these, a null text or a number that is none; nothing is changed then. An equal chain changes
    // nothing.
    Acad::ErrorStatus setFromRbChain(const resbuf& chain, AcDbDatabase* database = nullptr);
};
