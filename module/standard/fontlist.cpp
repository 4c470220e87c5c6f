// The list of Windows fonts.
#include "standard/fontlist.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "host/platform/fonts.h"
#include "rxmfcapi.h"
#include "standard/text.h"

namespace qrs::standard {

namespace {

struct Cache {
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

std::vector<WindowsFont> enumerate() {
    const CView* const view = acedGetAcadDwgView();
    std::vector<WindowsFont> fonts;
    for (const platform::InstalledFont& font :
         platform::installedFonts(view != nullptr ? view->GetSafeHwnd() : nullptr))
        fonts.push_back({makeText(font.face), makeText(font.script), font.charset, font.pitchAndFamily});
    std::sort(fonts.begin(), fonts.end(), isBefore);
    return fonts;
}

}  // namespace

const std::vector<WindowsFont>& windowsFonts(bool enumerateAgain) {
    Cache& known = cache();
    if (enumerateAgain || !known.fonts) known.fonts = enumerate();
    return *known.fonts;
}

std::optional<ShxFonts>& gatheredShxFonts() {
    return cache().shxFonts;
}

void forgetFonts() {
    cache().fonts.reset();
    cache().shxFonts.reset();
}

}  // namespace qrs::standard
