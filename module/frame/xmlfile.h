// XML files of the system folder.
#pragma once

#include <pugixml.hpp>
#include <string>

namespace qrs::frame {

// Finds the file by its bare name and reads it. False when there is none and, after one message on the command line
// with file and line, when it cannot be read, is no well-formed XML or has another root.
bool readXmlFile(const std::wstring& name, const char* root, pugi::xml_document& document);

}  // namespace qrs::frame
