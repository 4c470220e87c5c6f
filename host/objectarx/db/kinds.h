// Which class of the interface an object of a drawing file has.
#pragma once

#include <string_view>

#include "dbmain.h"
#include "host/drawing/tableformat.h"
#include "host/dxf/record.h"

namespace qrs::host {

struct ObjectKind {
    // An AcDbObject.
    AcRxObject* (*make)();
    AcRxClass* rxClass;
};

// By what the file calls it. Kinds without a C++ class of their own are made as AcDbEntity or AcDbObject; their
// run-time class bears their name all the same. Good until kindAge() changes.
const ObjectKind& objectKind(dxf::RecordKind recordKind, std::string_view dxfName);
// Moves on whenever a class of an application comes or goes.
unsigned kindAge();
const ObjectKind& tableKind(TableKind kind);
const ObjectKind& blockDefinitionKind();

}  // namespace qrs::host
