// The list of Windows fonts.
#include "standard/fontlist.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "rxmfcapi.h"

namespace qrs::standard {

namespace {

struct Cache {
    FontSource source = &platform::installedFonts;
    std::optional<std::vector<WindowsFont>> fonts;
    std::optional<ShxFonts> shxFonts;
};

Cache& cache() {
    static Cache only;
    return only;
}

bool isBefore(const WindowsFont& a, const WindowsFont& b) {
    return std::tie(a.face, a.script, a.charset, a.pitchAndFamily) <
           std::tie(b.face, b.script, b.charset, b.pitchAndFamily);
}

std::vector<WindowsFont> enumerate(FontSource source) {
    const CView* const view = acedGetAcadDwgView();
    std::vector<WindowsFont> fonts;
    for (const platform::InstalledFont& font : source(view != nullptr ? view->GetSafeHwnd() : nullptr))
        fonts.push_back({CString(font.face), CString(font.script), font.charset, font.pitchAndFamily});
    std::sort(fonts.begin(), fonts.end(), isBefore);
    return fonts;
}

}  // namespace

const std::vector<WindowsFont>& windowsFonts(bool enumerateAgain) {
    Cache& known = cache();
    if (enumerateAgain || !known.fonts) known.fonts = enumerate(known.source);
    return *known.fonts;
}

std::optional<ShxFonts>& gatheredShxFonts() {
    return cache().shxFonts;
}

void forgetFonts() {
    cache().fonts.reset();
    cache().shxFonts.reset();
}

void setFontSource(FontSource source) {
    cache() = {};
    if (source != nullptr) cache().source = source;
}

}  // namespace qrs::standard
