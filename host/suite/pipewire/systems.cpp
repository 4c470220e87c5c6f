// Names, types and object colours of the pipe library.
#include <map>

#include "host/platform/callrecord.h"
#include "qrs_pipewire.h"

namespace {

// Type codes stand in drawings, so a name never changes its place; new ones go to the end.
const wchar_t* const builtInSystems[] = {
    L"给水", L"热水", L"热水回水", L"中水", L"直饮水", L"循环给水", L"循环回水", L"污水", L"废水",
    L"雨水", L"通气", L"凝结水",   L"消防", L"喷淋",   L"水炮",     L"雨淋",     L"水幕", L"气体灭火",
};
constexpr int builtInCount = static_cast<int>(sizeof builtInSystems / sizeof *builtInSystems);

std::map<std::wstring, std::wstring>& systemNames() {
    static std::map<std::wstring, std::wstring> names;
    return names;
}

struct ColorRow {
    const wchar_t* name;
    Adesk::UInt16 index;
};

const ColorRow defaultColors[] = {
    {L"管线", 3},   {L"立管", 3},     {L"扣弯", 3},     {L"阀门", 3},     {L"附件", 3},     {L"喷头", 1},
    {L"消火栓", 1}, {L"设备", 4},     {L"洁具", 4},     {L"水泵", 4},     {L"井", 6},       {L"化粪池", 6},
    {L"文字", 7},   {L"管径标注", 7}, {L"立管标注", 7}, {L"标高标注", 7}, {L"尺寸标注", 3}, {L"标注线", 3},
};

}  // namespace

void SetPipeSystemName(const std::wstring& oldName, const std::wstring& currentName) {
    qrs::platform::recordCall("SetPipeSystemName", oldName, currentName);
    systemNames()[oldName] = currentName;
}

std::wstring CurrentPipeSystemName(const std::wstring& oldName) {
    const auto found = systemNames().find(oldName);
    return found == systemNames().end() ? oldName : found->second;
}

void ClearPipeSystemNames() {
    systemNames().clear();
}

int GetSysType(const std::wstring& systemName) {
    for (int i = 0; i < builtInCount; ++i)
        if (systemName == builtInSystems[i] || systemName == CurrentPipeSystemName(builtInSystems[i])) return i + 1;
    return kCustomSysType;
}

std::wstring GetSystypeName(int sysType) {
    if (sysType < 1 || sysType > builtInCount) return L"未知系统";
    return CurrentPipeSystemName(builtInSystems[sysType - 1]);
}

std::vector<TObjectColor>& ObjectUtility::AllObjectColors() {
    static std::vector<TObjectColor> colors;
    if (colors.empty()) {
        for (const ColorRow& row : defaultColors) {
            TObjectColor color{row.name, AcCmColor()};
            color.color.setColorIndex(row.index);
            colors.push_back(color);
        }
    }
    return colors;
}

void ObjectUtility::ResetObjectColors() {
    qrs::platform::recordCall("ObjectUtility::ResetObjectColors");
    AllObjectColors().clear();
    AllObjectColors();
}
