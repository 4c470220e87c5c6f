// Points as they are typed.
#pragma once

#include <string>

namespace qrs::host::ed {

// "x,y" or "x,y,z" in drawing units; "@x,y" counts from base (null: the origin). False, nothing written, for other
// texts.
bool parsePoint(const std::wstring& text, const double* base, double* point);
// A finite decimal number that takes the whole text.
bool parseReal(const std::wstring& text, double& value);
// A whole number of 32 bits that takes the whole text.
bool parseInteger(const std::wstring& text, int& value);

}  // namespace qrs::host::ed
