// Names of entities and sets at prompts that ask for objects: read and spelled.
#include "host/editor/entitynames.h"

#include <string_view>

#include "dbhandle.h"
#include "host/editor/expressions.h"
#include "host/editor/points.h"
#include "host/editor/session.h"

namespace qrs::host::ed {

namespace {

constexpr wchar_t kSetOpening[] = L"<Selection set: ";

}  // namespace

std::optional<NamedEntities> namedEntities(Session& session, AcApDocument& document, const std::wstring& text,
                                           std::wstring& fault) {
    if (beginsExpression(text)) return entitiesOfExpression(document, text, fault);
    const std::size_t opening = std::wstring_view(kSetOpening).size();
    int number = 0;
    if (text.compare(0, opening, kSetOpening) != 0 ||
        !parseInteger(text.substr(opening, text.size() - opening - 1), number))
        return std::nullopt;
    NamedEntities named;
    if (const SelectionSet* set = session.sets.find(number)) named.ids = set->ids();
    return named;
}

std::wstring nameText(AcDbObjectId id) {
    ACHAR handle[17] = {};
    id.handle().getIntoAsciiBuffer(handle);
    return std::wstring(L"(handent \"") + handle + L"\")";
}

std::wstring setText(std::int64_t number) {
    return kSetOpening + std::to_wstring(number) + L">";
}

}  // namespace qrs::host::ed
