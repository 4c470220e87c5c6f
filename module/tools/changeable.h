// Which entities a command may change, and what it tells of those it leaves.
#pragma once

#include "dbobjptr.h"

namespace qrs::tools {

// Whether the entity lies on a locked layer, where nothing is to be changed.
bool liesOnLockedLayer(const AcDbEntity& entity);

// Prints the line, a format with one %d for the count, unless the count is 0.
void tellCount(const ACHAR* line, int count);

// The same of what the command left as it was, though it was asked for.
void tellLeft(const ACHAR* line, int count);

}  // namespace qrs::tools
