// How wide a text is on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/platform/port.h"

namespace qrs::platform {

// In columns: Chinese characters and their like take two, and so do emoji, of however many code points; combining marks
// and control characters none.
QRS_HOST_PORT std::size_t columnsOf(std::wstring_view text);

// The text with blanks after it up to so many columns; a wider one stays as it is.
QRS_HOST_PORT std::wstring paddedTo(std::wstring_view text, std::size_t columns);

// A text as a table shows it: one wider than any name of a drawing may be ends in "..." there, so that it does not
// widen every row.
QRS_HOST_PORT std::wstring shownInTable(std::wstring_view text);

}  // namespace qrs::platform
