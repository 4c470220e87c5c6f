// The tabs of a drawing: its model and its sheets, and which of them is current.
//
// A drawing file has the entities of one sheet, the one shown last, in its main section and those of every other sheet
// in a block. Which sheet is current is kept for the session only: the file changes in nothing but its TILEMODE, which
// tells whether the model or a sheet is shown.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/drawing/spaces.h"

class AcApDocument;
class AcDbDatabase;

namespace qrs::host::ed {

class Session;

struct LayoutTab {
    std::wstring name;
    std::wstring block;
    EntitySpace space;
};

// The model, then the sheets from left to right.
std::vector<LayoutTab> layoutTabs(AcDbDatabase& database);
std::wstring currentLayout(AcDbDatabase& database);
// Makes a tab the current one, by its name without regard to case. False when there is none.
bool setCurrentLayout(Session& session, AcApDocument& document, std::wstring_view name);
// Takes the last step of a drawing back, and the change of the sheet in it; tells its name. False when there is none.
bool takeBackStep(AcApDocument& document, std::wstring& name);

}  // namespace qrs::host::ed
