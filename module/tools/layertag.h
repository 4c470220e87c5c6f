// Tags that tell which discipline an entity belongs to.
//
// A tag is an extended-data item of the entity: application name "LAYER-TAG", one text, the discipline. It stays with
// the entity whatever layer it is put on.
#pragma once

#include "afx.h"
#include "dbmain.h"

namespace qrs::tools {

constexpr const wchar_t* kLayerTagItem = L"LAYER-TAG";
constexpr const wchar_t* kArchitectureTag = L"建筑";
constexpr const wchar_t* kPlumbingTag = L"给排水";

// The entity's discipline; empty when it bears no tag.
CString layerTag(const AcDbEntity& entity);

// For the tag buttons of the layer control panel: asks for entities, tags each with the discipline in place of any tag
// it bears, and prints how many were tagged and how many were left because their layer is locked.
void tagPicked(const CString& discipline);

// The command that clears the tags of architecture: asks for entities, or takes the whole drawing, and prints how many
// tags were cleared and how many were left because their layer is locked. Other tags stay.
void cleanArchitectureTags();

}  // namespace qrs::tools
