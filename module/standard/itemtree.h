// XML files as item trees: reading them in the encodings people save them in, and finding items by name.
#pragma once

#include <cstdint>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "afx.h"
#include "host/platform/error.h"
#include "host/platform/text.h"
#include "standard/itemcut.h"

namespace qrs::standard {

// XML carries no other control characters, no lone surrogates and no U+FFFE and U+FFFF.
constexpr bool isXmlCharacter(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return !platform::isSurrogate(c) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

// Larger files are refused: no standard comes near, and a file that was meant for something else would fill the memory.
constexpr std::uint64_t kMostItemBytes = 512u << 20;

// Hands the bytes of an ordinary file (path in the inner form) and the name it bears in messages to read. False, with
// one line that names the file and the reason in error, when it cannot be read, and when read gives false.
using ReadBytes = std::function<bool(std::string_view bytes, const std::string& name)>;
bool loadItemFile(std::wstring_view path, std::uint64_t most, const ReadBytes& read, platform::Error& error);

// Reads an XML file (path in the inner form) in UTF-8, UTF-16 or a declared GBK, GB2312 or GB18030. False, with one
// line that names the file, the line and the reason in error, when it cannot be read or is not well-formed.
bool loadItemTree(std::wstring_view path, pugi::xml_document& tree, platform::Error& error);

// The same from bytes; name stands for the file in the message.
bool parseItemTree(std::string_view bytes, const std::string& name, pugi::xml_document& tree, platform::Error& error);

// An item tree whose bulky items may be there one at a time.
class ItemTree {
  public:
    // The pieces are those that items of the frame stand for; without any the frame is the whole tree.
    ItemTree(const pugi::xml_document& frame, const std::vector<std::string_view>& pieces);

    pugi::xml_node root() const { return frame_.document_element(); }
    // The item with what it holds. Valid until the next call.
    pugi::xml_node whole(const pugi::xml_node& item);
    // Parses every piece, to find what is not well-formed.
    void readAll();
    // False when a piece was not well-formed: what was read is then worth nothing.
    bool isSound() const { return isSound_; }

  private:
    const pugi::xml_document& frame_;
    const std::vector<std::string_view>& pieces_;
    pugi::xml_document piece_;
    std::string buffer_;
    bool isSound_ = true;
};

// Hands the item tree of an XML file's bytes to read, which may be called twice: what the first call read counts for
// nothing then. Memory grows with the largest bulky item, not with the file. False, with the reason in error, as
// parseItemTree.
using ReadItems = std::function<void(ItemTree& tree)>;
bool readItems(std::string_view bytes, const std::string& name, const CutRule& rule, const ReadItems& read,
               platform::Error& error);

// The item after this one in a walk through all items below owner, depth first in document order; a null node after the
// last one. The walk begins with owner itself as the item.
pugi::xml_node nextItem(const pugi::xml_node& item, const pugi::xml_node& owner);

// The first item of that name (exactly compared) below owner, searched depth first in document order; a null node when
// there is none.
pugi::xml_node findSubItem(const pugi::xml_node& owner, const char* name);

// The item's value: its text without that of the items below it.
CString itemText(const pugi::xml_node& item);

CString itemAttribute(const pugi::xml_node& item, const char* name);

}  // namespace qrs::standard
