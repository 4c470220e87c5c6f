// Any bytes as the text of a settings file, or, after an odd first byte, of setting.ini: what is read comes back byte
// for byte, and what is set is found, here and after reading again, with everything else as it was.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "host/platform/codepage.h"
#include "host/platform/inside/settingsfile.h"

namespace {

using namespace qrs::platform;
using qrs::fuzz::check;

void settingsFile(std::string_view bytes, std::wstring_view word) {
    SettingsText text;
    std::string reason;
    if (!text.parse(bytes, reason)) {
        check(reason.find_first_of("123456789") == 0 && reason.find('\n') == std::string::npos,
              "no message that begins with a line number");
        return;
    }
    check(text.bytes() == bytes, "read and not the same");
    const std::wstring key = L"Software\\QRS", name = L"Name " + std::wstring(word);
    const SettingsValue values[] = {std::wstring(word), std::int32_t{-7}, 0.1, std::wstring(word)};
    for (const SettingsValue& value : values) {
        text.set(key, name, value);
        const SettingsValue* found = text.find(key, name);
        check(found != nullptr && *found == value, "set and not found");
        SettingsText again;
        check(again.parse(text.bytes(), reason), "what was written is not read");
        const SettingsValue* read = again.find(key, name);
        check(read != nullptr && *read == value, "written and not found");
    }
}

void iniFile(std::string_view bytes) {
    constexpr IniText::Form kForm{L";", L"\r\n", "\xEF\xBB\xBF"};
    IniText text(kForm);
    std::string reason;
    if (!text.parse(bytes, reason)) return check(!reason.empty(), "no message");
    check(text.bytes() == bytes || bytes.empty(), "read and not the same");
    for (std::size_t number = 0; number < text.sections().size(); ++number)
        for (const IniText::Line& line : text.sections()[number].lines)
            check(!line.hasValue || !text.contentOf(line).empty(), "a value in an empty line");
    const std::size_t section = text.sections().size() / 2;
    const std::size_t before = text.sections()[section].lines.size();
    // A sign that some encodings lack.
    const std::wstring value = L"\u7BA1\U0001F6BF";
    const std::size_t line = text.addValue(section, L"k", value);
    check(text.sections()[section].lines.size() == before + 1, "a value added, and more lines than one more");
    check(text.valueOf(text.sections()[section].lines[line]) == value, "added and not found");
    text.setValue(section, line, L"2");
    IniText again(kForm);
    check(again.parse(text.bytes(), reason), "what was written is not read");
    check(again.sections().size() == text.sections().size(), "written and read with other sections");
    const IniText::Line& read = again.sections()[section].lines[line];
    check(read.hasValue && read.key == L"k" && again.valueOf(read) == L"2", "written and not found");
}

}  // namespace

// The first byte is the kind, the next eight are a word that is set.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHead = 9;
    if (size < kHead) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if ((data[0] & 1) != 0)
        iniFile(bytes.substr(kHead));
    else
        settingsFile(bytes.substr(kHead), fromUtf8(bytes.substr(1, kHead - 1)));
    return 0;
}
