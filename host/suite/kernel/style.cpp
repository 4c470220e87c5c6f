// The kernel library: text styles.
#include "qrs_style.h"

#include "dbapserv.h"
#include "dbobjptr.h"

AcDbObjectId QrsExport::GetTextStyleId(const std::wstring& name) {
    AcDbObjectId id;
    const AcDbTextStyleTablePointer table(acdbHostApplicationServices()->workingDatabase(), AcDb::kForRead);
    if (!name.empty() && table.openStatus() == Acad::eOk) table->getAt(name.c_str(), id);
    return id;
}

AcDbObjectId QrsExport::AddTextStyle(AcDbTextStyleTableRecord* record) {
    AcDbObjectId id;
    AcDbTextStyleTablePointer table(acdbHostApplicationServices()->workingDatabase(), AcDb::kForWrite);
    if (table.openStatus() == Acad::eOk) table->add(id, record);
    return id;
}
