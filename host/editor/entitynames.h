// Entities named in an answer instead of picked.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "dbid.h"

class AcApDocument;

namespace qrs::host::ed {

class Session;

struct NamedEntities {
    AcDbObjectIdArray ids;
    bool isSet = false;       // a selection, however many it holds
    bool reachesAll = false;  // also what is hidden, or on layers that are frozen
};

// The entities a text names: an expression, see expressions.h, or <Selection set: 3> as programs hand sets over. No ids
// when there is no such entity; nothing when the text is no such name, with the fault when it is an expression.
std::optional<NamedEntities> namedEntities(Session& session, AcApDocument& document, const std::wstring& text,
                                           std::wstring& fault);
// The text that names an entity, or a set.
std::wstring nameText(AcDbObjectId id);
std::wstring setText(std::int64_t number);

}  // namespace qrs::host::ed
