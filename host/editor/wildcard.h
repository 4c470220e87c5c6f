// The editor's wildcards.
#pragma once

#include <string_view>

namespace qrs::host::ed {

// Without regard to case. '*' any characters, '?' one, '#' a digit, '@' a letter, '.' one that is neither letter nor
// digit, [abc] [a-c] [~a-c] sets, '`' takes the next one as it is; '~' before a pattern means all that does not match;
// patterns are separated by commas.
bool matchesWildcard(std::wstring_view text, std::wstring_view patterns);

}  // namespace qrs::host::ed
