// Finds the encoding by its mark or its declaration and turns the bytes into UTF-8.
#include "standard/xmltext.h"

#include <algorithm>
#include <iterator>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::standard {

using platform::translated;

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

constexpr std::size_t kLongestName = 40;
bool isNameSign(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
           c == '.';
}

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
    // Anything else than a name was not meant as one, and does not belong into a message.
    std::string name(declaration.substr(open + 1, close - open - 1));
    if (name.size() > kLongestName || !std::all_of(name.begin(), name.end(), isNameSign)) return {};
    for (char& c : name)
        c = platform::asciiLower(c);
    return name;
}

bool utf8FromUtf16(std::string_view bytes, unsigned codePage, const std::string& name, XmlText& text,
                   platform::Error& error) {
    std::wstring wide;
    if (platform::decodeStrict(codePage, bytes, wide)) {
        text.own = platform::toUtf8(wide);
        text.utf8 = text.own;
        return true;
    }
    // Half a pair is the first fault, else half a unit at the end.
    std::size_t line = 1;
    for (std::size_t i = 0; i < wide.size();) {
        const char32_t point = platform::nextCodePoint(wide, i);
        if (platform::isSurrogate(point)) break;
        if (point == U'\n') ++line;
    }
    setXmlError(error, name, line, translated("no valid text in %1", "UTF-16"));
    return false;
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
        return utf8FromCodePage(bytes, platform::kUtf8, translated("unknown encoding %1", declared), name, text, error);
    }
    return utf8FromCodePage(bytes, known->codePage, translated("no valid text in %1", declared), name, text, error);
}

}  // namespace

void setXmlError(platform::Error& error, const std::string& name, std::size_t line, const std::string& reason) {
    error.message = translated("%1: line %2: %3", name, line, reason);
}

bool readXmlText(std::string_view bytes, const std::string& name, XmlText& text, platform::Error& error) {
    using namespace std::string_view_literals;
    const auto begins = [&bytes](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
    // The mark counts more than the declaration: an editor that changes the encoding leaves the declaration as it is.
    if (begins("\xEF\xBB\xBF"sv)) {
        return utf8FromCodePage(bytes.substr(3), platform::kUtf8, translated("no valid text in %1", "utf-8"), name,
                                text, error);
    }
    if (begins("\xFF\xFE"sv)) return utf8FromUtf16(bytes.substr(2), platform::kUtf16Little, name, text, error);
    if (begins("\xFE\xFF"sv)) return utf8FromUtf16(bytes.substr(2), platform::kUtf16Big, name, text, error);
    // UTF-16 without a mark shows by the zero beside its first '<'.
    if (begins("<\0"sv)) return utf8FromUtf16(bytes, platform::kUtf16Little, name, text, error);
    if (begins("\0<"sv)) return utf8FromUtf16(bytes, platform::kUtf16Big, name, text, error);
    return utf8FromDeclared(bytes, name, text, error);
}

}  // namespace qrs::standard
