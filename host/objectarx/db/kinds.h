// Which class of the interface an object of a drawing file has.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "host/drawing/contents.h"
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

// The kinds of the objects of one drawing.
class ObjectKinds {
  public:
    explicit ObjectKinds(const Contents& contents) : contents_(contents) {}
    const ObjectKind& of(std::uint32_t id);

  private:
    const Contents& contents_;
    std::vector<const ObjectKind*> ofEntities_;  // by type, as of age_
    unsigned age_ = 0;
};

}  // namespace qrs::host
