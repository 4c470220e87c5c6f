// Selections with the caller's own prompt, as the suite's selection services make them.
//
//     ads_name set;
//     if (qrs::host::selectObjects(L"\nSelect pipes: ", nullptr, 0, set) == RTNORM) { ... acedSSFree(set); }
#pragma once

#include <string>

#include "adsdef.h"
#include "dbid.h"

namespace qrs::host {

enum SelectFlag : unsigned {
    kSelectOnce = 1,       // one answer ends the selection
    kIgnorePickFirst = 2,  // ask even when there is a pick-first set
};

// Asks with prompt for entities that pass the filter (see acedSSGet; null lets all pass). The pick-first set, when the
// running command may use it, answers without asking. RTNORM with a set of one or more, which the caller frees; RTNONE
// when the user ended the selection (Enter) without any; RTCAN when the user cancelled; RTERROR without a drawing.
// RTKWORD for a keyword of acedInitGet, which acedGetInput then returns, with a set of what was chosen before it, or
// the null set when that was nothing.
QRS_HOST_PORT int selectObjects(const std::wstring& prompt, const resbuf* filter, unsigned flags, ads_name set);

// The members of a selection set in their order; empty when it is none.
QRS_HOST_PORT AcDbObjectIdArray selectedIds(const ads_name set);

// The entities of the drawing that pass the filter, in drawing order, without asking.
QRS_HOST_PORT AcDbObjectIdArray allEntities(const resbuf* filter);

}  // namespace qrs::host
