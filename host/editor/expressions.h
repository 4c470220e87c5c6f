// Expressions that name entities in an answer, as scripts for the editor write them: (handent "2A7"), (entlast),
// (ssget "X" '((8 . "PIPE*"))), (ssname (ssget ...) 0). They are read, not run: nothing else is understood.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/editor/entitynames.h"

class AcApDocument;

namespace qrs::host::ed {

bool beginsExpression(std::wstring_view text);
// The entities an expression names in the current drawing. Nothing for a text that is no such expression; fault then
// says why, and what is understood.
std::optional<NamedEntities> entitiesOfExpression(AcApDocument& document, std::wstring_view text, std::wstring& fault);

}  // namespace qrs::host::ed
