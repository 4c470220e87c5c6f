// Records of a symbol table with their names.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbobjptr.h"
#include "dbsymtb.h"

namespace qrs::host::ed {

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

}  // namespace qrs::host::ed
