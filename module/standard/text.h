// Texts of the tree: views, UTF-8, comparison, and lists of layer names.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "afx.h"
#include "host/platform/codepage.h"

namespace qrs::standard {

inline std::wstring_view view(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}
inline std::wstring wide(const CString& text) {
    return std::wstring(view(text));
}
inline CString makeText(std::wstring_view text) {
    return CString(text.data(), static_cast<int>(text.size()));
}

CString fromUtf8(std::string_view bytes);
std::string toUtf8(const CString& text);

// Layer names compare so. A letter is as long in either case, so most names of a standard differ in length already.
inline bool equalNoCase(const CString& a, const CString& b) {
    return a.GetLength() == b.GetLength() && platform::compareNoCase(view(a), view(b)) == 0;
}

// Collects layer names in the order they are first seen, none twice in whatever case.
class LayerNameList {
  public:
    LayerNameList() = default;
    // Known names are not collected again.
    explicit LayerNameList(const std::vector<CString>& known);

    void add(const CString& name);
    void appendTo(std::vector<CString>& out) const;
    // The collected names with the separator between them.
    CString joined(const CString& separator) const;

  private:
    bool isNew(const CString& name);

    std::vector<CString> names_;
    std::unordered_set<std::wstring> seen_;  // in one case
};

}  // namespace qrs::standard
