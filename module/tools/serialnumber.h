// Serials as numbers of 32 bits, which end at the largest one instead of running over.
#pragma once

#include "afx.h"

namespace qrs::tools {

// The number a text begins with: white space, a sign and digits; 0 without digits. Beyond 32 bits the largest or
// smallest number.
int leadingNumber(const CString& text);

// The number after n; the largest one has none after it and stays.
int successor(int n);

CString decimalText(int number);

}  // namespace qrs::tools
