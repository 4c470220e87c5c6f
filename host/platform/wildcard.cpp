// Matches folded code points; a star is tried again one further on when the rest does not fit.
#include "host/platform/wildcard.h"

#include <string>

#include "host/platform/inside/casemap.h"
#include "host/platform/text.h"

namespace qrs::platform {

namespace {

std::u32string foldedCodePoints(std::wstring_view text) {
    std::u32string folded;
    for (std::size_t i = 0; i < text.size();)
        folded += upperCase(nextCodePoint(text, i));
    return folded;
}

}  // namespace

bool matchesWildcard(std::wstring_view name, std::wstring_view pattern) {
    // As the system has it since the days of names with an extension always: "*.*" means all files.
    if (pattern == L"*.*") return true;
    const std::u32string text = foldedCodePoints(name);
    const std::u32string mask = foldedCodePoints(pattern);
    std::size_t at = 0;
    std::size_t maskAt = 0;
    std::size_t star = std::u32string::npos;  // the last '*' met, and where its match began
    std::size_t starAt = 0;
    while (at < text.size()) {
        if (maskAt < mask.size() && mask[maskAt] == U'*') {
            star = maskAt++;
            starAt = at;
        } else if (maskAt < mask.size() && (mask[maskAt] == U'?' || mask[maskAt] == text[at])) {
            ++maskAt;
            ++at;
        } else if (star != std::u32string::npos) {
            maskAt = star + 1;
            at = ++starAt;
        } else {
            return false;
        }
    }
    return mask.find_first_not_of(U'*', maskAt) == std::u32string::npos;
}

}  // namespace qrs::platform
