// The text of a settings file: which values of which kind stand in it.
//
//     # a comment
//     [Software\QRS\PWX\PipeSystemSetting]
//     StandardFile=s:C:\\std\\pwx.qdsl
//     nAlignTypeForVPipeDim4=i:2
//     LineTypeScale=r:1.5
//
// In texts and value names a backslash begins an escape: \\ \n \r \t, \s a blank at either end, \u{41} any code point.
// Section names are keys and stand as they are.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "host/platform/initext.h"

namespace qrs::platform {

using SettingsValue = std::variant<std::wstring, std::int32_t, double>;

constexpr IniText::Form kSettingsForm{L"#;", L"\n", ""};

// A key without the backslashes at its ends and doubled ones.
std::wstring normalKey(std::wstring_view key);

// The text of the file with an index of the values. Lines that are no values of ours keep their place and spelling.
class SettingsText {
  public:
    // False, with "line number: reason", when some line cannot be understood; nothing is then held.
    bool parse(std::string_view bytes, std::string& reason);

    // The value, or null. Of several of one name the first counts.
    const SettingsValue* find(std::wstring_view key, std::wstring_view name) const;
    // Replaces the value where it stands, or adds it at the end of its section, or adds the section.
    void set(std::wstring_view key, std::wstring_view name, const SettingsValue& value);

    std::string bytes() const { return text_.bytes(); }

  private:
    using Place = std::pair<std::wstring, std::wstring>;  // key and name, folded
    struct Entry {
        std::size_t section;
        std::size_t line;
        SettingsValue value;
    };

    const char* readLine(std::size_t section, std::size_t line);
    const char* readValue(std::size_t section, std::size_t line);

    IniText text_{kSettingsForm};
    std::map<Place, Entry> entries_;
    std::map<std::wstring, std::size_t> sections_;  // by folded key; the last one of a key
    std::wstring current_;                          // while reading: the section's folded key
};

}  // namespace qrs::platform
