// Finds an XML file on the data path and reads it, with one message when it cannot be.
#include "frame/xmlfile.h"

#include <cstring>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"
#include "standard/itemtree.h"

namespace qrs::frame {

using platform::translated;

bool readXmlFile(const std::wstring& name, const char* root, pugi::xml_document& document) {
    std::wstring path;
    if (!QrsExport::FindFile(name, path)) return false;
    platform::Error error;
    if (standard::loadItemTree(path, document, error) && std::strcmp(document.document_element().name(), root) != 0)
        error.message =
            translated("%1: line 1: the root element is not %2", platform::toUtf8(platform::shownPath(path)), root);
    if (!error) return true;
    QrsExport::PrintRefusal(
        L"%s", translated(L"\n%1. As if there were no %2.\n", platform::fromUtf8(error.message), name).c_str());
    return false;
}

}  // namespace qrs::frame
