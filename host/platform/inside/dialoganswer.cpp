// Takes an answer apart (numbers, names, patterns, "name=value") and finds the items it speaks of.
#include "host/platform/inside/dialoganswer.h"

#include <algorithm>

#include "host/platform/language.h"
#include "host/platform/text.h"
#include "host/platform/wildcard.h"

namespace qrs::platform {

namespace {

constexpr std::size_t kMostDigits = 9;

bool isNumber(const std::wstring& text) {
    return !text.empty() && text.size() <= kMostDigits && text.find_first_not_of(L"0123456789") == std::wstring::npos;
}

bool isQuoted(const std::wstring& text) {
    return text.size() > 1 && text.front() == L'"' && text.back() == L'"';
}

// Position of the first such character outside of quotes; npos when there is none.
std::size_t findOutside(const std::wstring& text, wchar_t wanted, std::size_t from = 0) {
    bool quoted = false;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == L'"') quoted = !quoted;
        if (!quoted && text[i] == wanted) return i;
    }
    return std::wstring::npos;
}

// Finds the items that texts speak of.
class Finder {
  public:
    explicit Finder(Dialog& dialog) : items_(itemsOf(dialog)) {}

    std::vector<DialogItem> found;
    std::wstring refusal;

    // Items of exactly this name, or of a button all that it says ("..." or "<" included); whether there is any.
    bool byName(const std::wstring& name) {
        return take([&](const DialogItem& item) {
            return compareNoCase(nameOf(item), name) == 0 ||
                   (item.control->kind == ControlKind::Button && compareNoCase(item.control->caption, name) == 0);
        });
    }

    // Numbers, ranges, names and patterns, separated by commas. False, with the refusal, when one means nothing.
    bool byList(const std::wstring& list) {
        if (!isNumber(list) && byName(list)) return unique(list);
        for (std::size_t begin = 0; begin <= list.size();) {
            const std::size_t end = std::min(findOutside(list, L',', begin), list.size());
            if (!byPart(std::wstring(trimmed(std::wstring_view(list).substr(begin, end - begin))))) return false;
            begin = end + 1;
        }
        return true;
    }

  private:
    template <typename Means>
    bool take(Means&& means) {
        const std::size_t before = found.size();
        std::copy_if(items_.begin(), items_.end(), std::back_inserter(found), means);
        return found.size() > before;
    }

    bool refuse(const std::wstring& why) {
        found.clear();
        refusal = why;
        return false;
    }

    bool unique(const std::wstring& name) {
        if (found.size() == 1) return true;
        return refuse(translated(L"\"%1\" is the name of more than one; give the number.", name));
    }

    bool byPart(const std::wstring& part) {
        if (part.empty()) return refuse(translated(L"A number or a name is missing."));
        const std::size_t dash = part.find(L'-');
        // No item has the number 0, but every drawing has the layer "0".
        if (isNumber(part) && part != L"0") return byNumbers(part, part);
        if (dash != std::wstring::npos && isNumber(part.substr(0, dash)) && isNumber(part.substr(dash + 1)))
            return byNumbers(part.substr(0, dash), part.substr(dash + 1));
        const std::wstring name = unquoted(part);
        const std::size_t before = found.size();
        if (byName(name))
            return found.size() == before + 1 ||
                   refuse(translated(L"\"%1\" is the name of more than one; give the number.", name));
        if (isQuoted(part) || part.find_first_of(L"*?") == std::wstring::npos)
            return refuse(translated(L"There is no \"%1\".", name));
        const auto matches = [&](const DialogItem& item) {
            return isMark(item) && item.control->enabled && matchesWildcard(nameOf(item), part);
        };
        return take(matches) || refuse(translated(L"Nothing matches \"%1\".", part));
    }

    bool byNumbers(const std::wstring& first, const std::wstring& last) {
        const std::size_t from = std::stoul(first), to = std::stoul(last);
        if (from < 1 || to > items_.size() || from > to)
            return refuse(items_.empty() ? translated(L"There is nothing to change.")
                                         : translated(L"Numbers go from 1 to %1.", items_.size()));
        found.insert(found.end(), items_.begin() + static_cast<std::ptrdiff_t>(from - 1),
                     items_.begin() + static_cast<std::ptrdiff_t>(to));
        return true;
    }

    std::vector<DialogItem> items_;
};

}  // namespace

std::wstring unquoted(const std::wstring& text) {
    return isQuoted(text) ? text.substr(1, text.size() - 2) : text;
}

std::optional<bool> parseSwitch(const std::wstring& text) {
    static constexpr const wchar_t* kOn[] = {L"1", L"on", L"yes", L"y", L"x", L"是", L"开"};
    static constexpr const wchar_t* kOff[] = {L"0", L"off", L"no", L"n", L"", L"否", L"关"};
    const auto isOne = [&](const wchar_t* word) { return compareNoCase(text, word) == 0; };
    if (std::any_of(std::begin(kOn), std::end(kOn), isOne)) return true;
    if (std::any_of(std::begin(kOff), std::end(kOff), isOne)) return false;
    return std::nullopt;
}

DialogAnswer parseAnswer(Dialog& dialog, const std::wstring& answer) {
    DialogAnswer meant;
    Finder finder(dialog);
    const std::size_t equals = findOutside(answer, L'=');
    // A name may hold "=" itself.
    if (equals == std::wstring::npos || Finder(dialog).byName(answer)) {
        finder.byList(answer);
    } else {
        meant.value = std::wstring(trimmed(std::wstring_view(answer).substr(equals + 1)));
        finder.byList(std::wstring(trimmed(std::wstring_view(answer).substr(0, equals))));
    }
    meant.items = std::move(finder.found);
    meant.refusal = std::move(finder.refusal);
    if (meant.items.empty()) return meant;
    const auto frozen = std::find_if(meant.items.begin(), meant.items.end(),
                                     [](const DialogItem& item) { return !item.control->enabled; });
    if (frozen == meant.items.end()) return meant;
    meant.refusal = translated(L"\"%1\" cannot be changed now.", nameOf(*frozen));
    meant.items.clear();
    return meant;
}

}  // namespace qrs::platform
