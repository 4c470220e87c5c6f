// Reads (handent "2A7") and the like at prompts that ask for objects.
#include "host/editor/entitynames.h"

#include "dbhandle.h"
#include "host/editor/points.h"
#include "host/editor/session.h"
#include "host/platform/codepage.h"
#include "host/platform/text.h"

namespace qrs::host::ed {

namespace {

constexpr wchar_t kSetOpening[] = L"<Selection set: ";

// The handle in (handent "2A7"); empty when the text is something else.
std::wstring handleIn(const std::wstring& text) {
    constexpr std::wstring_view kFunction = L"HANDENT";
    if (text.size() < 2 || text.front() != L'(' || text.back() != L')') return std::wstring();
    const std::wstring_view call = platform::trimmed(std::wstring_view(text).substr(1, text.size() - 2));
    if (platform::compareNoCase(call.substr(0, kFunction.size()), kFunction) != 0) return std::wstring();
    const std::wstring_view argument = platform::trimmed(call.substr(kFunction.size()));
    if (argument.size() < 3 || argument.front() != L'"' || argument.back() != L'"') return std::wstring();
    return std::wstring(argument.substr(1, argument.size() - 2));
}

}  // namespace

std::optional<AcDbObjectIdArray> namedEntities(Session& session, AcDbDatabase& database, const std::wstring& text) {
    AcDbObjectIdArray ids;
    const std::size_t opening = std::wstring_view(kSetOpening).size();
    if (text.compare(0, opening, kSetOpening) == 0) {
        int number = 0;
        if (!parseInteger(text.substr(opening, text.size() - opening - 1), number)) return std::nullopt;
        const SelectionSet* set = session.sets.find(number);
        return set ? set->ids() : ids;
    }
    const std::wstring handle = handleIn(text);
    if (handle.empty()) return std::nullopt;
    AcDbObjectId id;
    if (database.getAcDbObjectId(id, false, AcDbHandle(handle.c_str())) == Acad::eOk) ids.append(id);
    return ids;
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
