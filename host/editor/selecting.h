// What single picks share with selections.
#pragma once

#include "dbid.h"

class AcApDocument;

namespace qrs::host::ed {

// Of the entities given those that exist and that a user could reach now (not frozen, not invisible).
AcDbObjectIdArray reachableOf(AcApDocument& document, const AcDbObjectIdArray& ids);
// The newest entity of the current space that a user could reach; empty when there is none.
AcDbObjectIdArray lastEntity(AcApDocument& document);

}  // namespace qrs::host::ed
