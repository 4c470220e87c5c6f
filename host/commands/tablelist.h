// Records of a symbol table for the commands that list them: found by lists of names, and shown in columns.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbobjptr.h"

namespace qrs::host::commands {

struct NamedRecord {
    AcDbObjectId id;
    std::wstring name;
};

// All records of a table in its order, without those that have no name (shape files among the text styles).
template <class Table>
std::vector<NamedRecord> allRecords(AcDbDatabase* database) {
    std::vector<NamedRecord> records;
    const AcDbSymbolTablePointer<Table> table(database, AcDb::kForRead);
    typename Table::Iterator* walk = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(walk) != Acad::eOk) return records;
    for (const std::unique_ptr<AcDbSymbolTableIterator> iterator(walk); !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
        const ACHAR* name = nullptr;
        if (record.openStatus() == Acad::eOk && record->getName(name) == Acad::eOk && *name)
            records.push_back({id, name});
    }
    return records;
}

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
