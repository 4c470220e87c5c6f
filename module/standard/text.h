// Texts of the tree: views, UTF-8, comparison, and lists of names that hold no name twice.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "afxstr.h"

namespace qrs::standard {

inline std::wstring_view view(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}
inline CString makeText(std::wstring_view text) {
    return CString(text.data(), static_cast<int>(text.size()));
}

CString fromUtf8(std::string_view bytes);
std::string toUtf8(const CString& text);

// Layer names compare so.
inline bool equalNoCase(const CString& a, const CString& b) {
    return a.CompareNoCase(b) == 0;
}

// Appends the name unless the list has it, in whatever case.
void appendLayerName(std::vector<CString>& names, const CString& name);

}  // namespace qrs::standard
