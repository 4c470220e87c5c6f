// Stand-in for the kernel library's text style services. They act on the working database.
//
//     AcDbTextStyleTableRecordPointer style;
//     style.create();
//     style->setName(L"HZ");
//     AcDbObjectId id = QrsExport::AddTextStyle(style.object());
#pragma once

#include <string>

#include "dbid.h"
#include "host/platform/port.h"

class AcDbTextStyleTableRecord;

namespace QrsExport {

// The text style of that name (compared without regard to case); the null id when there is none. Records of shape
// files, which have no name, are no text styles.
QRS_HOST_PORT AcDbObjectId GetTextStyleId(const std::wstring& name);

// Puts a record made with new into the text style table; it is then open for writing. The null id, and the record stays
// the caller's, when the drawing does not take it: no drawing, a table that cannot be written, no name or one that a
// style has.
QRS_HOST_PORT AcDbObjectId AddTextStyle(AcDbTextStyleTableRecord* record);

}  // namespace QrsExport
