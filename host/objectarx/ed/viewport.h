// The viewport that takes the user's input.
#pragma once

#include <cstdint>

#include "dbid.h"
#include "dbmain.h"

namespace qrs::host::ed {

struct CurrentViewport {
    AcDbObjectId id;          // null in model space, and in a layout without viewports
    std::int64_t number = 0;  // as CVPORT tells it
};

CurrentViewport currentViewport(AcDbDatabase& database);

}  // namespace qrs::host::ed
