// The table of the suite's options and where their values are kept.
#include "qrs_options.h"

#include <cmath>
#include <iterator>

#include "qrs_public.h"

namespace {

constexpr const wchar_t* kPipe = L"管线设置";
constexpr const wchar_t* kEquipment = L"设备设置";
constexpr const wchar_t* kOutdoor = L"室外设置";
constexpr const wchar_t* kOther = L"其它设置";

constexpr bool kWhole = false;
constexpr bool kDecimals = true;

const TPipeOption options[] = {
    {kPipe, L"管线默认管径", kWhole, 100, 1, 10000},      // nominal diameter, millimetres
    {kPipe, L"双线水管线宽", kWhole, 25, -3, 211},        // lineweight: 0.01 mm, or by layer, block, default
    {kPipe, L"单注标高随管线标高联动", kWhole, 1, 0, 1},  // 1: a level's label follows its pipe
    {kPipe, L"标注离管距离", kWhole, 2, 0, 1000},         // millimetres on paper
    {kPipe, L"扣弯样式", kWhole, 0, 0, 9},                // number of the symbol
    {kPipe, L"弯头曲率", kWhole, 150, 0, 10000},          // bend radius in percent of the diameter
    {kPipe, L"洁具数据读取", kWhole, 1, 0, 1},            // 1: fixtures bring their own flow
    {kPipe, L"立管楼号标注设置", kWhole, 0, 0, 9},        // how the building's serial is shown
    {kPipe, L"编号管径间距", kWhole, 3, 0, 1000},         // millimetres on paper
    {kPipe, L"立管标注样式", kWhole, 0, 0, 9},            // number of the label's form
    {kEquipment, L"给水圆比例", kDecimals, 1.0, 0.001, 1000},
    {kEquipment, L"喷头半径", kDecimals, 1.0, 0.001, 1000},  // millimetres on paper
    {kEquipment, L"阀门比例", kDecimals, 1.0, 0.001, 1000},
    {kEquipment, L"排水圆半径", kDecimals, 1.5, 0.001, 1000},  // millimetres on paper
    {kEquipment, L"设备支持3D", kWhole, 0, 0, 1},              // 1: equipment is drawn with its height
    {kEquipment, L"喷头间距模数", kWhole, 100, 1, 100000},     // millimetres in the model
    {kOutdoor, L"检查井直径", kDecimals, 1000.0, 1, 100000},   // millimetres in the model
    {kOutdoor, L"室外标注样式", kWhole, 0, 0, 9},              // number of the label's form
    {kOther, L"工具条状态", kWhole, 1, 0, 1},                  // 1: tool bars are shown
    {kOther, L"选择预览", kWhole, 1, 0, 1},                    // 1: what the cursor is over is highlighted
    {kOther, L"自动线型比例", kWhole, 1, 0, 1},                // 1: the linetype scale follows the drawing's scale
    {kOther, L"采用Morvel系统捕捉设置", kWhole, 0, 0, 1},      // 1: the suite sets the object snaps
    {kOther, L"转K7Morvel文字中英文打断", kWhole, 0, 0, 1},    // 1: converted texts are cut where the script changes
};

TRegKey stored() {
    return TRegKey(GetRegLocation(L"PipeOption"));
}

// False, value untouched, when there is none or it makes no sense.
bool readStored(const TPipeOption& option, double& value) {
    double number = 0.0;
    std::int32_t whole = 0;
    if (option.hasDecimals) {
        if (!stored().ReadDouble(option.name, number)) return false;
    } else {
        if (!stored().ReadInteger(option.name, whole)) return false;
        number = whole;
    }
    if (!IsPipeOptionValue(option, number)) return false;
    value = number;
    return true;
}

}  // namespace

const TPipeOption* PipeOptionAt(std::size_t index) {
    return index < std::size(options) ? &options[index] : nullptr;
}

const TPipeOption* FindPipeOption(const std::wstring& name) {
    for (const TPipeOption& option : options)
        if (name == option.name) return &option;
    return nullptr;
}

bool IsPipeOptionValue(const TPipeOption& option, double value) {
    return value >= option.least && value <= option.largest && (option.hasDecimals || std::floor(value) == value);
}

double GetPipeOption(const TPipeOption& option) {
    double value = option.defaultValue;
    if (readStored(option, value)) return value;
    double configured = 0.0;
    const bool isConfigured = TDwgSettingDefaults::Current().GetDouble(option.section, option.name, configured);
    return isConfigured && IsPipeOptionValue(option, configured) ? configured : value;
}

double GetPipeOption(const std::wstring& name) {
    const TPipeOption* option = FindPipeOption(name);
    return option ? GetPipeOption(*option) : 0.0;
}

bool SetPipeOption(const TPipeOption& option, double value) {
    if (!IsPipeOptionValue(option, value)) return false;
    return option.hasDecimals ? stored().WriteDouble(option.name, value)
                              : stored().WriteInteger(option.name, static_cast<std::int32_t>(value));
}
