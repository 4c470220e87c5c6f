// XML files as item trees.
#include "standard/itemtree.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <new>
#include <system_error>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "standard/text.h"

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

std::size_t lineAt(std::string_view bytes, std::size_t offset) {
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size()));
    return 1 + static_cast<std::size_t>(std::count(bytes.begin(), end, '\n'));
}

void setError(platform::Error& error, const std::string& name, std::size_t line, const std::string& reason) {
    error.message = name + "：第 " + std::to_string(line) + " 行：" + reason;
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
    std::string name(declaration.substr(open + 1, close - open - 1));
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return name;
}

bool utf8FromUtf16(std::string_view bytes, bool bigEndian, const std::string& name, std::string& utf8,
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
        utf8 = platform::toUtf8(wide);
    } else {
        setError(error, name, line, "不是有效的 UTF-16 文本");
    }
    return sound;
}

bool utf8FromCodePage(std::string_view bytes, unsigned codePage, const std::string& reason, const std::string& name,
                      std::string& utf8, platform::Error& error) {
    std::wstring wide;
    if (platform::decodeStrict(codePage, bytes, wide)) {
        utf8 = codePage == platform::kUtf8 ? std::string(bytes) : platform::toUtf8(wide);
        return true;
    }
    std::size_t line = 1;
    for (std::size_t start = 0; start < bytes.size(); ++line) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        if (!platform::decodeStrict(codePage, bytes.substr(start, end - start), wide)) break;
        start = end + 1;
    }
    setError(error, name, line, reason);
    return false;
}

bool utf8FromDeclared(std::string_view bytes, const std::string& name, std::string& utf8, platform::Error& error) {
    std::string declared = declaredEncoding(bytes);
    if (declared.empty()) declared = "utf-8";
    const auto* known = std::find_if(std::begin(kDeclaredEncodings), std::end(kDeclaredEncodings),
                                     [&declared](const DeclaredEncoding& e) { return e.name == declared; });
    // In an encoding that is not known, plain ASCII can still be read.
    if (known == std::end(kDeclaredEncodings)) {
        return utf8FromCodePage(bytes, platform::kUtf8, "不能识别的编码 " + declared, name, utf8, error);
    }
    return utf8FromCodePage(bytes, known->codePage, "不是有效的 " + declared + " 文本", name, utf8, error);
}

// The bytes in UTF-8 without a byte-order mark. UTF-16 without a mark shows by the zero beside its first '<'.
bool makeUtf8(std::string_view bytes, const std::string& name, std::string& utf8, platform::Error& error) {
    using namespace std::string_view_literals;
    const auto begins = [&bytes](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
    // The mark counts more than the declaration: an editor that changes the encoding leaves the declaration as it is.
    if (begins("\xEF\xBB\xBF"sv)) {
        return utf8FromCodePage(bytes.substr(3), platform::kUtf8, "不是有效的 utf-8 文本", name, utf8, error);
    }
    if (begins("\xFF\xFE"sv)) return utf8FromUtf16(bytes.substr(2), false, name, utf8, error);
    if (begins("\xFE\xFF"sv)) return utf8FromUtf16(bytes.substr(2), true, name, utf8, error);
    if (begins("<\0"sv)) return utf8FromUtf16(bytes, false, name, utf8, error);
    if (begins("\0<"sv)) return utf8FromUtf16(bytes, true, name, utf8, error);
    return utf8FromDeclared(bytes, name, utf8, error);
}

// Whether the text begins with a reference, like "&#1;", to a character that XML does not carry.
bool beginsWithForbiddenReference(std::string_view text) {
    if (text.substr(0, 2) != "&#") return false;
    const bool hex = text.substr(2, 1) == "x";
    text.remove_prefix(hex ? 3 : 2);
    std::uint32_t point = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), point, hex ? 16 : 10);
    return result.ec == std::errc::result_out_of_range || (result.ec == std::errc() && !isXmlCharacter(point));
}

// Where the first character stands that could not be written again; the size when there is none.
std::size_t firstForbidden(std::string_view utf8) {
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x20 && !isXmlCharacter(byte)) return i;
        if (byte == '&' && beginsWithForbiddenReference(utf8.substr(i))) return i;
        const std::string_view three = byte == 0xEF ? utf8.substr(i, 3) : std::string_view();
        if (three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF") return i;
    }
    return utf8.size();
}

// One root, and no text beside it.
bool checkRoot(const pugi::xml_document& tree, const std::string& utf8, const std::string& name,
               platform::Error& error) {
    const auto refuse = [&](std::ptrdiff_t offset, const char* reason) {
        setError(error, name, lineAt(utf8, static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0))),
                 std::string("不是完好的 XML（") + reason + "）");
        return false;
    };
    bool hasRoot = false;
    for (const pugi::xml_node& child : tree.children()) {
        if (child.type() != pugi::node_element) return refuse(child.offset_debug(), "根元素之外有文字");
        if (hasRoot) return refuse(child.offset_debug(), "第二个根元素");
        hasRoot = true;
    }
    return hasRoot || refuse(static_cast<std::ptrdiff_t>(utf8.size()), "没有根元素");
}

bool parseUtf8(const std::string& utf8, const std::string& name, pugi::xml_document& tree, platform::Error& error) {
    const std::size_t forbidden = firstForbidden(utf8);
    if (forbidden < utf8.size()) {
        setError(error, name, lineAt(utf8, forbidden), "含有 XML 不允许的字符");
        return false;
    }
    // White space alone is a value like any other, but not between elements. A fragment, because what stands outside of
    // the root would be skipped otherwise, and a damaged file taken for a sound one.
    const unsigned options = pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_fragment;
    const pugi::xml_parse_result result = tree.load_buffer(utf8.data(), utf8.size(), options, pugi::encoding_utf8);
    if (result) return checkRoot(tree, utf8, name, error);
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
    setError(error, name, lineAt(utf8, offset), std::string("不是完好的 XML（") + result.description() + "）");
    return false;
}

}  // namespace

bool parseItemTree(std::string_view bytes, const std::string& name, pugi::xml_document& tree, platform::Error& error) {
    std::string utf8;
    return makeUtf8(bytes, name, utf8, error) && parseUtf8(utf8, name, tree, error);
}

bool loadItemTree(std::wstring_view path, pugi::xml_document& tree, platform::Error& error) {
    try {
        std::string bytes;
        if (!platform::readFile(platform::nativePath(path), bytes, error)) return false;
        return parseItemTree(bytes, platform::toUtf8(path), tree, error);
    } catch (const std::bad_alloc&) {
        error.message = platform::toUtf8(path) + "：文件太大，内存不足";
        return false;
    }
}

pugi::xml_node findSubItem(const pugi::xml_node& owner, const char* name) {
    // Without recursion: how deep a file nests is not ours to say.
    pugi::xml_node item = owner.first_child();
    while (item) {
        if (std::string_view(item.name()) == name) return item;
        pugi::xml_node next = item.first_child();
        while (!next && item != owner) {
            next = item.next_sibling();
            if (!next) item = item.parent();
        }
        item = next;
    }
    return {};
}

CString itemText(const pugi::xml_node& item) {
    std::string text;
    for (const pugi::xml_node& child : item.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
    }
    return fromUtf8(text);
}

CString itemAttribute(const pugi::xml_node& item, const char* name) {
    return fromUtf8(item.attribute(name).value());
}

}  // namespace qrs::standard
