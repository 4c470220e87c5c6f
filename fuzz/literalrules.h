// The rules of serials and wildcards once more, written down step by step as they are stated and as slow as that is:
// what the module's own are measured against.
#pragma once

#include <string>
#include <vector>

namespace qrs::fuzz {

std::vector<std::wstring> splitSerial(const std::wstring& serial);
// The sign of the order alone where one is empty.
int compareSerial(const std::wstring& a, const std::wstring& b);
std::wstring increasedSerial(const std::wstring& serial, int step);
bool matchesWildcard(const std::wstring& text, const std::wstring& pattern, bool caseSensitive);
bool matchesWildcards(const std::wstring& text, const std::wstring& patterns, bool all, bool negate,
                      bool caseSensitive);

}  // namespace qrs::fuzz
