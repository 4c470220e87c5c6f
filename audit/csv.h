// Small tables in text files: settings of a check, findings that were accepted, mappings of a repair.
//
//     # a comment
//     layer-foreign, TEMP*, "agreed, until May"
#pragma once

#include <string>
#include <vector>

#include "host/platform/error.h"

namespace qrs::audit {

struct CsvRow {
    int line = 0;
    std::vector<std::wstring> cells;  // without blanks around those that have no quotes
};

// The rows of a file (path in the inner form): UTF-8, or else text of the ANSI code page. Cells lie between commas; one
// in double quotes may hold commas, and quotes when they are doubled. Empty lines and those that begin with "#" are
// none. False, with the file and the line in error, when it cannot be read or a quote is not closed.
bool readCsv(const std::wstring& path, std::vector<CsvRow>& rows, platform::Error& error);

// "file:line: what is wrong"
std::string faultAt(const std::wstring& path, int line, const std::wstring& what);

// A cell as readCsv reads it.
std::wstring csvCell(const std::wstring& text);

}  // namespace qrs::audit
