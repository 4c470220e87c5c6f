// Reads scripts.
#include "console/script.h"

#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::console {

using platform::translated;

namespace {

struct ByteOrderMark {
    std::string_view bytes;
    unsigned codePage;
};
constexpr ByteOrderMark kByteOrderMarks[] = {
    {"\xEF\xBB\xBF", platform::kUtf8},
    {"\xFF\xFE", platform::kUtf16Little},
    {"\xFE\xFF", platform::kUtf16Big},
};

// Commands and line ends have a zero byte each in UTF-16, all of them on the same side; no other text has any.
unsigned codePageOf(std::string_view bytes) {
    std::size_t zeros[2] = {};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] == '\0') ++zeros[i % 2];
    if (zeros[0] + zeros[1] > 0) return zeros[1] > zeros[0] ? platform::kUtf16Little : platform::kUtf16Big;
    return platform::isUtf8(bytes) ? platform::kUtf8 : platform::ansiCodePage();
}

// False for what is no text.
bool decodeScript(std::string_view bytes, std::wstring& text) {
    unsigned codePage = 0;
    for (const ByteOrderMark& mark : kByteOrderMarks) {
        if (bytes.substr(0, mark.bytes.size()) != mark.bytes) continue;
        bytes.remove_prefix(mark.bytes.size());
        codePage = mark.codePage;
        break;
    }
    if (codePage == 0) codePage = codePageOf(bytes);
    const bool isUtf16 = codePage == platform::kUtf16Little || codePage == platform::kUtf16Big;
    if (!isUtf16) {
        // What is no text of its code page is text of the ANSI code page, as far as it goes.
        if (!platform::decodeStrict(codePage, bytes, text)) text = platform::decode(platform::ansiCodePage(), bytes);
    } else if (!platform::decodeStrict(codePage, bytes, text)) {
        return false;
    }
    return text.find(L'\0') == std::wstring::npos;
}

}  // namespace

void Script::addLine(const std::string& utf8, int number) {
    std::wstring text = platform::fromUtf8(utf8);
    if (!text.empty() && text.front() == L';') return;
    lines_.push_back({std::move(text), "--execute " + std::to_string(number)});
}

bool Script::addBytes(std::string_view bytes, const std::string& name, platform::Error& error) {
    std::wstring text;
    if (!decodeScript(bytes, text)) {
        error.message = translated("%1: not a script: neither UTF-8 nor UTF-16 nor text of the ANSI code page", name);
        return false;
    }
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
    return true;
}

const ScriptLine* Script::next() {
    return position_ < lines_.size() ? &lines_[position_++] : nullptr;
}

}  // namespace qrs::console
