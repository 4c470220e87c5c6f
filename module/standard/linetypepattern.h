// Linetypes as linetype.dbf describes them.
#pragma once

#include <vector>

#include "afx.h"

class CDBFRecordset;

namespace qrs::standard {

// A dash (above 0), a gap (below 0) or a dot; a gap may hold a text.
struct PatternElement {
    double length = 0.0;  // drawing units
    CString text;
};

struct LinetypePattern {
    CString name;
    CString comment;
    std::vector<PatternElement> elements;  // none: a continuous line

    double length() const;
    // As GetLinetypePattern of PwxTool.h spells it.
    CString content() const;
};

// The pattern in the record under the cursor. False, pattern undefined, when the record does not hold one: Name is no
// name for a linetype; Content is no list of numbers, has a text outside of a gap, begins with a gap, has no length or
// more elements than a linetype may have; Num and Length do not tell of it, or Scale is not above 0.
bool readPattern(CDBFRecordset& table, LinetypePattern& pattern);

}  // namespace qrs::standard
