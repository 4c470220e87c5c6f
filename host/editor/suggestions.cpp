// Finds the names nearest to a mistyped one.
#include "host/editor/suggestions.h"

#include <algorithm>
#include <cstddef>

#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

constexpr std::size_t kMostNames = 3;
constexpr std::size_t kLongestTyped = 60;  // no name is that long

// How far a word of that length may be from what was meant. In a short one a second letter makes another word.
std::size_t mostDistance(std::size_t length) {
    return length <= 2 ? 0 : length <= 4 ? 1 : length <= 8 ? 2 : 3;
}

// The number of letters added, left out, wrong, or in each other's place.
std::size_t distanceOf(const std::wstring& a, const std::wstring& b) {
    std::vector<std::size_t> beforeLast, last(b.size() + 1), now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t wrong = a[i - 1] == b[j - 1] ? 0 : 1;
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + wrong});
            const bool isSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isSwapped) now[j] = std::min(now[j], beforeLast[j - 2] + 1);
        }
        beforeLast = last;
        last = now;
    }
    return last[b.size()];
}

}  // namespace

std::vector<std::wstring> nearNames(std::wstring_view typed, const std::vector<std::wstring>& names) {
    const std::wstring word = platform::foldCase(typed);
    if (word.size() < 2 || word.size() > kLongestTyped) return {};
    std::size_t nearest = std::max<std::size_t>(mostDistance(word.size()), 1);
    std::vector<std::wstring> found;
    for (const std::wstring& name : names) {
        const std::wstring folded = platform::foldCase(name);
        const bool begins = folded.size() > word.size() && folded.compare(0, word.size(), word) == 0;
        if (!begins && mostDistance(word.size()) == 0) continue;
        const std::size_t longer = std::max(word.size(), folded.size()) - std::min(word.size(), folded.size());
        if (!begins && longer > nearest) continue;  // so many letters are missing at least
        const std::size_t distance = begins ? 1 : distanceOf(word, folded);
        if (distance > nearest) continue;
        if (distance < nearest) found.clear();
        nearest = distance;
        if (found.size() < kMostNames && std::find(found.begin(), found.end(), name) == found.end())
            found.push_back(name);
    }
    return found;
}

std::wstring didYouMean(std::wstring_view typed, const std::vector<std::wstring>& names) {
    std::wstring text;
    const std::vector<std::wstring> near = nearNames(typed, names);
    for (std::size_t i = 0; i < near.size(); ++i) {
        if (i > 0) text += i + 1 < near.size() ? translated(L", ") : translated(L" or ");
        text += near[i];
    }
    return text.empty() ? text : translated(L" Did you mean %1?", text);
}

}  // namespace qrs::host::ed
