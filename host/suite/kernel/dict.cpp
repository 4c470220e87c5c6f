// Dictionary files over the text of sections and keys: names, quotes and numbers.
#include "qrs_dict.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/initext.h"
#include "host/platform/number.h"
#include "host/platform/text.h"
#include "host/platform/tree.h"

namespace platform = qrs::platform;

using platform::IniText;

namespace {

constexpr IniText::Form kForm{L";", L"\r\n", "\xEF\xBB\xBF"};

// No file of settings is as large, and what it holds is kept in memory.
constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 26;

bool isQuote(wchar_t unit) {
    return unit == L'"' || unit == L'\'';
}

bool holdsLineBreak(std::wstring_view text) {
    return text.find_first_of(std::wstring_view(L"\r\n\0", 3)) != std::wstring_view::npos;
}

bool isName(std::wstring_view text) {
    return !text.empty() && !holdsLineBreak(text) && platform::trimmed(text) == text;
}

}  // namespace

struct TWDict::State {
    IniText text{kForm};
    std::map<std::size_t, std::unique_ptr<TWDict>> dicts;  // by the number of their section

    // 0 when there is none.
    std::size_t find(const std::wstring& name) const {
        const auto& sections = text.sections();
        const auto found = std::find_if(sections.begin() + 1, sections.end(), [&](const IniText::Section& section) {
            return platform::compareNoCase(section.name, name) == 0;
        });
        return found == sections.end() ? 0 : static_cast<std::size_t>(found - sections.begin());
    }
};

TWDict::TWDict() : own_(std::make_unique<State>()), file_(own_.get()) {}

TWDict::TWDict(State& file, std::size_t section) : file_(&file), section_(section) {}

TWDict::~TWDict() = default;

bool TWDict::ReadFile(const std::wstring& path, std::wstring& reason) {
    auto read = std::make_unique<State>();
    platform::Error error;
    std::string bytes, problem;
    if (platform::presenceOf(path, error) == platform::Presence::Present &&
        platform::readOrdinaryFile(platform::nativePath(path), kLargestFile, bytes, error) &&
        !read->text.parse(bytes, problem))
        error.message = platform::toUtf8(platform::shownPath(path)) + ": " + problem;
    if (error) {
        reason = platform::fromUtf8(error.message);
        return false;
    }
    own_ = std::move(read);
    file_ = own_.get();
    return true;
}

bool TWDict::WriteFile(const std::wstring& path, std::wstring& reason, bool followLink) const {
    platform::Error error;
    const auto linked = followLink ? platform::LinkedTarget::Follow : platform::LinkedTarget::Replace;
    if (platform::replaceFileAtomically(platform::nativePath(path), file_->text.bytes(), linked, error)) return true;
    reason = platform::fromUtf8(error.message);
    return false;
}

TWDict* TWDict::FindOrAddDict(const std::wstring& name) {
    if (!own_ || !isName(name) || name.find(L']') != std::wstring::npos) return nullptr;
    std::size_t section = file_->find(name);
    if (section == 0) section = file_->text.addSection(name);
    std::unique_ptr<TWDict>& dict = file_->dicts[section];
    if (!dict) dict.reset(new TWDict(*file_, section));
    return dict.get();
}

const TWDict* TWDict::FindDict(const std::wstring& name) const {
    return own_ && file_->find(name) != 0 ? const_cast<TWDict*>(this)->FindOrAddDict(name) : nullptr;
}

std::optional<std::size_t> TWDict::FindLine(const std::wstring& key) const {
    const std::vector<IniText::Line>& lines = file_->text.sections()[section_].lines;
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const IniText::Line& line) {
        return line.hasValue && platform::compareNoCase(line.key, key) == 0;
    });
    if (key.empty() || found == lines.end()) return std::nullopt;
    return static_cast<std::size_t>(found - lines.begin());
}

bool TWDict::SetValue(const std::wstring& key, const std::wstring& text) {
    const bool isKey =
        isName(key) && key.find(L'=') == std::wstring::npos && key.front() != L'[' && key.front() != L';';
    if (!isKey || holdsLineBreak(text)) return false;
    const bool needsQuotes =
        platform::trimmed(text) != text || (!text.empty() && (isQuote(text.front()) || isQuote(text.back())));
    const std::wstring written = needsQuotes ? L"\"" + text + L"\"" : text;
    if (const auto line = FindLine(key))
        file_->text.setValue(section_, *line, written);
    else
        file_->text.addValue(section_, key, written);
    return true;
}

bool TWDict::SetValue(const std::wstring& key, std::int32_t number) {
    return SetValue(key, std::to_wstring(number));
}

bool TWDict::SetValue(const std::wstring& key, double number) {
    // Without an exponent, which other readers of such files may not know.
    char room[400];
    const auto [end, failure] = std::to_chars(room, room + sizeof room, number, std::chars_format::fixed);
    std::string text(room, failure == std::errc() ? end : room);
    if (text.find('.') == std::string::npos) text += ".0";
    return std::isfinite(number) && SetValue(key, platform::fromUtf8(text));
}

bool TWDict::GetValue(const std::wstring& key, std::wstring& text) const {
    const auto line = FindLine(key);
    if (!line) return false;
    text = file_->text.valueOf(file_->text.sections()[section_].lines[*line]);
    const bool isQuoted = text.size() >= 2 && isQuote(text.front()) && text.front() == text.back();
    if (isQuoted) text = text.substr(1, text.size() - 2);
    return true;
}

namespace {

template <typename Number>
bool taken(const std::optional<Number>& parsed, Number& number) {
    if (parsed) number = *parsed;
    return parsed.has_value();
}

}  // namespace

bool TWDict::GetValue(const std::wstring& key, std::int32_t& number) const {
    std::wstring text;
    return GetValue(key, text) && taken(platform::parseInteger(platform::toUtf8(text)), number);
}

bool TWDict::GetValue(const std::wstring& key, double& number) const {
    std::wstring text;
    return GetValue(key, text) && taken(platform::parseReal(platform::toUtf8(text)), number);
}
