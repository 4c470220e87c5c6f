// The fonts installed on the machine, one entry per family and script, in the numbers of the Windows interface.
#pragma once

#include <string>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

struct InstalledFont {
    std::wstring face;
    int charset;          // 134 for Chinese in GB2312, 0 for western scripts
    int pitchAndFamily;   // low bits: 1 fixed, 2 variable pitch; from bit 4 on: 1 roman, 2 swiss, 3 modern, ...
    std::wstring script;  // "CHINESE_GB2312"
};

// In no particular order. window: whose device the fonts are for (null: the screen); it counts under Windows only. The
// machine is looked through at every call, so the caller keeps the list. Empty when the system tells of none.
QRS_HOST_PORT std::vector<InstalledFont> installedFonts(void* window);

}  // namespace qrs::platform
