// Cuts the lines of a table into cells.
#include "csv.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::audit {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

std::wstring textOf(std::string_view bytes) {
    if (bytes.substr(0, kMark.size()) == kMark) bytes.remove_prefix(kMark.size());
    return platform::decode(platform::isUtf8(bytes) ? platform::kUtf8 : platform::ansiCodePage(), bytes);
}

// The cell that begins at a place of the line, which moves past it. False when its quote is not closed.
bool takeCell(std::wstring_view line, std::size_t& at, std::wstring& cell) {
    while (at < line.size() && platform::isBlank(static_cast<char32_t>(line[at])))
        ++at;
    if (at >= line.size() || line[at] != L'"') {
        const std::size_t end = std::min(line.find(L',', at), line.size());
        cell = platform::trimmed(line.substr(at, end - at));
        at = end;
        return true;
    }
    cell.clear();
    for (++at; at < line.size(); ++at) {
        if (line[at] != L'"') {
            cell += line[at];
        } else if (at + 1 < line.size() && line[at + 1] == L'"') {
            cell += line[++at];
        } else {
            at = std::min(line.find(L',', at), line.size());
            return true;
        }
    }
    return false;
}

bool cutLine(std::wstring_view line, std::vector<std::wstring>& cells) {
    for (std::size_t at = 0;;) {
        if (!takeCell(line, at, cells.emplace_back())) return false;
        if (at >= line.size()) return true;
        ++at;  // the comma
    }
}

}  // namespace

std::string faultAt(const std::wstring& path, int line, const std::wstring& what) {
    return platform::nativePath(path).u8string() + ":" + std::to_string(line) + ": " + platform::toUtf8(what);
}

bool readCsv(const std::wstring& path, std::vector<CsvRow>& rows, platform::Error& error) {
    rows.clear();
    std::string bytes;
    if (!platform::readFile(platform::nativePath(path), bytes, error)) return false;
    const std::wstring text = textOf(bytes);
    int number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        std::wstring_view line = std::wstring_view(text).substr(begin, end - begin);
        begin = end + 1;
        ++number;
        if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
        line = platform::trimmed(line);
        if (line.empty() || line.front() == L'#') continue;
        CsvRow row{number, {}};
        if (!cutLine(line, row.cells)) {
            error.message = faultAt(path, number, platform::translated(L"a quote is not closed"));
            return false;
        }
        rows.push_back(std::move(row));
    }
    return true;
}

std::wstring csvCell(const std::wstring& text) {
    const bool isPlain = text.find_first_of(L",\"\r\n") == std::wstring::npos && platform::trimmed(text) == text;
    if (isPlain && text.substr(0, 1) != L"#") return text;
    std::wstring cell = L"\"";
    for (const wchar_t c : text) {
        if (c == L'"') cell += c;
        cell += c;
    }
    return cell + L'"';
}

}  // namespace qrs::audit
