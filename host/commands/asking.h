// Questions the host's own commands ask, and what they tell.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dbid.h"
#include "host/editor/hostapp.h"
#include "host/platform/error.h"

namespace qrs::host::commands {

// One answer, with blanks inside when they are allowed and without those around it; nothing when the user cancelled.
// wanted, words: what it can be completed from.
enum class Blanks { EndAnswer, Kept };
std::optional<std::wstring> askText(const std::wstring& prompt, Blanks blanks, Wanted wanted = Wanted::Text,
                                    std::vector<std::wstring> words = {});

// A keyword as the list spells it (see acedInitGet), or empty for Enter; nothing when the user cancelled.
std::optional<std::wstring> askKeyword(const std::wstring& keywords, const std::wstring& prompt);

// Yes or no; Enter answers fallback. Nothing when the user cancelled.
std::optional<bool> askYesNo(const std::wstring& prompt, bool fallback);

// The objects of a selection, which may be none; nothing when the user cancelled.
std::optional<AcDbObjectIdArray> askObjects();

// One line on the command line.
void tell(const std::wstring& text);
// The same of what the command does not do.
void refuse(const std::wstring& text);
std::wstring inQuotes(const std::wstring& name);

// A host function's failure as the running command's.
void failWith(const platform::Error& error);

}  // namespace qrs::host::commands
