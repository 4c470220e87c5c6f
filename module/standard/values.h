// The text forms of values in a standard file. None depends on the locale of the process.
#pragma once

#include "adesk.h"
#include "afx.h"
#include "dbcolor.h"

namespace qrs::standard {

// With exactly two decimals, rounded as printf rounds.
CString formatReal(double value);
// The leading number of the text; 0 when it begins with none.
double parseReal(const CString& text);

CString formatInteger(Adesk::Int32 value);
// The leading integer of the text, cut to 32 bits; 0 when it begins with none.
Adesk::Int32 parseInteger(const CString& text);

// An index ("1" to "255"), "256" by layer, "0" by block, "red,green,blue"; any other method is the empty text.
CString formatColor(const AcCmColor& color);
// The inverse. The empty text is index 0; a text that is neither an index below 257 nor has a comma gives the default
// colour of the editor.
AcCmColor parseColor(const CString& text);

// A lineweight code as "默认", "随层", "随块" or its width in millimetres with two decimals. An unknown code is "默认".
CString formatLineWeight(Adesk::Int32 code);
// The inverse; any other text is the default code -3.
Adesk::Int32 parseLineWeight(const CString& text);

}  // namespace qrs::standard
