// FontTool: the fonts that the text styles of the standard may name.
//
//     std::vector<CString> shapeFonts, bigFonts;
//     FontTool::GetShxFont(shapeFonts, bigFonts, false);
//     int charset = 0, pitchAndFamily = 0;
//     if (FontTool::IsWinFont(L"宋体", L"CHINESE_GB2312", &charset, &pitchAndFamily, false)) ...
//
// Lists handed out are replaced. They are gathered when first asked for and kept until the module is unloaded; the last
// argument of a function has them gathered anew. No standard is needed. "Sorted" means by code unit.
#pragma once

#include <vector>

#include "afx.h"
#include "pipeport.h"

namespace FontTool {

// The SHX shape fonts and big fonts of the support search path: file names in upper case, each once, in the order of
// the folders. Files that cannot be read or are no fonts of these kinds are passed over.
QRS_PIPE_PORT void GetShxFont(std::vector<CString>& shapeFonts, std::vector<CString>& bigFonts, bool rescan);

// The faces of all Windows fonts that write the script (compared without regard to case), sorted.
QRS_PIPE_PORT void GetWinFont(const CString& script, std::vector<CString>& faces, bool enumerateAgain);

// The scripts that a face (compared without regard to case) writes, or that any Windows font writes: in upper case,
// each once, sorted.
QRS_PIPE_PORT void GetFontEncoded(const CString& face, std::vector<CString>& scripts, bool enumerateAgain);
QRS_PIPE_PORT void GetFontEncoded(std::vector<CString>& scripts, bool enumerateAgain);

// Whether there is a Windows font of exactly that face which writes the script (compared without regard to case).
// *charset and *pitchAndFamily (either may be null) become its numbers in the Windows interface: 134 for Chinese in
// GB2312; both are left as they are on a miss.
QRS_PIPE_PORT bool IsWinFont(const CString& face, const CString& script, int* charset, int* pitchAndFamily,
                             bool enumerateAgain);

}  // namespace FontTool
