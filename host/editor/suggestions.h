// What a mistyped name most likely means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrs::host::ed {

// The names nearest to what was typed, three at most, without regard to case: those a letter or two away (added, left
// out, wrong, or changed places with the next) and those that begin with it. None when nothing is near.
std::vector<std::wstring> nearNames(std::wstring_view typed, const std::vector<std::wstring>& names);

// " Did you mean gxsz or gxgd?", to stand after a message; empty when nothing is near.
std::wstring didYouMean(std::wstring_view typed, const std::vector<std::wstring>& names);

}  // namespace qrs::host::ed
