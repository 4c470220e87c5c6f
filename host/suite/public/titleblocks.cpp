// Reading the cache of a folder's title blocks.
#include "qrs_titleblocks.h"

#include <string_view>

#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace {

namespace platform = qrs::platform;

constexpr const wchar_t* kCacheName = L"titleblocks.txt";
constexpr std::wstring_view kTitle = L"QRS title blocks 1";
constexpr std::wstring_view kByteOrderMark = L"\xFEFF";
constexpr wchar_t kComment = L';';
constexpr wchar_t kBetween = L'\t';

// The next line of the text, without its end; the text goes on after it.
std::wstring_view takeLine(std::wstring_view& text) {
    const std::size_t end = text.find(L'\n');
    std::wstring_view line = text.substr(0, end);
    text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    return line;
}

// False unless the line has just three fields.
bool readRecord(std::wstring_view line, TTitleBlock& block) {
    const std::size_t first = line.find(kBetween);
    const std::size_t second = first == std::wstring_view::npos ? first : line.find(kBetween, first + 1);
    if (second == std::wstring_view::npos || line.find(kBetween, second + 1) != std::wstring_view::npos) return false;
    block.category = line.substr(0, first);
    block.name = line.substr(first + 1, second - first - 1);
    block.serial = line.substr(second + 1);
    return true;
}

}  // namespace

bool LoadTitleBlockCache(const std::wstring& directory, std::vector<TTitleBlock>& records) {
    std::string bytes;
    std::wstring content;
    platform::Error error;
    if (!platform::readFile(platform::nativePath(platform::joinPath(directory, kCacheName)), bytes, error) ||
        !platform::decodeStrict(platform::kUtf8, bytes, content))
        return false;
    std::wstring_view text = content;
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());
    if (takeLine(text) != kTitle) return false;
    std::vector<TTitleBlock> read;
    while (!text.empty()) {
        const std::wstring_view line = takeLine(text);
        if (line.empty() || line.front() == kComment) continue;
        TTitleBlock block;
        if (!readRecord(line, block)) return false;
        read.push_back(std::move(block));
    }
    records = std::move(read);
    return true;
}
