// XML files as item trees.
#include "standard/itemtree.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <new>
#include <system_error>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "standard/text.h"
#include "standard/xmltext.h"

namespace qrs::standard {

using platform::translated;
using platform::untranslated;

namespace {

// White space alone is a value like any other, but not between elements. A fragment, because what stands outside of the
// root would be skipped otherwise, and a damaged file taken for a sound one.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_fragment;

std::size_t lineAt(std::string_view bytes, std::size_t offset) {
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(offset, bytes.size()));
    return 1 + static_cast<std::size_t>(std::count(bytes.begin(), end, '\n'));
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

// Whether one of the bytes may begin a character that could not be written again. Without a branch in its loop, so that
// the compiler looks at many bytes at once.
bool mayHoldForbidden(std::string_view utf8) {
    unsigned found = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isWhite = (byte == '\t') | (byte == '\n') | (byte == '\r');
        found |= ((byte < 0x20) & !isWhite) | (byte == '&') | (byte == 0xEF);
    }
    return found != 0;
}

bool isForbiddenAt(std::string_view utf8, std::size_t i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x20) return !isXmlCharacter(byte);
    if (byte == '&') return beginsWithForbiddenReference(utf8.substr(i));
    const std::string_view three = byte == 0xEF ? utf8.substr(i, 3) : std::string_view();
    return three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF";
}

// Where the first character stands that could not be written again; the size when there is none.
std::size_t firstForbidden(std::string_view utf8) {
    constexpr std::size_t kStride = 256;
    for (std::size_t start = 0; start < utf8.size(); start += kStride) {
        const std::size_t end = std::min(start + kStride, utf8.size());
        if (!mayHoldForbidden(utf8.substr(start, end - start))) continue;
        for (std::size_t i = start; i < end; ++i)
            if (isForbiddenAt(utf8, i)) return i;
    }
    return utf8.size();
}

// One root, and no text beside it.
bool checkRoot(const pugi::xml_document& tree, std::string_view utf8, const std::string& name, platform::Error& error) {
    const auto refuse = [&](std::ptrdiff_t offset, const char* reason) {
        setXmlError(error, name, lineAt(utf8, static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0))),
                    translated("not well-formed XML (%1)", translated(reason)));
        return false;
    };
    bool hasRoot = false;
    for (const pugi::xml_node& child : tree.children()) {
        if (child.type() != pugi::node_element)
            return refuse(child.offset_debug(), untranslated("text outside of the root element"));
        if (hasRoot) return refuse(child.offset_debug(), untranslated("a second root element"));
        hasRoot = true;
    }
    return hasRoot || refuse(static_cast<std::ptrdiff_t>(utf8.size()), untranslated("no root element"));
}

struct ParseFault {
    pugi::xml_parse_status status;
    const char* text;
};
constexpr ParseFault kParseFaults[] = {
    {pugi::status_out_of_memory, untranslated("out of memory")},
    {pugi::status_unrecognized_tag, untranslated("no tag after <")},
    {pugi::status_bad_pi, untranslated("a faulty declaration or instruction")},
    {pugi::status_bad_comment, untranslated("a faulty comment")},
    {pugi::status_bad_cdata, untranslated("a faulty CDATA section")},
    {pugi::status_bad_doctype, untranslated("a faulty document type")},
    {pugi::status_bad_pcdata, untranslated("faulty text")},
    {pugi::status_bad_start_element, untranslated("a faulty start tag")},
    {pugi::status_bad_attribute, untranslated("a faulty attribute")},
    {pugi::status_bad_end_element, untranslated("a faulty end tag")},
    {pugi::status_end_element_mismatch, untranslated("an end tag of another element")},
    {pugi::status_no_document_element, untranslated("no root element")},
};

std::string faultOf(const pugi::xml_parse_result& result) {
    for (const ParseFault& fault : kParseFaults)
        if (fault.status == result.status) return translated(fault.text);
    return result.description();
}

bool parseUtf8(std::string_view utf8, const std::string& name, pugi::xml_document& tree, platform::Error& error) {
    const std::size_t forbidden = firstForbidden(utf8);
    if (forbidden < utf8.size()) {
        setXmlError(error, name, lineAt(utf8, forbidden), translated("holds a character that XML does not allow"));
        return false;
    }
    const pugi::xml_parse_result result =
        tree.load_buffer(utf8.data(), utf8.size(), kParseOptions, pugi::encoding_utf8);
    if (result) return checkRoot(tree, utf8, name, error);
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
    setXmlError(error, name, lineAt(utf8, offset), translated("not well-formed XML (%1)", faultOf(result)));
    return false;
}

// Reads the text as a frame and pieces. False when it cannot be cut, and when something in it is not well-formed.
bool readCut(std::string_view utf8, const CutRule& rule, const ReadItems& read) {
    CutText cut;
    pugi::xml_document frame;
    platform::Error error;
    if (firstForbidden(utf8) < utf8.size() || !cutText(utf8, rule, cut)) return false;
    if (!parseUtf8(cut.frame, {}, frame, error)) return false;
    ItemTree tree(frame, cut.pieces);
    read(tree);
    return tree.isSound();
}

}  // namespace

ItemTree::ItemTree(const pugi::xml_document& frame, const std::vector<std::string_view>& pieces)
    : frame_(frame), pieces_(pieces) {}

pugi::xml_node ItemTree::whole(const pugi::xml_node& item) {
    if (pieces_.empty()) return item;
    const auto number = static_cast<std::size_t>(item.attribute(kPieceNumber).as_ullong(pieces_.size()));
    if (number >= pieces_.size()) return item;
    buffer_.assign(pieces_[number]);
    const pugi::xml_parse_result result =
        piece_.load_buffer_inplace(buffer_.data(), buffer_.size(), kParseOptions, pugi::encoding_utf8);
    const pugi::xml_node root = piece_.document_element();
    isSound_ = isSound_ && result && root == piece_.first_child() && root == piece_.last_child();
    return root;
}

void ItemTree::readAll() {
    for (const pugi::xml_node& section : root().children()) {
        for (const pugi::xml_node& group : section.children()) {
            for (const pugi::xml_node& bulky : group.children())
                whole(bulky);
        }
    }
}

bool readItems(std::string_view bytes, const std::string& name, const CutRule& rule, const ReadItems& read,
               platform::Error& error) {
    XmlText text;
    if (!readXmlText(bytes, name, text, error)) return false;
    if (readCut(text.utf8, rule, read)) return true;
    // Whole, for the few files that cannot be cut, and for the message about one that is damaged.
    pugi::xml_document document;
    if (!parseUtf8(text.utf8, name, document, error)) return false;
    const std::vector<std::string_view> noPieces;
    ItemTree tree(document, noPieces);
    read(tree);
    return true;
}

bool parseItemTree(std::string_view bytes, const std::string& name, pugi::xml_document& tree, platform::Error& error) {
    XmlText text;
    return readXmlText(bytes, name, text, error) && parseUtf8(text.utf8, name, tree, error);
}

bool loadItemFile(std::wstring_view path, std::uint64_t most, const ReadBytes& read, platform::Error& error) {
    try {
        std::string bytes;
        return platform::readOrdinaryFile(platform::nativePath(path), most, bytes, error) &&
               read(bytes, platform::toUtf8(platform::shownPath(path)));
    } catch (const std::bad_alloc&) {
        error.message =
            translated("%1: the file is too large for the memory", platform::toUtf8(platform::shownPath(path)));
        return false;
    }
}

bool loadItemTree(std::wstring_view path, pugi::xml_document& tree, platform::Error& error) {
    return loadItemFile(
        path, kMostItemBytes,
        [&](std::string_view bytes, const std::string& name) { return parseItemTree(bytes, name, tree, error); },
        error);
}

pugi::xml_node nextItem(const pugi::xml_node& item, const pugi::xml_node& owner) {
    const auto elementFrom = [](pugi::xml_node node) {
        while (node && node.type() != pugi::node_element)
            node = node.next_sibling();
        return node;
    };
    // Without recursion: how deep a file nests is not ours to say.
    if (const pugi::xml_node below = elementFrom(item.first_child())) return below;
    for (pugi::xml_node above = item; above != owner; above = above.parent())
        if (const pugi::xml_node beside = elementFrom(above.next_sibling())) return beside;
    return {};
}

pugi::xml_node findSubItem(const pugi::xml_node& owner, const char* name) {
    pugi::xml_node item = nextItem(owner, owner);
    while (item && std::strcmp(item.name(), name) != 0)
        item = nextItem(item, owner);
    return item;
}

CString itemText(const pugi::xml_node& item) {
    const auto isText = [](const pugi::xml_node& child) {
        return child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
    };
    const pugi::xml_node first = item.first_child();
    if (!first) return {};
    // Nearly every item: its text is in one piece.
    if (isText(first) && !first.next_sibling()) return fromUtf8(first.value());
    std::string text;
    for (const pugi::xml_node& child : item.children())
        if (isText(child)) text += child.value();
    return fromUtf8(text);
}

CString itemAttribute(const pugi::xml_node& item, const char* name) {
    return fromUtf8(item.attribute(name).value());
}

}  // namespace qrs::standard
