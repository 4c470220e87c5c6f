// Shorthands for what every drawing has.
#pragma once

#include "dbmain.h"

class QRS_HOST_PORT AcDbSymbolUtilityServices {
  public:
    AcDbObjectId blockModelSpaceId(AcDbDatabase* database) const;
    AcDbObjectId blockPaperSpaceId(AcDbDatabase* database) const;
    AcDbObjectId layerZeroId(AcDbDatabase* database) const;
    // True when names differ at most in case.
    bool compareSymbolName(const ACHAR* first, const ACHAR* second) const;
};

QRS_HOST_PORT const AcDbSymbolUtilityServices* acdbSymUtil();
