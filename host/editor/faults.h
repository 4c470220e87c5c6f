// What was found wrong with a drawing when it was read.
#pragma once

#include <string>
#include <vector>

#include "host/platform/port.h"

class AcDbDatabase;

namespace qrs::host {

// A line each, with the name of its file; of several one that sums them up unless all are wanted.
QRS_HOST_PORT std::vector<std::string> faultLines(AcDbDatabase& database, bool all);

}  // namespace qrs::host
