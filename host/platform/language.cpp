// The language in use, and the one table of all rooms' texts.
#include "host/platform/language.h"

#include <algorithm>
#include <unordered_map>

#include "host/platform/codepage.h"
#include "host/platform/inside/uilanguage.h"
#include "host/platform/process.h"
#include "host/platform/text.h"

namespace qrs::platform {

namespace {

Language chosenLanguage = Language::English;

using Table = std::unordered_map<std::string_view, const char*>;

// Made when the first room registers its texts, wherever the linker puts that one.
Table& table() {
    static Table made;
    return made;
}

struct LanguageName {
    std::string_view name;
    Language language;
};
constexpr LanguageName kNames[] = {{"zh", Language::Chinese}, {"en", Language::English}};

std::string variable(const char* name) {
    return toUtf8(environment(name).value_or(L""));
}

// "C", "POSIX", "C.UTF-8": the language of programs, whatever LANGUAGE says.
bool isPlain(std::string_view locale) {
    locale = locale.substr(0, locale.find('.'));
    return locale == "C" || locale == "POSIX";
}

std::optional<Language> firstOf(std::string_view list) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        if (const std::optional<Language> found = languageNamed(list.substr(0, end))) return found;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return std::nullopt;
}

const char* found(const char* english) {
    if (chosenLanguage == Language::English) return english;
    const auto row = table().find(english);
    return row == table().end() ? english : row->second;
}

template <typename Text, typename Parts>
Text filled(const Text& text, const Parts& parts) {
    Text result;
    std::size_t taken = 0;
    for (std::size_t i = text.find('%'); i != Text::npos && i + 1 < text.size(); i = text.find('%', i + 1)) {
        const std::size_t number = static_cast<std::size_t>(text[i + 1]) - '0';
        if (number < 1 || number > parts.size()) continue;
        result.append(text, taken, i - taken);
        result += parts[number - 1];
        taken = ++i + 1;
    }
    return result.append(text, taken, Text::npos);
}

}  // namespace

Language language() {
    return chosenLanguage;
}

void setLanguage(Language chosen) {
    chosenLanguage = chosen;
}

std::optional<Language> languageNamed(std::string_view name) {
    std::string bare(name.substr(0, name.find_first_of("_-.@")));
    std::transform(bare.begin(), bare.end(), bare.begin(), &asciiLower);
    for (const LanguageName& row : kNames)
        if (row.name == bare) return row.language;
    return std::nullopt;
}

Language systemLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const std::string locale = variable(name);
        if (locale.empty()) continue;
        if (isPlain(locale)) return Language::English;
        if (const std::optional<Language> listed = firstOf(variable("LANGUAGE"))) return *listed;
        return languageNamed(locale).value_or(Language::English);
    }
    return uiLanguage();
}

Translations::Translations(const Translation* rows, std::size_t count) : rows_(rows), count_(count) {
    for (std::size_t i = 0; i < count; ++i)
        table().emplace(rows[i].english, rows[i].chinese);
}

Translations::~Translations() {
    for (std::size_t i = 0; i < count_; ++i)
        table().erase(rows_[i].english);
}

std::string translatedText(const char* english, const std::vector<std::string>& parts) {
    return filled(std::string(found(english)), parts);
}

std::wstring translatedText(const wchar_t* english, const std::vector<std::wstring>& parts) {
    if (chosenLanguage == Language::English) return filled(std::wstring(english), parts);
    return filled(fromUtf8(found(toUtf8(english).c_str())), parts);
}

}  // namespace qrs::platform
