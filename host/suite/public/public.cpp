// The suite's shared settings and pipe materials.
#include "qrs_public.h"

#include <climits>
#include <cmath>
#include <cwchar>

int g_nAlignTypeForVPipeDim4 = 0;

TDwgSettingDefaults& TDwgSettingDefaults::Current() {
    static TDwgSettingDefaults defaults;
    return defaults;
}

void TDwgSettingDefaults::Clear() {
    items_.clear();
}

void TDwgSettingDefaults::Set(const std::wstring& function, const std::wstring& item, const std::wstring& value) {
    items_[{function, item}] = value;
}

bool TDwgSettingDefaults::Get(const std::wstring& function, const std::wstring& item, std::wstring& value) const {
    const auto found = items_.find({function, item});
    if (found == items_.end()) return false;
    value = found->second;
    return true;
}

namespace {

// True when nothing but white space lies after the number.
bool isWholeText(const wchar_t* begin, const wchar_t* end) {
    return end != begin && end[std::wcsspn(end, L" \t\r\n")] == L'\0';
}

}  // namespace

bool TDwgSettingDefaults::GetInteger(const std::wstring& function, const std::wstring& item, int& value) const {
    std::wstring text;
    if (!Get(function, item, text)) return false;
    wchar_t* end = nullptr;
    const long long number = std::wcstoll(text.c_str(), &end, 10);
    if (!isWholeText(text.c_str(), end) || number < INT_MIN || number > INT_MAX) return false;
    value = static_cast<int>(number);
    return true;
}

bool TDwgSettingDefaults::GetDouble(const std::wstring& function, const std::wstring& item, double& value) const {
    std::wstring text;
    if (!Get(function, item, text)) return false;
    wchar_t* end = nullptr;
    const double number = std::wcstod(text.c_str(), &end);
    if (!isWholeText(text.c_str(), end) || !std::isfinite(number)) return false;
    value = number;
    return true;
}

const TWCStringList& GetPipeMaterialList() {
    static const TWCStringList materials = {
        L"镀锌钢管",   L"焊接钢管",   L"无缝钢管",   L"不锈钢管",     L"铜管",     L"衬塑钢管", L"钢塑复合管",
        L"铝塑复合管", L"PPR管",      L"PE管",       L"UPVC管",       L"HDPE管",   L"PVC-C管",  L"柔性铸铁管",
        L"球墨铸铁管", L"给水铸铁管", L"排水铸铁管", L"钢筋混凝土管", L"混凝土管", L"玻璃钢管", L"双壁波纹管"};
    return materials;
}
