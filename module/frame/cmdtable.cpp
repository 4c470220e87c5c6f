// The table of the thirty commands.
#include "frame/cmdtable.h"

#include "acutads.h"
#include "dialogs/exportsetting.h"
#include "dialogs/importsetting.h"
#include "dialogs/pipesettingdlg.h"
#include "layers/layercommands.h"
#include "panel/layercontrolbar.h"
#include "tools/blockreset.h"
#include "tools/interfacecount.h"
#include "tools/layertag.h"
#include "tools/linetypeoptimize.h"
#include "tools/pipeupdate.h"

namespace qrs::frame {

namespace {

// Started from the tag button of the layer control panel only.
void gpsbs() {
    acutPrintf(L"\n此命令不能单独使用，请通过给排水\"图层控制\"中的给排水标识使用！");
}

}  // namespace

using namespace layers;

const CommandRow commandTable[kCommandCount] = {
    {L"gxsz", &command<dialogs::gxsz>, 2},
    {L"dcsz", &command<dialogs::dcsz>, 4},
    {L"drsz", &command<dialogs::drsz>, 4},
    {L"SetAllPipeLayOpen", &command<layerCommand<&CLayerToolBar::SetAllPipeLayOpen>>, 1},
    {L"tckz", &command<CLayerControlBar::Toggle>, 2},
    {L"gpsbs", &command<gpsbs>, 2},
    {L"CleanOvraLayTag", &command<tools::cleanArchitectureTags>, 2},
    {L"UnLockSelLayer", &command<layerCommand<&CLayerToolBar::UnLockSelLayer>>, 2},
    {L"LockSelLayer", &command<layerCommand<&CLayerToolBar::LockSelLayer>>, 2},
    {L"sfxc", &command<layerCommand<&CLayerToolBar::LockOtherLayers>>, 2},
    {L"OpenLayer", &command<layerCommand<&CLayerToolBar::OpenLayer>>, 2},
    {L"OpenSelLayer", &command<layerCommand<&CLayerToolBar::OpenSelLayer>>, 2},
    {L"CloseSelLayer", &command<layerCommand<&CLayerToolBar::CloseSelLayer>>, 2},
    {L"EraseSelLayer", &command<layerCommand<&CLayerToolBar::EraseSelLayer>>, 2},
    {L"ConvertLayer", &command<layerCommand<&CLayerToolBar::ConvertLayer>>, 2},
    {L"hbtc", &command<layerCommand<&CLayerToolBar::MergeLayer>>, 2},
    {L"gxgd", &command<tools::updatePipes>, 2},
    {L"tcdc", &command<layerCommand<&CLayerToolBar::ExportLayer>>, 2},
    {L"tctq", &command<layerCommand<&CLayerToolBar::PickUpLayer>>, 2},
    {L"FrozenLayer", &command<layerCommand<&CLayerToolBar::FrozenLayer>>, 2},
    {L"UnFrozenAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenAllLayer>>, 2},
    {L"FrozenViewLayer", &command<layerCommand<&CLayerToolBar::FrozenViewLayer>>, 2},
    {L"UnFrozenViewAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenViewAllLayer>>, 2},
    {L"tbds", &command<layerCommand<&CLayerToolBar::SetOneColor>>, 2},
    {L"yshf", &command<layerCommand<&CLayerToolBar::RestoreColor>>, 2},
    {L"cztk", &command<tools::resetBlock>, 2},
    {L"jcjk", &command<tools::countInterfaces>, 2},
    {L"gxfz", &command<layerCommand<&CLayerToolBar::CollectBimLayer>>, 2},
    {L"xxyh", &command<tools::optimizeLinetypes>, 2},
    {L"xxyh2", &command<tools::optimizeLinetypesByDialog>, 2},
};

}  // namespace qrs::frame
