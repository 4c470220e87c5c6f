// What the answer to a prompt can be completed to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/editor/hostapp.h"
#include "host/editor/input.h"

namespace qrs::host::ed {

class Session;

// A prompt while it is asked.
struct Asked {
    Wanted wanted = Wanted::Text;
    Extent extent = Extent::Line;
    std::vector<std::wstring> words;  // keywords and the like, taken besides
};

std::vector<std::wstring> commandNames(const Session& session);

// typed: what stands before the cursor.
Completion complete(const Session& session, const Asked& asked, std::wstring_view typed);

}  // namespace qrs::host::ed
