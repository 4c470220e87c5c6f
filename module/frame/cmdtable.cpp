// The table of the thirty commands.
#include "frame/cmdtable.h"

#include "acutads.h"
#include "layers/layercommands.h"

namespace qrs::frame {

namespace {

// Started from the tag button of the layer control panel only.
void gpsbs() {
    acutPrintf(L"%s", commandTable[5].text);
}

}  // namespace

using namespace layers;

// The group's name is misspelled in every menu and tool bar that calls it, so it stays.
const CommandRow commandTable[kCommandCount] = {
    {L"gxsz", &command<laterCommand<1>>, 2, nullptr},
    {L"dcsz", &command<laterCommand<2>>, 4, nullptr},
    {L"drsz", &command<laterCommand<3>>, 4, L"\n选择导入设置文件的位置[读取默认位置(1)/到指定目录读取(2)]:<1>"},
    {L"SetAllPipeLayOpen", &command<setAllPipeLayOpen>, 1, nullptr},
    {L"tckz", &command<laterCommand<5>>, 2, nullptr},
    {L"gpsbs", &command<gpsbs>, 2, L"\n此命令不能单独使用，请通过给排水\"图层控制\"中的给排水标识使用！"},
    {L"CleanOvraLayTag", &command<laterLayerCommand<7>>, 2, L"\n请选择要清除建筑标识的图元[清除全部A]<退出>"},
    {L"UnLockSelLayer", &command<unLockSelLayer>, 2, L"\n请选择要解锁层上的图元(ESC退出,空格解开全部层) <全部>:"},
    {L"LockSelLayer", &command<laterLayerCommand<9>>, 2, L"\n请选择要锁定层上的图元 <退出>:"},
    {L"sfxc", &command<laterLayerCommand<10>>, 2, L"\n请选择要保留不被锁定层上的图元<退出>:"},
    {L"OpenLayer", &command<openLayer>, 2, nullptr},
    {L"OpenSelLayer", &command<laterLayerCommand<12>>, 2, L"\n请选择打开层上的图元 <退出>:"},
    {L"CloseSelLayer", &command<laterLayerCommand<13>>, 2, L"\n请选择关闭层上的图元或外部参照上的图元<退出>:"},
    {L"EraseSelLayer", &command<laterLayerCommand<14>>, 2, L"\n请选择删除层上的图元 <退出>:"},
    {L"ConvertLayer", &command<laterLayerCommand<15>>, 2, L"\n请选择要转换图层(源)上的任意图元:<退出>"},
    {L"hbtc", &command<laterLayerCommand<16>>, 2, L"\n请选择要删除图层上的任意图元:<退出>"},
    {L"gxgd", &command<laterCommand<17>>, 2, L"\n请选择需要更新的管线<全图>:"},
    {L"tcdc", &command<laterCommand<18>>, 2, nullptr},
    {L"tctq", &command<laterLayerCommand<19>>, 2, nullptr},
    {L"FrozenLayer", &command<laterLayerCommand<20>>, 2, L"\n请选择需要冻结层上的图元 <退出>:"},
    {L"UnFrozenAllLayer", &command<unFrozenAllLayer>, 2, nullptr},
    {L"FrozenViewLayer", &command<frozenViewLayer>, 2, L"\n请选择需要冻结的视口或视口图层上的任意图元 <退出>:"},
    {L"UnFrozenViewAllLayer", &command<unFrozenViewAllLayer>, 2, L"\n请选择需要解冻图层的视口<退出>:"},
    {L"tbds", &command<laterLayerCommand<24>>, 2,
     L"\n请输入平面图要变成的颜色(1-红/2-黄/3-绿/4-青/5-蓝/6-粉/7-白)[选择图层(E)/选择颜色(C)]<当前颜色值(%d)>:"},
    {L"yshf", &command<yshf>, 2, nullptr},
    {L"cztk", &command<laterCommand<26>>, 2, L"\n请选择需要重置的图块<退出>:"},
    {L"jcjk", &command<laterCommand<27>>, 2, L"\n请选择需要检查接口数的对象<退出>:"},
    {L"gxfz", &command<laterCommand<28>>, 2, nullptr},
    {L"xxyh", &command<laterCommand<29>>, 2, L"\n请选择待优化线型的对象[文字间隙%.3f(D)/文字放大%.3f倍(S)]:<退出>"},
    {L"xxyh2", &command<laterCommand<30>>, 2, nullptr},
};

void printNotAvailable(int row) {
    const CommandRow& command = commandTable[row - 1];
    // As text, not as format: the values of a prompt come with its command.
    if (command.text) acutPrintf(L"%s", command.text);
    acutPrintf(L"\n命令 %s 尚未提供。\n", command.name);
}

}  // namespace qrs::frame
