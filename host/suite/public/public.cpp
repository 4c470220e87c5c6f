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

namespace {

TPipeMaterialSource materialSource = nullptr;
TWCStringList materials;

}  // namespace

void SetPipeMaterialSource(TPipeMaterialSource source) {
    materialSource = source;
    materials.clear();
}

const TWCStringList& GetPipeMaterialList() {
    if (materials.empty() && materialSource != nullptr) materials = materialSource();
    return materials;
}
