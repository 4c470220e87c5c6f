// Kinds, escapes and keys of the values in a settings file.
#include "host/platform/inside/settingsfile.h"

#include <algorithm>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/number.h"

namespace qrs::platform {

namespace {

struct Escape {
    char letter;
    wchar_t character;
};

constexpr Escape kEscapes[] = {{'\\', L'\\'}, {'n', L'\n'}, {'r', L'\r'}, {'t', L'\t'}, {'s', L' '}};

// Reads the escape after a backslash at i - 1 and moves past it; false when there is none.
bool readEscape(std::wstring_view text, std::size_t& i, std::wstring& out) {
    if (i == text.size()) return false;
    const wchar_t letter = text[i++];
    for (const Escape& row : kEscapes) {
        if (letter == static_cast<wchar_t>(row.letter)) {
            out += row.character;
            return true;
        }
    }
    if (letter != L'u' || i == text.size() || text[i] != L'{') return false;
    char32_t codePoint = 0;
    std::size_t digits = 0;
    for (++i; i < text.size() && text[i] != L'}'; ++i, ++digits) {
        const int digit = hexValue(static_cast<char32_t>(text[i]));
        if (digit < 0 || digits == 6) return false;
        codePoint = codePoint << 4 | static_cast<char32_t>(digit);
    }
    if (i == text.size() || digits == 0 || codePoint > 0x10FFFF) return false;
    ++i;
    appendCodePoint(out, codePoint);
    return true;
}

bool unescape(std::wstring_view text, std::wstring& out) {
    out.clear();
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != L'\\') {
            out += text[i++];
        } else if (!readEscape(text, ++i, out)) {
            return false;
        }
    }
    return true;
}

// Escapes what would not come back as it is; in a name also what would be taken for another part of the line.
std::wstring escape(std::wstring_view text, bool isName) {
    std::wstring out;
    for (std::size_t i = 0; i < text.size();) {
        const bool atEdge = i == 0 || i + 1 == text.size();
        const bool atFront = i == 0;
        const char32_t codePoint = nextCodePoint(text, i);
        const auto row = std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](const Escape& candidate) {
            return codePoint == static_cast<char32_t>(candidate.character);
        });
        const bool isSpace = codePoint == U' ';
        const bool isMark = isName && (codePoint == U'=' || (atFront && (codePoint == U'[' || codePoint == U'#' ||
                                                                         codePoint == U';' || codePoint == 0xFEFF)));
        if (row != std::end(kEscapes) && (!isSpace || atEdge)) {
            out += L'\\';
            out += static_cast<wchar_t>(row->letter);
        } else if (codePoint < 0x20 || codePoint == 0x7F || isMark || isSurrogate(codePoint)) {
            std::wstring digits;
            for (char32_t rest = codePoint; rest != 0 || digits.empty(); rest >>= 4)
                digits.insert(digits.begin(), static_cast<wchar_t>(kSmallHexDigits[rest & 15]));
            out += L"\\u{" + digits + L'}';
        } else {
            appendCodePoint(out, codePoint);
        }
    }
    return out;
}

std::wstring valueText(const SettingsValue& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) return L"s:" + escape(*text, false);
    if (const auto* integer = std::get_if<std::int32_t>(&value)) return L"i:" + std::to_wstring(*integer);
    return L"r:" + fromUtf8(formatReal(std::get<double>(value)));
}

}  // namespace

std::wstring normalKey(std::wstring_view key) {
    std::wstring normal;
    for (const wchar_t unit : key) {
        if (unit != L'\\' || (!normal.empty() && normal.back() != L'\\')) normal += unit;
    }
    while (!normal.empty() && normal.back() == L'\\')
        normal.pop_back();
    return normal;
}

bool SettingsText::parse(std::string_view bytes, std::string& reason) {
    *this = SettingsText();
    text_.parseUtf8(bytes);
    std::size_t number = 0;
    for (std::size_t section = 0; section < text_.sections().size(); ++section) {
        for (std::size_t line = 0; line < text_.sections()[section].lines.size(); ++line) {
            ++number;
            if (const char* fault = readLine(section, line)) {
                reason = std::to_string(number) + ": " + translated(fault);
                *this = SettingsText();
                return false;
            }
        }
    }
    return true;
}

// Null, or what is wrong with the line.
const char* SettingsText::readLine(std::size_t section, std::size_t line) {
    const IniText::Line& known = text_.sections()[section].lines[line];
    std::wstring ignored;
    if (!decodeStrict(kUtf8, known.raw, ignored)) return untranslated("is not UTF-8");
    const std::wstring content = text_.contentOf(known);
    const bool hasControl = std::any_of(content.begin(), content.end(), [](wchar_t unit) {
        return static_cast<char32_t>(unit) < 0x20 && unit != L'\t';
    });
    if (hasControl) return untranslated("holds a control character");
    const std::wstring_view text = trimmed(content);
    if (text.empty() || kSettingsForm.comments.find(text.front()) != std::wstring_view::npos) return nullptr;
    if (text.front() != L'[') return readValue(section, line);
    if (text.back() != L']') return untranslated("a section without its closing bracket");
    current_ = foldCase(normalKey(text.substr(1, text.size() - 2)));
    sections_[current_] = section;
    return nullptr;
}

const char* SettingsText::readValue(std::size_t section, std::size_t line) {
    const IniText::Line& known = text_.sections()[section].lines[line];
    if (!known.hasValue) return untranslated("neither a section nor a value nor a comment");
    if (section == 0) return untranslated("a value before the first section");
    std::wstring name;
    if (!unescape(known.key, name)) return untranslated("an unknown escape in the name");
    const std::wstring typed = text_.valueOf(known);
    if (typed.size() < 2 || typed[1] != L':' || typed[0] < L'a' || typed[0] > L'z')
        return untranslated("a value without its type");
    const std::wstring content = typed.substr(2);
    SettingsValue value;
    if (typed[0] == L's') {
        std::wstring text;
        if (!unescape(content, text)) return untranslated("an unknown escape in the text");
        value = std::move(text);
    } else if (typed[0] == L'i') {
        const auto integer = parseInteger(toUtf8(content));
        if (!integer) return untranslated("no whole number of 32 bits");
        value = *integer;
    } else if (typed[0] == L'r') {
        const auto real = parseReal(toUtf8(content));
        if (!real) return untranslated("no number");
        value = *real;
    } else {
        return nullptr;  // a type of a later version: kept, not read
    }
    entries_.try_emplace(Place(current_, foldCase(name)), Entry{section, line, std::move(value)});
    return nullptr;
}

const SettingsValue* SettingsText::find(std::wstring_view key, std::wstring_view name) const {
    const auto entry = entries_.find(Place(foldCase(normalKey(key)), foldCase(name)));
    return entry == entries_.end() ? nullptr : &entry->second.value;
}

void SettingsText::set(std::wstring_view key, std::wstring_view name, const SettingsValue& value) {
    const Place place(foldCase(normalKey(key)), foldCase(name));
    const auto entry = entries_.find(place);
    if (entry != entries_.end()) {
        text_.setValue(entry->second.section, entry->second.line, valueText(value));
        entry->second.value = value;
        return;
    }
    const auto known = sections_.find(place.first);
    const std::size_t section = known != sections_.end() ? known->second : text_.addSection(normalKey(key));
    sections_[place.first] = section;
    // New lines come after all values of the section, so the numbers of the others hold.
    const std::size_t line = text_.addValue(section, escape(name, true), valueText(value));
    entries_.emplace(place, Entry{section, line, value});
}

}  // namespace qrs::platform
