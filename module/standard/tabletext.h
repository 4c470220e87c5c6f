// Texts of table fields.
#pragma once

#include "config/dbfrecordset.h"
#include "standard/text.h"

namespace qrs::standard {

// A text without the padding that the table stores; empty when there is no such field.
inline CString trimmedText(CDBFRecordset& table, std::wstring_view field) {
    std::wstring value;
    table.GetFieldValue(field, value);
    CString text = makeText(value);
    return text.Trim();
}

}  // namespace qrs::standard
