// XML files as item trees: reading them in the encodings people save them in, and finding items by name.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "afxstr.h"
#include "host/platform/error.h"

namespace qrs::standard {

// XML carries no other control characters, no lone surrogates and no U+FFFE and U+FFFF.
constexpr bool isXmlCharacter(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

// Reads an XML file (path in the inner form) in UTF-8, UTF-16 or a declared GBK, GB2312 or GB18030. False, with one
// line that names the file, the line and the reason in error, when it cannot be read or is not well-formed.
bool loadItemTree(std::wstring_view path, pugi::xml_document& tree, platform::Error& error);

// The same from bytes; name stands for the file in the message.
bool parseItemTree(std::string_view bytes, const std::string& name, pugi::xml_document& tree, platform::Error& error);

// The first item of that name (exactly compared) below owner, searched depth first in document order; a null node when
// there is none.
pugi::xml_node findSubItem(const pugi::xml_node& owner, const char* name);

// The item's value: its text without that of the items below it.
CString itemText(const pugi::xml_node& item);

CString itemAttribute(const pugi::xml_node& item, const char* name);

}  // namespace qrs::standard
