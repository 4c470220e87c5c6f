// Asks through acedGetString and its kin, puts the answers into the form commands want, and tells what was wrong.
#include "host/commands/asking.h"

#include <string_view>
#include <utility>
#include <vector>

#include "acedads.h"
#include "host/editor/hostapp.h"
#include "host/editor/hostselect.h"
#include "host/editor/session.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

// Longer than any path or list of layer names that is typed.
constexpr std::size_t kAnswerSize = 32768;

}  // namespace

std::optional<std::wstring> askText(const std::wstring& prompt, Blanks blanks, Wanted wanted,
                                    std::vector<std::wstring> words) {
    std::vector<ACHAR> answer(kAnswerSize);
    if (ed::Session* const session = ed::Session::current()) session->want(wanted, std::move(words));
    const int result = acedGetString(blanks == Blanks::Kept ? 1 : 0, prompt.c_str(), answer.data(), answer.size());
    if (result != RTNORM) return std::nullopt;
    const std::wstring_view text(answer.data());
    if (text.size() + 1 == answer.size()) {
        // It may have been cut: half a list would be done, and a cut name with it.
        refuse(translated(L"The answer has %1 characters or more; nothing was done.", kAnswerSize - 1));
        return std::nullopt;
    }
    return std::wstring(platform::trimmed(text));
}

std::optional<std::wstring> askKeyword(const std::wstring& keywords, const std::wstring& prompt) {
    ACHAR answer[133] = {};
    acedInitGet(0, keywords.c_str());
    const int result = acedGetKword(prompt.c_str(), answer, sizeof answer / sizeof answer[0]);
    if (result == RTNONE) return std::wstring();
    if (result != RTNORM) return std::nullopt;
    return std::wstring(answer);
}

std::optional<bool> askYesNo(const std::wstring& prompt, bool fallback) {
    const std::optional<std::wstring> answer = askKeyword(L"Yes No", prompt);
    if (!answer) return std::nullopt;
    return answer->empty() ? fallback : *answer == L"Yes";
}

std::optional<AcDbObjectIdArray> askObjects() {
    ads_name set = {};
    const int result = acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
    if (result == RTERROR) return AcDbObjectIdArray();
    if (result != RTNORM) return std::nullopt;
    AcDbObjectIdArray objects = selectedIds(set);
    acedSSFree(set);
    return objects;
}

void tell(const std::wstring& text) {
    acedPrompt((L"\n" + text).c_str());
}

void refuse(const std::wstring& text) {
    refuseCommand(L"\n" + text);
}

std::wstring inQuotes(const std::wstring& name) {
    return L"\"" + name + L"\"";
}

void failWith(const platform::Error& error) {
    failCommand(platform::fromUtf8(error.message));
}

}  // namespace qrs::host::commands
