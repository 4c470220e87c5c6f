// FontTool: the fonts that the text styles of the standard may name.
//
//     std::vector<CString> shapeFonts, bigFonts;
//     FontTool::GetShxFont(shapeFonts, bigFonts, false);
#pragma once

#include <vector>

#include "afxstr.h"
#include "pipeport.h"

namespace FontTool {

// The SHX shape fonts and big fonts of the support search path: file names in upper case, each once, in the order of
// the folders. Both lists are replaced. The folders are looked through on the first call and when rescan is true.
QRS_PIPE_PORT void GetShxFont(std::vector<CString>& shapeFonts, std::vector<CString>& bigFonts, bool rescan);

}  // namespace FontTool
