// The fonts that text styles may name, gathered when first asked for.
#pragma once

#include <vector>

#include "afxstr.h"
#include "host/platform/fonts.h"

namespace qrs::standard {

// One Windows font in one script.
struct WindowsFont {
    CString face;
    CString script;
    int charset;
    int pitchAndFamily;
};

// Sorted by face, then by script. The list stays until it is enumerated again.
const std::vector<WindowsFont>& windowsFonts(bool enumerateAgain);

// Tests put a list of their own in place of the installed fonts; null brings those back. What was gathered is
// forgotten.
using FontSource = std::vector<platform::InstalledFont> (*)(void* window);
void setFontSource(FontSource source);

}  // namespace qrs::standard
