// Finds an XML file on the data path and reads it, with one message when it cannot be.
#include "frame/xmlfile.h"

#include <cstring>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "qrs_kernal.h"
#include "standard/itemtree.h"

namespace qrs::frame {

bool readXmlFile(const std::wstring& name, const char* root, pugi::xml_document& document) {
    std::wstring path;
    if (!QrsExport::FindFile(name, path)) return false;
    platform::Error error;
    if (standard::loadItemTree(path, document, error) && std::strcmp(document.document_element().name(), root) != 0)
        error.message = platform::toUtf8(platform::shownPath(path) + L"：第 1 行：根元素不是 ") + root;
    if (!error) return true;
    QrsExport::PrintRefusal(L"\n%s。按没有 %s 处理。\n", platform::fromUtf8(error.message).c_str(), name.c_str());
    return false;
}

}  // namespace qrs::frame
