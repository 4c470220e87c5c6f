// The tables beside the standard, and texts of their fields.
#pragma once

#include <string_view>

#include "config/dbfrecordset.h"
#include "standard/text.h"

namespace qrs::standard {

// For names and short texts: 255 characters of Chinese, as much as a drawing takes for a name.
inline bool openTable(CDBFRecordset& table, std::wstring_view path) {
    if (path.empty() || !table.Open(path)) return false;
    table.SetLongestMemo(510);
    return true;
}

// A text without the padding that the table stores; empty when there is no such field.
inline CString trimmedText(CDBFRecordset& table, std::wstring_view field) {
    std::wstring value;
    table.GetFieldValue(field, value);
    CString text = makeText(value);
    return text.Trim();
}

}  // namespace qrs::standard
