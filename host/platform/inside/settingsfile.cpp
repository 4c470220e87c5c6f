// Reads and changes the text of a settings file.
#include "host/platform/inside/settingsfile.h"

#include <algorithm>

#include "host/platform/codepage.h"
#include "host/platform/number.h"

namespace qrs::platform {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Escape {
    char letter;
    wchar_t character;
};

constexpr Escape kEscapes[] = {{'\\', L'\\'}, {'n', L'\n'}, {'r', L'\r'}, {'t', L'\t'}, {'s', L' '}};

std::string_view withoutLineEnd(std::string_view line) {
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    return line;
}

// Reads the escape behind a backslash at i - 1 and moves behind it; false when there is none.
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
        const std::size_t digit = std::wstring_view(L"0123456789abcdef").find(text[i]);
        if (digit == std::wstring_view::npos || digits == 6) return false;
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
std::string escape(std::wstring_view text, bool isName) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const bool atEdge = i == 0 || i + 1 == text.size();
        const bool atFront = i == 0;
        const std::size_t start = i;
        const char32_t codePoint = nextCodePoint(text, i);
        const auto row = std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](const Escape& candidate) {
            return codePoint == static_cast<char32_t>(candidate.character);
        });
        const bool isBlank = codePoint == U' ';
        const bool isMark = isName && (codePoint == U'=' || (atFront && (codePoint == U'[' || codePoint == U'#' ||
                                                                         codePoint == U';' || codePoint == 0xFEFF)));
        const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
        if (row != std::end(kEscapes) && (!isBlank || atEdge)) {
            out += '\\';
            out += row->letter;
        } else if (codePoint < 0x20 || codePoint == 0x7F || isMark || isSurrogate) {
            std::string digits;
            for (char32_t rest = codePoint; rest != 0 || digits.empty(); rest >>= 4) {
                digits.insert(digits.begin(), kDigits[rest & 15]);
            }
            out += "\\u{" + digits + '}';
        } else {
            out += toUtf8(text.substr(start, i - start));
        }
    }
    return out;
}

std::string valueText(const SettingsValue& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) return "s:" + escape(*text, false);
    if (const auto* integer = std::get_if<std::int32_t>(&value)) return "i:" + std::to_string(*integer);
    return "r:" + formatReal(std::get<double>(value));
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
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
        lines_.emplace_back(bytes.substr(at, end - at));
        at = end;
        if (const char* fault = parseLine(lines_.size() - 1)) {
            reason = std::to_string(lines_.size()) + ": " + fault;
            *this = SettingsText();
            return false;
        }
    }
    return true;
}

// Null, or what is wrong with the line.
const char* SettingsText::parseLine(std::size_t number) {
    std::string_view line = withoutLineEnd(lines_[number]);
    if (number == 0 && line.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        line.remove_prefix(kByteOrderMark.size());
    std::wstring wide;
    if (!decodeStrict(kUtf8, line, wide)) return "is not UTF-8";
    const bool hasControl =
        std::any_of(line.begin(), line.end(), [](char unit) { return unit >= 0 && unit < 0x20 && unit != '\t'; });
    if (hasControl) return "holds a control character";
    line = trimmed(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') return nullptr;
    if (line.front() != '[') return parseValue(number, line);
    if (line.back() != ']') return "a section without its closing bracket";
    section_ = foldCase(normalKey(fromUtf8(line.substr(1, line.size() - 2))));
    inSection_ = true;
    sectionEnd_[section_] = number + 1;
    return nullptr;
}

const char* SettingsText::parseValue(std::size_t number, std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return "neither a section nor a value nor a comment";
    if (!inSection_) return "a value before the first section";
    std::wstring name;
    if (!unescape(fromUtf8(trimmed(line.substr(0, equals))), name)) return "an unknown escape in the name";
    const std::string_view typed = trimmed(line.substr(equals + 1));
    if (typed.size() < 2 || typed[1] != ':' || typed[0] < 'a' || typed[0] > 'z') return "a value without its type";
    sectionEnd_[section_] = number + 1;
    const std::string_view content = typed.substr(2);
    SettingsValue value;
    if (typed[0] == 's') {
        std::wstring text;
        if (!unescape(fromUtf8(content), text)) return "an unknown escape in the text";
        value = std::move(text);
    } else if (typed[0] == 'i') {
        const auto integer = parseInteger(content);
        if (!integer) return "no whole number of 32 bits";
        value = *integer;
    } else if (typed[0] == 'r') {
        const auto real = parseReal(content);
        if (!real) return "no number";
        value = *real;
    } else {
        return nullptr;  // a type of a later version: kept, not read
    }
    entries_.try_emplace(Place(section_, foldCase(name)), Entry{number, std::move(value)});
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
        std::string& line = lines_[entry->second.line];
        const std::string end = line.substr(withoutLineEnd(line).size());
        line = line.substr(0, line.find('=') + 1) + valueText(value) + end;
        entry->second.value = value;
        return;
    }
    const bool crlf = !lines_.empty() && lines_[0].size() > 1 && lines_[0][lines_[0].size() - 2] == '\r';
    const std::string lineEnd = crlf ? "\r\n" : "\n";
    if (!lines_.empty() && lines_.back().back() != '\n') lines_.back() += lineEnd;
    std::string added = escape(name, true) + '=' + valueText(value) + lineEnd;
    const auto section = sectionEnd_.find(place.first);
    if (section == sectionEnd_.end()) {
        if (!lines_.empty()) lines_.push_back(lineEnd);
        lines_.push_back('[' + toUtf8(normalKey(key)) + ']' + lineEnd);
        lines_.push_back(std::move(added));
    } else {
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(section->second), std::move(added));
    }
    // Lines have moved; the text is small, so the index is simply made again.
    std::string unused;
    parse(bytes(), unused);
}

std::string SettingsText::bytes() const {
    std::string all;
    for (const std::string& line : lines_)
        all += line;
    return all;
}

}  // namespace qrs::platform
