// New objects of the editor's interface become objects of a drawing.
#pragma once

#include "dbsymtb.h"

namespace qrs::host {

// Whether a table may take a new record: then its name and what it says of itself, which is never null.
Acad::ErrorStatus examineNewRecord(const AcDbSymbolTable& table, const AcDbSymbolTableRecord* record,
                                   const ACHAR*& name, const DetachedTags*& own);

// Puts a new entity after the others of a block.
Acad::ErrorStatus appendEntity(DatabaseState& state, AcDbEntity& entity, std::uint32_t blockId);
// Puts a new object that is no entity after the others of the drawing. owner: a handle.
Acad::ErrorStatus appendObject(DatabaseState& state, AcDbObject& object, std::uint64_t owner);

}  // namespace qrs::host
