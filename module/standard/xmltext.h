// The text of an XML file, whatever encoding a person has saved it in.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/platform/error.h"

namespace qrs::standard {

// In UTF-8, without a byte-order mark. Bytes that are that already are looked at where they lie.
struct XmlText {
    std::string_view utf8;
    std::string own;  // holds what utf8 shows when the bytes were in another encoding
};

// The text of bytes in UTF-8, UTF-16 or a declared GBK, GB2312 or GB18030, good as long as the bytes. False, with the
// line and the reason in error, when they are no such text; name stands for the file.
bool readXmlText(std::string_view bytes, const std::string& name, XmlText& text, platform::Error& error);

// What is wrong in a line of a file, as one message.
void setXmlError(platform::Error& error, const std::string& name, std::size_t line, const std::string& reason);

}  // namespace qrs::standard
