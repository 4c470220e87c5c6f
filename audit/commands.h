// The commands of this plug-in.
#pragma once

namespace qrs::audit {

void checkStandard();
void repairStandard();
void reportPipes();

}  // namespace qrs::audit
