// The table of the thirty commands.
#include "frame/cmdtable.h"

#include "acutads.h"
#include "dialogs/exportsetting.h"
#include "dialogs/importsetting.h"
#include "dialogs/layercontrolbar.h"
#include "dialogs/pipesettingdlg.h"
#include "layers/layercommands.h"
#include "tools/blockreset.h"
#include "tools/interfacecount.h"
#include "tools/layertag.h"
#include "tools/linetypeoptimize.h"
#include "tools/pipeupdate.h"

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
    {L"gxsz", &command<dialogs::gxsz>, 2, nullptr},
    {L"dcsz", &command<dialogs::dcsz>, 4, nullptr},
    {L"drsz", &command<dialogs::drsz>, 4, nullptr},
    {L"SetAllPipeLayOpen", &command<layerCommand<&CLayerToolBar::SetAllPipeLayOpen>>, 1, nullptr},
    {L"tckz", &command<dialogs::tckz>, 2, nullptr},
    {L"gpsbs", &command<gpsbs>, 2, L"\n此命令不能单独使用，请通过给排水\"图层控制\"中的给排水标识使用！"},
    {L"CleanOvraLayTag", &command<tools::cleanArchitectureTags>, 2, nullptr},
    {L"UnLockSelLayer", &command<layerCommand<&CLayerToolBar::UnLockSelLayer>>, 2, nullptr},
    {L"LockSelLayer", &command<layerCommand<&CLayerToolBar::LockSelLayer>>, 2, nullptr},
    {L"sfxc", &command<layerCommand<&CLayerToolBar::LockOtherLayers>>, 2, nullptr},
    {L"OpenLayer", &command<layerCommand<&CLayerToolBar::OpenLayer>>, 2, nullptr},
    {L"OpenSelLayer", &command<layerCommand<&CLayerToolBar::OpenSelLayer>>, 2, nullptr},
    {L"CloseSelLayer", &command<layerCommand<&CLayerToolBar::CloseSelLayer>>, 2, nullptr},
    {L"EraseSelLayer", &command<layerCommand<&CLayerToolBar::EraseSelLayer>>, 2, nullptr},
    {L"ConvertLayer", &command<layerCommand<&CLayerToolBar::ConvertLayer>>, 2, nullptr},
    {L"hbtc", &command<layerCommand<&CLayerToolBar::MergeLayer>>, 2, nullptr},
    {L"gxgd", &command<tools::updatePipes>, 2, nullptr},
    {L"tcdc", &command<layerCommand<&CLayerToolBar::ExportLayer>>, 2, nullptr},
    {L"tctq", &command<layerCommand<&CLayerToolBar::PickUpLayer>>, 2, nullptr},
    {L"FrozenLayer", &command<layerCommand<&CLayerToolBar::FrozenLayer>>, 2, nullptr},
    {L"UnFrozenAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenAllLayer>>, 2, nullptr},
    {L"FrozenViewLayer", &command<layerCommand<&CLayerToolBar::FrozenViewLayer>>, 2, nullptr},
    {L"UnFrozenViewAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenViewAllLayer>>, 2, nullptr},
    {L"tbds", &command<layerCommand<&CLayerToolBar::SetOneColor>>, 2, nullptr},
    {L"yshf", &command<layerCommand<&CLayerToolBar::RestoreColor>>, 2, nullptr},
    {L"cztk", &command<tools::resetBlock>, 2, nullptr},
    {L"jcjk", &command<tools::countInterfaces>, 2, nullptr},
    {L"gxfz", &command<layerCommand<&CLayerToolBar::CollectBimLayer>>, 2, nullptr},
    {L"xxyh", &command<tools::optimizeLinetypes>, 2, nullptr},
    {L"xxyh2", &command<tools::optimizeLinetypesByDialog>, 2, nullptr},
};

void printNotAvailable(int row) {
    const CommandRow& command = commandTable[row - 1];
    // As text, not as format: the values of a prompt come with its command.
    if (command.text) acutPrintf(L"%s", command.text);
    acutPrintf(L"\n命令 %s 尚未提供。\n", command.name);
}

}  // namespace qrs::frame
