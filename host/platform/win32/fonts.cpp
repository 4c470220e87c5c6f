// Installed fonts, as the system enumerates them.
#include "host/platform/fonts.h"

#include <windows.h>

namespace qrs::platform {

namespace {

class DeviceContext {
  public:
    explicit DeviceContext(HWND window) : window_(window), context_(GetDC(window)) {}
    ~DeviceContext() {
        if (context_) ReleaseDC(window_, context_);
    }
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;
    HDC get() const { return context_; }

  private:
    HWND window_;
    HDC context_;
};

int CALLBACK collect(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM target) {
    // The enumeration of families hands out the longer form of the structure.
    const auto* entry = reinterpret_cast<const ENUMLOGFONTEXW*>(font);
    auto& fonts = *reinterpret_cast<std::vector<InstalledFont>*>(target);
    fonts.push_back({font->lfFaceName, font->lfCharSet, font->lfPitchAndFamily, entry->elfScript});
    return 1;
}

}  // namespace

std::vector<InstalledFont> installedFonts(void* window) {
    std::vector<InstalledFont> fonts;
    const DeviceContext context(static_cast<HWND>(window));
    if (!context.get()) return fonts;
    LOGFONTW wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(context.get(), &wanted, collect, reinterpret_cast<LPARAM>(&fonts), 0);
    return fonts;
}

}  // namespace qrs::platform
