// Selections with the caller's own prompt, as the suite's selection services make them.
//
//     ads_name set;
//     if (qrs::host::selectObjects(L"\nSelect pipes: ", nullptr, 0, set) == RTNORM) { ... acedSSFree(set); }
#pragma once

#include <string>

#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"

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

// An entity picked inside a block reference, however deep.
struct NestedPick {
    // The entity itself. Null when it lies in the file of an external reference: no object of this drawing then.
    AcDbObjectId entity;
    // The layer it lies on, in this drawing's layer table: of an entity of an external reference the dependent record
    // "reference|layer" ("0" stays "0"). The id is null when the table has no such record.
    AcDbObjectId layerId;
    std::wstring layer;
    // The block references around it that are objects of this drawing, the innermost first; the last one lies in the
    // current space. Empty for an entity that lies in none, which acedNEntSelP gives out as well.
    AcDbObjectIdArray containers;
    bool isExternal = false;  // lies in the file of an external reference
    std::wstring type;        // what drawing files call it ("LINE")
    AcGePoint3d point;        // as picked, world coordinates
    ads_matrix toWorld = {};  // from the coordinates of the definition it lies in; columns x, y, z, offset
};

// Asks for one entity inside the block reference given (the name of an INSERT; null: inside any), by point, or, inside
// any, by name: that entity itself then, which lies in none. Honours
// acedInitGet as acedEntSel does. RTNORM; RTNONE after Enter; RTCAN after Esc; RTKWORD; RTERROR with ERRNO 7 when
// nothing of it lies at the point, among others because the file of an external reference is not found: neither at its
// path, nor beside the drawing, nor in the support folders.
QRS_HOST_PORT int pickNested(const std::wstring& prompt, const ads_name containing, NestedPick& picked);

// The same without asking, at a point of world coordinates. False when nothing lies there.
QRS_HOST_PORT bool nestedAt(const AcGePoint3d& point, const ads_name containing, NestedPick& picked);

// The members of a selection set in their order; empty when it is none.
QRS_HOST_PORT AcDbObjectIdArray selectedIds(const ads_name set);

// The entities of the drawing that pass the filter, in drawing order, without asking.
QRS_HOST_PORT AcDbObjectIdArray allEntities(const resbuf* filter);

}  // namespace qrs::host
