// Which entities a command may change, and what it tells of those it leaves.
#pragma once

#include "dbobjptr.h"

namespace qrs::tools {

// Whether the entity lies on a locked layer, where nothing is to be changed.
bool liesOnLockedLayer(const AcDbEntity& entity);

// Prints the line, a format with one %d for the count, unless the count is 0.
void tellCount(const ACHAR* line, int count);

// The entities of model space in drawing order that are, or derive from, the class. Null for every entity.
AcDbObjectIdArray modelSpaceEntities(const AcRxClass* wanted);

// The same for the block (or space) of that id.
AcDbObjectIdArray entitiesOf(AcDbObjectId block, const AcRxClass* wanted);

}  // namespace qrs::tools
