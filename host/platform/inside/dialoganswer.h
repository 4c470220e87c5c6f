// What an answer to a dialog in text form means.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/platform/inside/dialoglines.h"

namespace qrs::platform {

struct DialogAnswer {
    std::vector<DialogItem> items;      // what the answer speaks of
    std::optional<std::wstring> value;  // what stands after "="
    std::wstring refusal;               // why it means nothing, one sentence; items are empty then
};

// An answer that is neither "?" nor closes the dialog.
DialogAnswer parseAnswer(Dialog& dialog, const std::wstring& answer);

// A text without the quotes around it, if there are any.
std::wstring unquoted(const std::wstring& text);

// "1", "on", "yes", "是" and their like are true, their opposites false, everything else is neither.
std::optional<bool> parseSwitch(const std::wstring& text);

}  // namespace qrs::platform
