// The fonts that text styles may name, gathered when first asked for.
#pragma once

#include <optional>
#include <vector>

#include "afx.h"

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

struct ShxFonts {
    std::vector<CString> shape;
    std::vector<CString> big;
};

// Those gathered before; empty when none were.
std::optional<ShxFonts>& gatheredShxFonts();

// Forgets what was gathered.
void forgetFonts();

}  // namespace qrs::standard
