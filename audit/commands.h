// The commands of this plug-in.
#pragma once

namespace qrs::audit {

void checkStandard();

}  // namespace qrs::audit
