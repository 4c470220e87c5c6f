// Shorthands for what every drawing has.
#pragma once

#include "dbmain.h"

class QRS_HOST_PORT AcDbSymbolUtilityServices {
  public:
    AcDbObjectId blockModelSpaceId(AcDbDatabase* database) const;
};

QRS_HOST_PORT const AcDbSymbolUtilityServices* acdbSymUtil();
