// Shorthands for what every drawing has.
#pragma once

#include "dbmain.h"

namespace AcDbSymbolUtilities {

class QRS_HOST_PORT Services {
  public:
    AcDbObjectId blockModelSpaceId(AcDbDatabase* database) const;
};

}  // namespace AcDbSymbolUtilities

QRS_HOST_PORT const AcDbSymbolUtilities::Services* acdbSymUtil();
