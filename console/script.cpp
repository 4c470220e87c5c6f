// Reads scripts.
#include "console/script.h"

#include "host/platform/codepage.h"

namespace qrs::console {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::wstring decodeScript(std::string_view bytes) {
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    std::wstring text;
    if (platform::decodeStrict(platform::kUtf8, bytes, text)) return text;
    return platform::decode(platform::ansiCodePage(), bytes);
}

}  // namespace

void Script::addLine(const std::string& utf8, int number) {
    std::wstring text = platform::fromUtf8(utf8);
    if (!text.empty() && text.front() == L';') return;
    lines_.push_back({std::move(text), "--execute " + std::to_string(number)});
}

void Script::addBytes(std::string_view bytes, const std::string& name) {
    const std::wstring text = decodeScript(bytes);
    int number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = text.find(L'\n', begin);
        if (end == std::wstring::npos) end = text.size();
        std::wstring line = text.substr(begin, end - begin);
        begin = end + 1;
        ++number;
        if (!line.empty() && line.back() == L'\r') line.pop_back();
        if (!line.empty() && line.front() == L';') continue;
        lines_.push_back({std::move(line), name + ":" + std::to_string(number)});
    }
}

const ScriptLine* Script::next() {
    return position_ < lines_.size() ? &lines_[position_++] : nullptr;
}

}  // namespace qrs::console
