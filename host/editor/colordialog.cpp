// The colour dialog.
#include <algorithm>
#include <string>
#include <vector>

#include "aced.h"
#include "host/platform/codepage.h"
#include "host/platform/dialog.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

struct ColorName {
    Adesk::UInt16 index;
    const wchar_t* english;
    const wchar_t* chinese;

    std::wstring shown() const { return platform::language() == platform::Language::Chinese ? chinese : english; }
};
constexpr ColorName kColorNames[] = {
    {0, L"ByBlock", L"随块"}, {1, L"red", L"红"},   {2, L"yellow", L"黄"},
    {3, L"green", L"绿"},     {4, L"cyan", L"青"},  {5, L"blue", L"蓝"},
    {6, L"magenta", L"粉"},   {7, L"white", L"白"}, {256, L"ByLayer", L"随层"},
};
constexpr Adesk::UInt16 kLastIndex = 255;

const ColorName* findName(Adesk::UInt16 index) {
    const auto found = std::find_if(std::begin(kColorNames), std::end(kColorNames),
                                    [index](const ColorName& name) { return name.index == index; });
    return found != std::end(kColorNames) ? found : nullptr;
}

std::wstring colorText(const AcCmColor& color) {
    if (color.isByColor())
        return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
               std::to_wstring(color.blue());
    const ColorName* name = findName(color.colorIndex());
    return name ? name->shown() : std::to_wstring(color.colorIndex());
}

// A whole number below 256; false for any other text.
bool parseByte(const std::wstring& text, Adesk::UInt16& value) {
    const std::wstring digits(platform::trimmed(std::wstring_view(text)));
    if (digits.empty() || digits.size() > 3 || digits.find_first_not_of(L"0123456789") != std::wstring::npos)
        return false;
    value = static_cast<Adesk::UInt16>(std::stoul(digits));
    return value <= kLastIndex;
}

bool parseTrueColor(const std::wstring& text, AcCmColor& color) {
    const std::size_t first = text.find(L','), second = text.find(L',', first + 1);
    Adesk::UInt16 red = 0, green = 0, blue = 0;
    if (first == std::wstring::npos || second == std::wstring::npos || !parseByte(text.substr(0, first), red) ||
        !parseByte(text.substr(first + 1, second - first - 1), green) || !parseByte(text.substr(second + 1), blue))
        return false;
    return color.setRGB(static_cast<Adesk::UInt8>(red), static_cast<Adesk::UInt8>(green),
                        static_cast<Adesk::UInt8>(blue)) == Acad::eOk;
}

// What the user may type.
class ColorText {
  public:
    ColorText(bool allowMeta, bool allowTrueColor) : allowMeta_(allowMeta), allowTrueColor_(allowTrueColor) {}

    bool parse(const std::wstring& text, AcCmColor& color) const {
        for (const ColorName& name : kColorNames)
            if (platform::compareNoCase(text, name.english) == 0 || text == name.chinese)
                return isAllowed(name.index) && color.setColorIndex(name.index) == Acad::eOk;
        Adesk::UInt16 index = 0;
        if (parseByte(text, index)) return index > 0 && color.setColorIndex(index) == Acad::eOk;
        return allowTrueColor_ && parseTrueColor(text, color);
    }

    std::vector<std::wstring> choices() const {
        std::vector<std::wstring> names;
        for (const ColorName& name : kColorNames)
            if (isAllowed(name.index)) names.push_back(name.shown());
        return names;
    }

    std::wstring wanted() const {
        return allowTrueColor_
                   ? translated(L"A color is a number from 1 to 255, red,green,blue or one of the names listed.")
                   : translated(L"A color is a number from 1 to 255 or one of the names listed.");
    }

  private:
    bool isAllowed(Adesk::UInt16 index) const { return allowMeta_ || (index > 0 && index <= kLastIndex); }

    bool allowMeta_;
    bool allowTrueColor_;
};

}  // namespace

}  // namespace qrs::host::ed

bool acedSetColorDialogTrueColor(AcCmColor& color, Adesk::Boolean bAllowMetaColor, const AcCmColor& curLayerColor,
                                 AcCm::DialogTabs tabs) {
    using namespace qrs::host::ed;
    using namespace qrs::platform;
    const ColorText text(bAllowMetaColor != Adesk::kFalse, (tabs & AcCm::kTrueColorTab) != 0);
    AcCmColor chosen = color;
    Dialog dialog(translated(L"Select Color"));
    dialog.okCaption = translated(L"OK");
    dialog.cancelCaption = translated(L"Cancel");
    if (bAllowMetaColor) dialog.addLabel(translated(L"ByLayer is %1", colorText(curLayerColor)));
    Control& field = dialog.addCombo(translated(L"Color:"), text.choices(), colorText(color), true);
    field.refuse = [&](const std::wstring& typed) {
        return text.parse(typed, chosen) ? std::wstring() : text.wanted();
    };
    field.changed = [&] { field.text = colorText(chosen); };
    if (showDialog(dialog) != kDialogOk) return false;
    color = chosen;
    return true;
}
