// Records of a symbol table for the commands that list them: found by lists of names, and shown in columns.
#pragma once

#include <string>
#include <vector>

#include "host/editor/namedrecords.h"

namespace qrs::host::commands {

using ed::allRecords;
using ed::NamedRecord;

// The parts of a list of names separated by commas, without blanks around them and without empty ones.
std::vector<std::wstring> splitNames(const std::wstring& list);

// The records a typed list of names and wildcards means, each once, in table order. A name that a record has means that
// record even when it holds wildcard characters. What cannot be found is told on the command line; noun says what it is
// ("layer").
std::vector<NamedRecord> findRecords(const std::vector<NamedRecord>& records, const std::wstring& list,
                                     const std::wstring& noun);

// Prints rows in columns, a line under the first row. All rows have the same number of cells; one that is too long is
// cut.
using Row = std::vector<std::wstring>;
void printTable(std::vector<Row> rows);

}  // namespace qrs::host::commands
