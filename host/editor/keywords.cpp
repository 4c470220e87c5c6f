// The keywords a prompt accepts.
#include "host/editor/keywords.h"

#include "host/platform/codepage.h"

namespace qrs::host::ed {

namespace {

bool isSmall(wchar_t c) {
    return platform::foldCase(std::wstring(1, c)) != std::wstring(1, c);
}

}  // namespace

Keywords::Keywords(std::wstring_view list) {
    bool global = false;
    while (!list.empty()) {
        const std::size_t end = list.find(L' ');
        std::wstring_view word = list.substr(0, end);
        list.remove_prefix(end == std::wstring_view::npos ? list.size() : end + 1);
        if (word.size() > 1 && word.front() == L'_') {
            global = true;
            word.remove_prefix(1);
        }
        if (!word.empty()) (global ? globals_ : words_).push_back(parse(word));
    }
    for (std::size_t i = 0; i < words_.size() && i < globals_.size(); ++i)
        words_[i].globalText = globals_[i].text;
}

Keywords::Word Keywords::parse(std::wstring_view word) {
    const std::size_t comma = word.find(L',');
    if (comma != std::wstring_view::npos && comma > 0) {
        const std::wstring text(word.substr(0, comma));
        const std::wstring_view abbreviation = word.substr(comma + 1);
        // An abbreviation of other letters than the keyword's own cannot be found in it: only the whole word counts.
        const std::size_t place = platform::foldCase(text).find(platform::foldCase(abbreviation));
        if (place == std::wstring::npos || abbreviation.empty()) return Word{text, 0, text.size(), text};
        return Word{text, place, abbreviation.size(), text};
    }
    const std::wstring text(word);
    std::size_t begin = 0;
    while (begin < text.size() && isSmall(text[begin]))
        ++begin;
    std::size_t end = begin;
    while (end < text.size() && !isSmall(text[end]))
        ++end;
    if (begin == text.size()) return Word{text, 0, text.size(), text};
    return Word{text, begin, end - begin, text};
}

// At least the shortest form, and no letters but those that follow it in the keyword; what stands before the shortest
// form may be typed too.
bool Keywords::means(const Word& word, std::wstring_view answer) {
    const std::wstring text = platform::foldCase(word.text);
    const std::wstring typed = platform::foldCase(answer);
    const auto begins = [&](std::size_t from, std::size_t least) {
        return typed.size() >= least && typed.size() <= text.size() - from &&
               text.compare(from, typed.size(), typed) == 0;
    };
    return begins(word.shortBegin, word.shortLength) || begins(0, word.shortBegin + word.shortLength);
}

std::vector<std::wstring> Keywords::names() const {
    std::vector<std::wstring> names;
    for (const Word& word : words_)
        names.push_back(word.text);
    return names;
}

std::wstring Keywords::match(std::wstring_view answer) const {
    if (answer.empty()) return std::wstring();
    if (answer.size() > 1 && answer.front() == L'_') {
        answer.remove_prefix(1);
        for (const Word& word : globals_.empty() ? words_ : globals_)
            if (means(word, answer)) return word.text;
        return std::wstring();
    }
    for (const Word& word : words_)
        if (means(word, answer)) return word.globalText;
    return std::wstring();
}

}  // namespace qrs::host::ed
