// The language of what people read: English, or Chinese where a table has it.
//
//     return fails(translated("the table says %1 records and holds %2", said, held));
//
// The English text is the key. Its Chinese stands in the table of a room (chinese.cpp) or of a plug-in; without one the
// English is shown. "%1" to "%9" stand for the parts, which either language puts where it likes. What is typed (names
// of commands, keywords) and what programs read is never translated.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

enum class Language { English, Chinese };

// English until a program chooses another.
QRS_HOST_PORT Language language();
QRS_HOST_PORT void setLanguage(Language chosen);

// The language of a name like "zh", "zh_CN", "zh-CN.UTF-8" or "en_US"; nothing for others.
QRS_HOST_PORT std::optional<Language> languageNamed(std::string_view name);

// What the user has chosen for all programs: the first of LC_ALL, LC_MESSAGES and LANG that is set, or the list in
// LANGUAGE instead of it unless it is "C" or "POSIX"; then the system's own choice, where there is one; then English.
QRS_HOST_PORT Language systemLanguage();

struct Translation {
    const char* english;
    const char* chinese;
};

// Rows that are known as long as this lives: a constant of the file that holds them.
class QRS_HOST_PORT Translations {
  public:
    template <std::size_t Count>
    explicit Translations(const Translation (&rows)[Count]) : Translations(rows, Count) {}
    ~Translations();
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;

  private:
    Translations(const Translation* rows, std::size_t count);

    const Translation* rows_;
    std::size_t count_;
};

// A text that is translated later, where it is shown.
template <typename Char>
constexpr const Char* untranslated(const Char* english) {
    return english;
}

// The text in the language, with its parts filled in. A part that holds "%1" itself is left as it is.
QRS_HOST_PORT std::string translatedText(const char* english, const std::vector<std::string>& parts);
QRS_HOST_PORT std::wstring translatedText(const wchar_t* english, const std::vector<std::wstring>& parts);

// A part that is a text or a whole number, as text.
template <typename Char, typename Part>
std::basic_string<Char> partOf(const Part& part) {
    if constexpr (!std::is_integral_v<Part>)
        return std::basic_string<Char>(std::basic_string_view<Char>(part));
    else if constexpr (std::is_same_v<Char, char>)
        return std::to_string(part);
    else
        return std::to_wstring(part);
}

// The same, with texts and whole numbers for parts.
template <typename... Parts>
std::string translated(const char* english, const Parts&... parts) {
    return translatedText(english, {partOf<char>(parts)...});
}
template <typename... Parts>
std::wstring translated(const wchar_t* english, const Parts&... parts) {
    return translatedText(english, {partOf<wchar_t>(parts)...});
}

}  // namespace qrs::platform
