// Code pages of the system.
#include <windows.h>

#include "host/platform/inside/codepagetable.h"

namespace qrs::platform {

namespace {

class WindowsCodePage : public SystemCodePage {
  public:
    explicit WindowsCodePage(unsigned codePage) : codePage_(codePage) {}

    std::optional<char32_t> decode(std::string_view character) override {
        wchar_t out[4];
        const int count = MultiByteToWideChar(codePage_, MB_ERR_INVALID_CHARS, character.data(),
                                              static_cast<int>(character.size()), out, 4);
        if (count != 1) return std::nullopt;
        return static_cast<char32_t>(out[0]);
    }

    std::uint16_t encode(char32_t codePoint) override {
        const auto unit = static_cast<wchar_t>(codePoint);
        unsigned char out[4];
        BOOL substituted = FALSE;
        // GB18030 has bytes for everything, and the system takes no other question there.
        const bool isWhole = codePage_ == kGb18030;
        const int count =
            WideCharToMultiByte(codePage_, isWhole ? 0 : WC_NO_BEST_FIT_CHARS, &unit, 1, reinterpret_cast<char*>(out),
                                4, nullptr, isWhole ? nullptr : &substituted);
        if (substituted) return 0;
        if (count == 1) return out[0];
        return count == 2 ? static_cast<std::uint16_t>(out[0] << 8 | out[1]) : std::uint16_t{0};
    }

  private:
    unsigned codePage_;
};

}  // namespace

std::optional<unsigned> systemAnsiCodePage() {
    return GetACP();
}

std::unique_ptr<SystemCodePage> SystemCodePage::open(unsigned codePage) {
    CPINFO info;
    // The numbers below 10 are aliases of other pages; but for GB18030 larger characters than two bytes have no tables.
    if (codePage < 10 || !GetCPInfo(codePage, &info) || (info.MaxCharSize > 2 && codePage != kGb18030)) return nullptr;
    return std::make_unique<WindowsCodePage>(codePage);
}

}  // namespace qrs::platform
