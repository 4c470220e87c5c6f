// Entities named in an answer instead of picked.
#pragma once

#include <optional>
#include <string>

#include "dbid.h"
#include "dbmain.h"

namespace qrs::host::ed {

class Session;

// The entities a text names: (handent "2A7"), or <Selection set: 3> as programs hand sets over. Empty when there is no
// such entity; nothing when the text is no such name.
std::optional<AcDbObjectIdArray> namedEntities(Session& session, AcDbDatabase& database, const std::wstring& text);
// The text that names an entity, or a set.
std::wstring nameText(AcDbObjectId id);
std::wstring setText(std::int64_t number);

}  // namespace qrs::host::ed
