// Finds the encoding by its mark or its declaration and turns the bytes into UTF-8.
#include "standard/xmltext.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "host/platform/codepage.h"

namespace qrs::standard {
namespace {

struct DeclaredEncoding {
    std::string_view name;
    unsigned codePage;
};

constexpr unsigned kGbk = 936;
constexpr unsigned kGb18030 = 54936;
constexpr DeclaredEncoding kDeclaredEncodings[] = {
    {"gbk", kGbk}, {"gb2312", kGbk}, {"gb18030", kGb18030}, {"utf-8", platform::kUtf8}, {"utf8", platform::kUtf8},
};

// The encoding that the declaration at the head of the bytes names, in lower case; empty when it names none.
std::string declaredEncoding(std::string_view bytes) {
    constexpr std::string_view kStart = "<?xml";
    constexpr std::string_view kKey = "encoding";
    if (bytes.substr(0, kStart.size()) != kStart) return {};
    const std::string_view declaration = bytes.substr(0, std::min(bytes.find("?>"), bytes.size()));
    const std::size_t key = declaration.find(kKey);
    if (key == std::string_view::npos) return {};
    const std::size_t open = declaration.find_first_of("'\"", key + kKey.size());
    if (open == std::string_view::npos) return {};
    const std::size_t close = declaration.find(declaration[open], open + 1);
    if (close == std::string_view::npos) return {};
    std::string name(declaration.substr(open + 1, close - open - 1));
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return name;
}

bool utf8FromUtf16(std::string_view bytes, bool bigEndian, const std::string& name, XmlText& text,
                   platform::Error& error) {
    const auto unit = [&](std::size_t i) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::wstring wide;
    std::size_t line = 1;
    bool sound = bytes.size() % 2 == 0;
    for (std::size_t i = 0; sound && i + 1 < bytes.size(); i += 2) {
        std::uint32_t point = unit(i);
        if (point >= 0xD800 && point < 0xE000) {
            const std::uint32_t low = i + 3 < bytes.size() ? unit(i + 2) : 0;
            sound = point < 0xDC00 && low >= 0xDC00 && low < 0xE000;
            if (!sound) break;
            point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
            i += 2;
        }
        if (point == '\n') ++line;
        platform::appendCodePoint(wide, static_cast<char32_t>(point));
    }
    if (sound) {
        text.own = platform::toUtf8(wide);
        text.utf8 = text.own;
    } else {
        setXmlError(error, name, line, "不是有效的 UTF-16 文本");
    }
    return sound;
}

bool utf8FromCodePage(std::string_view bytes, unsigned codePage, const std::string& reason, const std::string& name,
                      XmlText& text, platform::Error& error) {
    std::wstring wide;
    if (codePage == platform::kUtf8 && platform::isUtf8(bytes)) {
        text.utf8 = bytes;
        return true;
    }
    if (codePage != platform::kUtf8 && platform::decodeStrict(codePage, bytes, wide)) {
        text.own = platform::toUtf8(wide);
        text.utf8 = text.own;
        return true;
    }
    std::size_t line = 1;
    for (std::size_t start = 0; start < bytes.size(); ++line) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        if (!platform::decodeStrict(codePage, bytes.substr(start, end - start), wide)) break;
        start = end + 1;
    }
    setXmlError(error, name, line, reason);
    return false;
}

bool utf8FromDeclared(std::string_view bytes, const std::string& name, XmlText& text, platform::Error& error) {
    std::string declared = declaredEncoding(bytes);
    if (declared.empty()) declared = "utf-8";
    const auto* known = std::find_if(std::begin(kDeclaredEncodings), std::end(kDeclaredEncodings),
                                     [&declared](const DeclaredEncoding& e) { return e.name == declared; });
    // In an encoding that is not known, plain ASCII can still be read.
    if (known == std::end(kDeclaredEncodings)) {
        return utf8FromCodePage(bytes, platform::kUtf8, "不能识别的编码 " + declared, name, text, error);
    }
    return utf8FromCodePage(bytes, known->codePage, "不是有效的 " + declared + " 文本", name, text, error);
}

}  // namespace

void setXmlError(platform::Error& error, const std::string& name, std::size_t line, const std::string& reason) {
    error.message = name + "：第 " + std::to_string(line) + " 行：" + reason;
}

bool readXmlText(std::string_view bytes, const std::string& name, XmlText& text, platform::Error& error) {
    using namespace std::string_view_literals;
    const auto begins = [&bytes](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
    // The mark counts more than the declaration: an editor that changes the encoding leaves the declaration as it is.
    if (begins("\xEF\xBB\xBF"sv)) {
        return utf8FromCodePage(bytes.substr(3), platform::kUtf8, "不是有效的 utf-8 文本", name, text, error);
    }
    if (begins("\xFF\xFE"sv)) return utf8FromUtf16(bytes.substr(2), false, name, text, error);
    if (begins("\xFE\xFF"sv)) return utf8FromUtf16(bytes.substr(2), true, name, text, error);
    // UTF-16 without a mark shows by the zero beside its first '<'.
    if (begins("<\0"sv)) return utf8FromUtf16(bytes, false, name, text, error);
    if (begins("\0<"sv)) return utf8FromUtf16(bytes, true, name, text, error);
    return utf8FromDeclared(bytes, name, text, error);
}

}  // namespace qrs::standard
