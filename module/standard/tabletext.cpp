// Opens the tables beside the standard.
#include "standard/tabletext.h"

#include <cstdint>
#include <set>
#include <string>

#include "host/platform/files.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"

namespace qrs::standard {

namespace {

// Bytes: 255 characters of Chinese, as much as a drawing takes for a name.
constexpr std::uint64_t kLongestText = 510;

}  // namespace

bool openTable(CDBFRecordset& table, const std::wstring& path) {
    // Some are opened for each linetype of a drawing.
    static std::set<std::wstring> told;
    if (path.empty()) return false;
    if (table.Open(path)) {
        told.erase(path);
        table.SetLongestMemo(kLongestText);
        return true;
    }
    if (told.insert(path).second)
        QrsExport::TellRefusal(
            platform::translated(L"The table %1 is damaged, or cannot be read.", platform::shownPath(path)));
    return false;
}

}  // namespace qrs::standard
