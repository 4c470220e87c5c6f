// Texts of the tree.
#include "standard/text.h"

#include <algorithm>

#include "host/platform/codepage.h"

namespace qrs::standard {

CString fromUtf8(std::string_view bytes) {
    return makeText(platform::fromUtf8(bytes));
}

std::string toUtf8(const CString& text) {
    return platform::toUtf8(view(text));
}

void appendLayerName(std::vector<CString>& names, const CString& name) {
    const bool known =
        std::any_of(names.begin(), names.end(), [&name](const CString& other) { return equalNoCase(other, name); });
    if (!known) names.push_back(name);
}

}  // namespace qrs::standard
