// Dictionary files: lines that are kept as they are, with an eye for sections, keys and values.
#include "qrs_dict.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/inputfile.h"
#include "host/platform/number.h"
#include "host/platform/tree.h"

namespace platform = qrs::platform;

namespace {

enum class Encoding { Utf8, Utf16Little, Utf16Big, Ansi };

struct Mark {
    Encoding encoding;
    std::string_view bytes;
};
const Mark marks[] = {
    {Encoding::Utf8, "\xEF\xBB\xBF"}, {Encoding::Utf16Little, "\xFF\xFE"}, {Encoding::Utf16Big, "\xFE\xFF"}};

bool isBlank(wchar_t unit) {
    return unit == L' ' || unit == L'\t';
}

bool isQuote(wchar_t unit) {
    return unit == L'"' || unit == L'\'';
}

std::wstring_view trimmed(std::wstring_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool holdsLineBreak(std::wstring_view text) {
    return text.find_first_of(std::wstring_view(L"\r\n\0", 3)) != std::wstring_view::npos;
}

bool isName(std::wstring_view text) {
    return !text.empty() && !holdsLineBreak(text) && trimmed(text) == text;
}

// No file of settings is as large, and what it holds is kept in memory.
constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 26;

// A line in the encoding of its file, line end included; the key is empty where there is none.
struct Line {
    std::string raw;
    std::wstring key;
};

}  // namespace

struct TWDict::Section {
    std::wstring name;
    std::vector<Line> lines;  // the header first, except in the part before all sections
    std::unique_ptr<TWDict> dict;
};

struct TWDict::State {
    Encoding encoding = Encoding::Utf8;
    std::string mark{marks[0].bytes};
    std::wstring lineEnd = L"\r\n";
    // The first is the part before all sections.
    std::vector<std::unique_ptr<Section>> sections;

    State() { addSection({}); }

    Section& addSection(const std::wstring& name) {
        sections.push_back(std::make_unique<Section>());
        sections.back()->name = name;
        return *sections.back();
    }
    Section* find(const std::wstring& name) const {
        const auto found = std::find_if(sections.begin() + 1, sections.end(), [&](const auto& section) {
            return platform::compareNoCase(section->name, name) == 0;
        });
        return found == sections.end() ? nullptr : found->get();
    }

    std::size_t unitSize() const { return encoding == Encoding::Utf16Little || encoding == Encoding::Utf16Big ? 2 : 1; }
    // The unit of the raw text at a position in bytes.
    unsigned unitAt(std::string_view raw, std::size_t at) const {
        const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(raw[place]); };
        if (unitSize() == 1) return byte(at);
        const bool isLittle = encoding == Encoding::Utf16Little;
        return static_cast<unsigned>(byte(isLittle ? at + 1 : at) << 8 | byte(isLittle ? at : at + 1));
    }
    // Where the unit first stands, in bytes; npos when nowhere. The units looked for are no part of longer characters
    // in any of the encodings.
    std::size_t find(std::string_view raw, char unit, std::size_t from = 0) const {
        for (std::size_t at = from; at + unitSize() <= raw.size(); at += unitSize())
            if (unitAt(raw, at) == static_cast<unsigned char>(unit)) return at;
        return std::string_view::npos;
    }

    std::wstring decode(std::string_view raw) const;
    std::string encode(std::wstring_view text);
    void becomeUtf8();

    bool parse(std::string_view bytes, std::string& reason);
    void addLine(std::string_view raw);
    // The length of a raw line without its line end.
    std::size_t contentLength(std::string_view raw) const;
    void endLastLine(std::vector<Line>& lines);
};

std::wstring TWDict::State::decode(std::string_view raw) const {
    if (encoding == Encoding::Utf8) return platform::fromUtf8(raw);
    if (encoding == Encoding::Ansi) return platform::decode(platform::ansiCodePage(), raw);
    std::wstring text;
    for (std::size_t at = 0; at + 2 <= raw.size(); at += 2) {
        char32_t codePoint = unitAt(raw, at);
        const bool isLead = codePoint >= 0xD800 && codePoint < 0xDC00 && at + 4 <= raw.size();
        const char32_t second = isLead ? unitAt(raw, at + 2) : 0;
        if (second >= 0xDC00 && second < 0xE000) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (second - 0xDC00);
            at += 2;
        }
        platform::appendCodePoint(text, codePoint);
    }
    return text;
}

std::string TWDict::State::encode(std::wstring_view text) {
    std::string raw;
    if (encoding == Encoding::Ansi) {
        if (platform::encode(platform::ansiCodePage(), text, raw)) return raw;
        becomeUtf8();
    }
    if (encoding == Encoding::Utf8) return platform::toUtf8(text);
    const auto put = [&](char32_t unit) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        raw += encoding == Encoding::Utf16Little ? low : high;
        raw += encoding == Encoding::Utf16Little ? high : low;
    };
    for (std::size_t i = 0; i < text.size();) {
        const char32_t codePoint = platform::nextCodePoint(text, i);
        if (codePoint >= 0x10000) put(0xD800 + ((codePoint - 0x10000) >> 10));
        put(codePoint >= 0x10000 ? 0xDC00 + ((codePoint - 0x10000) & 0x3FF) : codePoint);
    }
    return raw;
}

// Only from the ANSI code page, in which every line was found to be text.
void TWDict::State::becomeUtf8() {
    for (const auto& section : sections)
        for (Line& line : section->lines)
            line.raw = platform::toUtf8(decode(line.raw));
    encoding = Encoding::Utf8;
    mark = marks[0].bytes;
}

bool TWDict::State::parse(std::string_view bytes, std::string& reason) {
    const auto found = std::find_if(std::begin(marks), std::end(marks),
                                    [&](const Mark& one) { return bytes.substr(0, one.bytes.size()) == one.bytes; });
    const bool hasMark = found != std::end(marks);
    std::wstring ignored;
    mark = hasMark ? found->bytes : std::string_view();
    bytes.remove_prefix(mark.size());
    encoding = hasMark                                                   ? found->encoding
               : platform::decodeStrict(platform::kUtf8, bytes, ignored) ? Encoding::Utf8
                                                                         : Encoding::Ansi;
    if (unitSize() == 2 && bytes.size() % 2 != 0) reason = "UTF-16 text with half a character at its end";
    if (find(bytes, '\0') != std::string_view::npos) reason = "no text: there is a character 0 in it";
    if (encoding == Encoding::Ansi && !platform::decodeStrict(platform::ansiCodePage(), bytes, ignored))
        reason = "text neither in UTF-8 nor in code page " + std::to_string(platform::ansiCodePage());
    if (!reason.empty()) return false;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t lineFeed = find(bytes, '\n', at);
        const std::size_t end = lineFeed == std::string_view::npos ? bytes.size() : lineFeed + unitSize();
        const std::string_view raw = bytes.substr(at, end - at);
        // New lines end as the first one does.
        if (at == 0 && contentLength(raw) < raw.size()) lineEnd = decode(raw.substr(contentLength(raw)));
        addLine(raw);
        at = end;
    }
    return true;
}

std::size_t TWDict::State::contentLength(std::string_view raw) const {
    std::size_t length = raw.size();
    for (const char unit : {'\n', '\r'})
        if (length >= unitSize() && unitAt(raw, length - unitSize()) == static_cast<unsigned char>(unit))
            length -= unitSize();
    return length;
}

void TWDict::State::addLine(std::string_view raw) {
    const std::wstring whole = decode(raw.substr(0, contentLength(raw)));
    const std::wstring_view text = trimmed(whole);
    Line line{std::string(raw), {}};
    if (!text.empty() && text.front() == L'[' && text.find(L']') != std::wstring_view::npos) {
        addSection(std::wstring(trimmed(text.substr(1, text.find(L']') - 1))));
    } else if (!text.empty() && text.front() != L';' && text.find(L'=') != std::wstring_view::npos) {
        line.key = trimmed(text.substr(0, text.find(L'=')));
    }
    sections.back()->lines.push_back(std::move(line));
}

void TWDict::State::endLastLine(std::vector<Line>& lines) {
    if (lines.empty() || contentLength(lines.back().raw) < lines.back().raw.size()) return;
    const std::string end = encode(lineEnd);
    lines.back().raw += end;
}

TWDict::TWDict() : own_(std::make_unique<State>()), file_(own_.get()), section_(file_->sections.front().get()) {}

TWDict::TWDict(State& file, Section& section) : file_(&file), section_(&section) {}

TWDict::~TWDict() = default;

bool TWDict::ReadFile(const std::wstring& path, std::wstring& reason) {
    auto read = std::make_unique<State>();
    if (platform::fileExists(path) || platform::folderExists(path)) {
        platform::Error error;
        const std::filesystem::path native = platform::nativePath(path);
        const std::unique_ptr<platform::InputFile> input = platform::InputFile::open(native, error);
        std::string problem;
        if (input && input->size() > kLargestFile) problem = "is too large for a file of settings";
        std::string bytes(input && problem.empty() ? static_cast<std::size_t>(input->size()) : 0, '\0');
        if (input && problem.empty() && input->readAt(0, bytes.data(), bytes.size()) != bytes.size())
            problem = "cannot be read";
        if (input && problem.empty()) read->parse(bytes, problem);
        if (!problem.empty()) error.message = platform::toUtf8(path) + ": " + problem;
        if (error) {
            reason = platform::fromUtf8(error.message);
            return false;
        }
    }
    own_ = std::move(read);
    file_ = own_.get();
    section_ = file_->sections.front().get();
    return true;
}

bool TWDict::WriteFile(const std::wstring& path, std::wstring& reason, bool followLink) const {
    std::string bytes = file_->mark;
    for (const auto& section : file_->sections)
        for (const Line& line : section->lines)
            bytes += line.raw;
    platform::Error error;
    const auto linked = followLink ? platform::LinkedTarget::Follow : platform::LinkedTarget::Replace;
    if (platform::replaceFileAtomically(platform::nativePath(path), bytes, linked, error)) return true;
    reason = platform::fromUtf8(error.message);
    return false;
}

TWDict* TWDict::FindOrAddDict(const std::wstring& name) {
    if (!own_ || !isName(name) || name.find(L']') != std::wstring::npos) return nullptr;
    Section* section = file_->find(name);
    if (!section) {
        std::vector<Line>& before = file_->sections.back()->lines;
        file_->endLastLine(before);
        const bool needsBlank = !before.empty() && file_->contentLength(before.back().raw) > 0;
        if (needsBlank) before.push_back({file_->encode(file_->lineEnd), {}});
        section = &file_->addSection(name);
        section->lines.push_back({file_->encode(L"[" + name + L"]" + file_->lineEnd), {}});
    }
    if (!section->dict) section->dict.reset(new TWDict(*file_, *section));
    return section->dict.get();
}

const TWDict* TWDict::FindDict(const std::wstring& name) const {
    return own_ && file_->find(name) ? const_cast<TWDict*>(this)->FindOrAddDict(name) : nullptr;
}

bool TWDict::SetValue(const std::wstring& key, const std::wstring& text) {
    const bool isKey =
        isName(key) && key.find(L'=') == std::wstring::npos && key.front() != L'[' && key.front() != L';';
    if (!isKey || holdsLineBreak(text)) return false;
    const bool needsQuotes =
        trimmed(text) != text || (!text.empty() && (isQuote(text.front()) || isQuote(text.back())));
    const std::wstring written = needsQuotes ? L"\"" + text + L"\"" : text;
    std::vector<Line>& lines = section_->lines;
    std::size_t behind = section_ == file_->sections.front().get() ? lines.size() : 1;  // behind the last key
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].key.empty()) continue;
        behind = i + 1;
        if (platform::compareNoCase(lines[i].key, key) != 0) continue;
        // Encoding may turn the file's lines into UTF-8, so it comes before anything is measured.
        const std::string value = file_->encode(written);
        std::string& raw = lines[i].raw;
        const std::size_t unit = file_->unitSize(), end = file_->contentLength(raw);
        std::size_t begin = file_->find(raw, '=') + unit;
        while (begin < end && isBlank(static_cast<wchar_t>(file_->unitAt(raw, begin))))
            begin += unit;
        raw.replace(begin, end - begin, value);
        return true;
    }
    if (behind == lines.size()) file_->endLastLine(lines);
    const std::string raw = file_->encode(key + L"=" + written + file_->lineEnd);
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(behind), {raw, key});
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
    for (const Line& line : section_->lines) {
        if (line.key.empty() || platform::compareNoCase(line.key, key) != 0) continue;
        const std::wstring whole = file_->decode(line.raw.substr(0, file_->contentLength(line.raw)));
        std::wstring_view value = trimmed(std::wstring_view(whole).substr(whole.find(L'=') + 1));
        const bool isQuoted = value.size() >= 2 && isQuote(value.front()) && value.front() == value.back();
        text = isQuoted ? value.substr(1, value.size() - 2) : value;
        return true;
    }
    return false;
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
