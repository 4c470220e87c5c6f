// The serials of title blocks, from the cache of their folder.
#include <set>

#include "host/platform/codepage.h"
#include "PwxTool.h"
#include "qrs_titleblocks.h"
#include "standard/text.h"

using qrs::standard::makeText;
using qrs::standard::view;

namespace PwxTool {

void SearchTkBlkSerial(const CString& blockDirectory, const CString& category, std::vector<CString>& out) {
    SearchTkBlkSerial(blockDirectory, category, out, CString());
}

void SearchTkBlkSerial(const CString& blockDirectory, const CString& category, std::vector<CString>& out,
                       const CString& blockName) {
    std::vector<TTitleBlock> blocks;
    if (!LoadTitleBlockCache(blockDirectory.GetString(), blocks)) return;
    std::set<std::wstring, std::less<>> appended;
    for (const CString& serial : out)
        appended.emplace(view(serial));
    for (const TTitleBlock& block : blocks) {
        const bool isAsked = category.IsEmpty() ? !block.category.empty() : block.category == view(category);
        const bool isNamed = blockName.IsEmpty() || qrs::platform::compareNoCase(block.name, view(blockName)) == 0;
        if (isAsked && isNamed && appended.insert(block.serial).second) out.push_back(makeText(block.serial));
    }
}

}  // namespace PwxTool
