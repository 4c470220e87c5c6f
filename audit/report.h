// Reports of checks, as texts in UTF-8.
#pragma once

#include <string>
#include <vector>

#include "check.h"

namespace qrs::audit {

using CheckResults = std::vector<CheckResult>;

// For people at a command line; of several drawings with a table that sums them up.
std::string textReport(const CheckResults& results);
// For programs.
std::string jsonReport(const CheckResults& results);
// A page of its own, without scripts.
std::string htmlReport(const CheckResults& results);

// "1 object", "2 objects": one and many are texts to be translated, with %1 for the count.
std::wstring countedText(std::uint64_t count, const wchar_t* one, const wchar_t* many);
// How many findings of each severity, and how many were accepted.
std::wstring summaryOf(const CheckResult& result);
std::wstring titleOf(const CheckResult& result);
// Which file the standard is.
std::wstring standardOf(const CheckResult& result);
std::wstring textOf(const Difference& difference);
std::wstring remedyOf(const Rule& rule);

}  // namespace qrs::audit
