// The tables beside the standard, and texts of their fields.
#pragma once

#include <string>
#include <string_view>

#include "config/dbfrecordset.h"
#include "standard/text.h"

namespace qrs::standard {

// False for an empty path, as of a file that was not found, and for a damaged table, which is told once.
bool openTable(CDBFRecordset& table, const std::wstring& path);

// A text without the padding that the table stores; empty when there is no such field.
inline CString trimmedText(CDBFRecordset& table, std::wstring_view field) {
    std::wstring value;
    table.GetFieldValue(field, value);
    CString text = makeText(value);
    return text.Trim();
}

}  // namespace qrs::standard
