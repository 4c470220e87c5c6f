// Stand-in for the suite's closed public library: a traced run of pipes and nodes.
#pragma once

#include "afx.h"
#include "dbid.h"

// One element of a run; whoever traces it owns the elements.
struct SSearchPipeList {
    // Elements of the first three kinds are numbered, all others are passed over.
    enum Kind { kJoint = -1, kPipe = 0, kWell = 1, kEquipment = 2 };

    AcDbObjectId id;
    int kind = kPipe;
    CString serial;
    SSearchPipeList* next = nullptr;  // null at the end of the run
};
