// The drawing that commands work on, and its entities.
#pragma once

#include "dbid.h"

class AcDbDatabase;
class AcRxClass;

namespace qrs::tools {

// Null when no drawing is open.
AcDbDatabase* workingDatabase();

// The entities of model space in drawing order that are, or derive from, the class. Null for every entity.
AcDbObjectIdArray modelSpaceEntities(const AcRxClass* wanted);

// The same for the block (or space) of that id.
AcDbObjectIdArray entitiesOf(AcDbObjectId block, const AcRxClass* wanted);

}  // namespace qrs::tools
