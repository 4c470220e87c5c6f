// Finds sections and keys in lines of text, and changes values where they stand.
#include "host/platform/initext.h"

#include <algorithm>
#include <iterator>

#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

struct Mark {
    unsigned codePage;
    std::string_view bytes;
};
constexpr Mark kMarks[] = {{kUtf8, "\xEF\xBB\xBF"}, {kUtf16Little, "\xFF\xFE"}, {kUtf16Big, "\xFE\xFF"}};

}  // namespace

std::size_t IniText::unitSize() const {
    return codePage_ == kUtf16Little || codePage_ == kUtf16Big ? 2 : 1;
}

// The unit at a position in bytes.
unsigned IniText::unitAt(std::string_view raw, std::size_t at) const {
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(raw[place]); };
    if (unitSize() == 1) return byte(at);
    const bool isLittle = codePage_ == kUtf16Little;
    return static_cast<unsigned>(byte(isLittle ? at + 1 : at) << 8 | byte(isLittle ? at : at + 1));
}

// Where the unit first stands, in bytes; npos when nowhere. The units looked for are no part of longer characters in
// any of the encodings.
std::size_t IniText::find(std::string_view raw, char unit, std::size_t from) const {
    for (std::size_t at = from; at + unitSize() <= raw.size(); at += unitSize())
        if (unitAt(raw, at) == static_cast<unsigned char>(unit)) return at;
    return std::string_view::npos;
}

// The length of a raw line without its line end.
std::size_t IniText::contentLength(std::string_view raw) const {
    std::size_t length = raw.size();
    const auto endsWith = [&](unsigned char unit) {
        return length >= unitSize() && unitAt(raw, length - unitSize()) == unit;
    };
    if (endsWith('\n')) length -= unitSize();
    while (endsWith('\r'))
        length -= unitSize();
    return length;
}

std::wstring IniText::decoded(std::string_view raw) const {
    return decode(codePage_, raw);
}

std::string IniText::encoded(std::wstring_view text) {
    std::string raw;
    if (encode(codePage_, text, raw)) return raw;
    becomeUtf8();
    return toUtf8(text);
}

// Only from an ANSI code page, in which every line was found to be text.
void IniText::becomeUtf8() {
    for (Section& section : sections_)
        for (Line& line : section.lines)
            line.raw = toUtf8(decoded(line.raw));
    codePage_ = kUtf8;
    mark_ = kMarks[0].bytes;
}

bool IniText::parse(std::string_view bytes, std::string& reason) {
    reason.clear();
    const auto found = std::find_if(std::begin(kMarks), std::end(kMarks),
                                    [&](const Mark& one) { return bytes.substr(0, one.bytes.size()) == one.bytes; });
    const bool hasMark = found != std::end(kMarks);
    mark_ = hasMark ? found->bytes : std::string_view();
    bytes.remove_prefix(mark_.size());
    std::wstring ignored;
    codePage_ = hasMark ? found->codePage : decodeStrict(kUtf8, bytes, ignored) ? kUtf8 : ansiCodePage();
    if (unitSize() == 2 && bytes.size() % 2 != 0) reason = translated("UTF-16 text with half a character at its end");
    if (find(bytes, '\0') != std::string_view::npos) reason = translated("no text: there is a character 0 in it");
    if (codePage_ != kUtf8 && unitSize() == 1 && !decodeStrict(codePage_, bytes, ignored))
        reason = translated("text neither in UTF-8 nor in code page %1", codePage_);
    if (!reason.empty()) return false;
    parseLines(bytes);
    return true;
}

void IniText::parseUtf8(std::string_view bytes) {
    const std::string_view mark = kMarks[0].bytes;
    codePage_ = kUtf8;
    mark_ = bytes.substr(0, mark.size()) == mark ? mark : std::string_view();
    parseLines(bytes.substr(mark_.size()));
}

void IniText::parseLines(std::string_view bytes) {
    sections_.assign(1, Section());
    lineEnd_ = form_.lineEnd;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t lineFeed = find(bytes, '\n', at);
        const std::size_t end = lineFeed == std::string_view::npos ? bytes.size() : lineFeed + unitSize();
        const std::string_view raw = bytes.substr(at, end - at);
        // New lines end as the first one does.
        if (at == 0 && contentLength(raw) < raw.size())
            lineEnd_ = find(raw, '\r') == std::string_view::npos ? L"\n" : L"\r\n";
        parseLine(raw);
        at = end;
    }
}

void IniText::parseLine(std::string_view raw) {
    Line line{std::string(raw), false, {}};
    const std::wstring whole = contentOf(line);
    const std::wstring_view text = trimmed(whole);
    const std::size_t bracket = text.find(L']');
    const std::size_t equals = text.find(L'=');
    if (!text.empty() && text.front() == L'[' && bracket != std::wstring_view::npos) {
        sections_.push_back({std::wstring(trimmed(text.substr(1, bracket - 1))), {}});
    } else if (!text.empty() && form_.comments.find(text.front()) == std::wstring_view::npos) {
        line.hasValue = equals != std::wstring_view::npos;
        if (line.hasValue) line.key = trimmed(text.substr(0, equals));
    }
    sections_.back().lines.push_back(std::move(line));
}

std::string IniText::bytes() const {
    std::string all = mark_;
    for (const Section& section : sections_)
        for (const Line& line : section.lines)
            all += line.raw;
    return all;
}

std::wstring IniText::contentOf(const Line& line) const {
    return decoded(std::string_view(line.raw).substr(0, contentLength(line.raw)));
}

std::wstring IniText::valueOf(const Line& line) const {
    const std::wstring content = contentOf(line);
    return std::wstring(trimmed(std::wstring_view(content).substr(content.find(L'=') + 1)));
}

void IniText::setValue(std::size_t section, std::size_t line, std::wstring_view value) {
    // Encoding may turn the lines into UTF-8, so it comes before anything is measured.
    const std::string written = encoded(value);
    std::string& raw = sections_[section].lines[line].raw;
    const std::size_t end = contentLength(raw);
    std::size_t begin = find(raw, '=') + unitSize();
    while (begin < end && isBlank(unitAt(raw, begin)))
        begin += unitSize();
    raw.replace(begin, end - begin, written);
}

std::size_t IniText::addValue(std::size_t section, std::wstring_view key, std::wstring_view value) {
    std::wstring text(key);
    text += L'=';
    text += value;
    text += lineEnd_;
    std::string raw = encoded(text);
    std::vector<Line>& lines = sections_[section].lines;
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [](const Line& line) { return line.hasValue; });
    // In a section without any, after its header; before all sections, after everything.
    const std::size_t place = last != lines.rend() ? static_cast<std::size_t>(lines.rend() - last)
                              : section == 0       ? lines.size()
                                                   : 1;
    if (place == lines.size()) endLastLine(lines);
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), Line{std::move(raw), true, std::wstring(key)});
    return place;
}

std::size_t IniText::addSection(std::wstring_view name) {
    const std::string end = encoded(lineEnd_);
    std::string raw = encoded(L'[' + std::wstring(name) + L']' + lineEnd_);
    std::vector<Line>& before = sections_.back().lines;
    endLastLine(before);
    if (!before.empty() && contentLength(before.back().raw) > 0) before.push_back({end, false, {}});
    sections_.push_back({std::wstring(name), {}});
    sections_.back().lines.push_back({std::move(raw), false, {}});
    return sections_.size() - 1;
}

void IniText::endLastLine(std::vector<Line>& lines) {
    if (lines.empty() || find(lines.back().raw, '\n') != std::string_view::npos) return;
    // A file that was cut off in the middle of a line end gets the other half of it.
    const bool isHalf = contentLength(lines.back().raw) < lines.back().raw.size();
    const std::string end = encoded(isHalf ? std::wstring_view(L"\n") : lineEnd_);
    lines.back().raw += end;
}

}  // namespace qrs::platform
