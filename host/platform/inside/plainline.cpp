// Lines of standard input as bytes.
#include "host/platform/inside/plainline.h"

#include <iostream>

#include "host/platform/codepage.h"

namespace qrs::platform {

Typed readPlainLine(std::wstring& line) {
    std::string bytes;
    if (!std::getline(std::cin, bytes)) return Typed::End;
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    if (!decodeStrict(kUtf8, bytes, line)) line = decode(ansiCodePage(), bytes);
    return Typed::Line;
}

}  // namespace qrs::platform
