// Which installed fonts stand in for the font files that text styles name.
#pragma once

#include <string>

namespace qrs::host::plot {

struct FontChoice {
    std::string family;      // UTF-8, for the system's font list, which finds the nearest one
    bool isStroked = false;  // of the editor's own kind: Chinese characters are as high as Latin capitals
    bool isBold = false;
    bool isItalic = false;
};

// file: "simsun.ttf", "romans.shx"; bigFont: "gbcbig.shx" or empty; family: as the style's extended data tells it.
FontChoice chooseFont(const std::wstring& file, const std::wstring& bigFont, const std::wstring& family);

}  // namespace qrs::host::plot
