// Matches names with the patterns that prompts take: *, ?, #, @, ., [], ~ and lists with commas.
#include "host/editor/wildcard.h"

#include <string>

#include "host/platform/codepage.h"

namespace qrs::host::ed {

namespace {

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool isLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c >= L'\x80';
}

// Length of the element a pattern begins with.
std::size_t elementLength(std::wstring_view pattern) {
    if (pattern.front() == L'`' && pattern.size() > 1) return 2;
    if (pattern.front() == L'[') {
        const std::size_t end = pattern.find(L']', 1);
        if (end != std::wstring_view::npos) return end + 1;
    }
    return 1;
}

bool inSet(wchar_t c, std::wstring_view set) {
    const bool negated = !set.empty() && set.front() == L'~';
    if (negated) set.remove_prefix(1);
    bool found = false;
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == L'-') {
            found |= set[i] <= c && c <= set[i + 2];
            i += 2;
        } else {
            found |= set[i] == c;
        }
    }
    return found != negated;
}

bool matchesElement(wchar_t c, std::wstring_view element) {
    if (element.size() > 1)
        return element.front() == L'`' ? c == element[1] : inSet(c, element.substr(1, element.size() - 2));
    switch (element.front()) {
        case L'?':
            return true;
        case L'#':
            return isDigit(c);
        case L'@':
            return isLetter(c);
        case L'.':
            return !isDigit(c) && !isLetter(c);
        default:
            return c == element.front();
    }
}

bool matchesOne(std::wstring_view text, std::wstring_view pattern) {
    // Where to go on when the text after the last '*' does not fit: one character further.
    std::wstring_view retryText;
    std::wstring_view retryPattern;
    bool canRetry = false;
    while (!text.empty() || !pattern.empty()) {
        if (!pattern.empty() && pattern.front() == L'*') {
            pattern.remove_prefix(1);
            retryText = text;
            retryPattern = pattern;
            canRetry = true;
            continue;
        }
        if (!pattern.empty() && !text.empty()) {
            const std::size_t length = elementLength(pattern);
            if (matchesElement(text.front(), pattern.substr(0, length))) {
                text.remove_prefix(1);
                pattern.remove_prefix(length);
                continue;
            }
        }
        if (!canRetry || retryText.empty()) return false;
        retryText.remove_prefix(1);
        text = retryText;
        pattern = retryPattern;
    }
    return true;
}

// The first pattern of a list; the list moves past its comma.
std::wstring_view takePattern(std::wstring_view& list) {
    std::size_t end = 0;
    while (end < list.size() && list[end] != L',')
        end += elementLength(list.substr(end));
    const std::wstring_view pattern = list.substr(0, end);
    list.remove_prefix(end < list.size() ? end + 1 : list.size());
    return pattern;
}

}  // namespace

bool matchesWildcard(std::wstring_view text, std::wstring_view patterns) {
    const std::wstring folded = platform::foldCase(text);
    const std::wstring foldedPatterns = platform::foldCase(patterns);
    std::wstring_view list = foldedPatterns;
    do {
        std::wstring_view pattern = takePattern(list);
        const bool negated = !pattern.empty() && pattern.front() == L'~';
        if (negated) pattern.remove_prefix(1);
        if (matchesOne(folded, pattern) != negated) return true;
    } while (!list.empty());
    return false;
}

}  // namespace qrs::host::ed
