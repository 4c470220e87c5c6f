// The text of a settings file.
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
#include <vector>

#include "host/platform/error.h"

namespace qrs::platform {

using SettingsValue = std::variant<std::wstring, std::int32_t, double>;

// A key without the backslashes at its ends and doubled ones.
std::wstring normalKey(std::wstring_view key);

// The lines of the file with an index of the values. Lines that are no values of ours keep their place and spelling.
class SettingsText {
  public:
    // False, with "line number: reason", when some line cannot be understood; nothing is then held.
    bool parse(std::string_view bytes, std::string& reason);

    // The value, or null. Of several of one name the first counts.
    const SettingsValue* find(std::wstring_view key, std::wstring_view name) const;
    // Replaces the value where it stands, or adds it at the end of its section, or adds the section.
    void set(std::wstring_view key, std::wstring_view name, const SettingsValue& value);

    std::string bytes() const;

  private:
    using Place = std::pair<std::wstring, std::wstring>;  // key and name, folded
    struct Entry {
        std::size_t line;
        SettingsValue value;
    };

    const char* parseLine(std::size_t number);
    const char* parseValue(std::size_t number, std::string_view line);

    std::vector<std::string> lines_;  // with their line ends
    std::map<Place, Entry> entries_;
    std::map<std::wstring, std::size_t> sectionEnd_;  // folded key: the line behind its last value
    std::wstring section_;                            // folded; the one being read
    bool inSection_ = false;
};

}  // namespace qrs::platform
