// One row a command: its names, its flags, and what it runs.
#include "frame/cmdtable.h"

#include "dialogs/exportsetting.h"
#include "dialogs/importsetting.h"
#include "dialogs/pipesettingdlg.h"
#include "layers/layercommands.h"
#include "panel/layercontrolbar.h"
#include "qrs_kernal.h"
#include "tools/blockreset.h"
#include "tools/interfacecount.h"
#include "tools/layertag.h"
#include "tools/linetypeoptimize.h"
#include "tools/pipeupdate.h"

namespace qrs::frame {

namespace {

// Started from the tag button of the layer control panel only.
void gpsbs() {
    if (CLayerControlBar::RunTagging()) return;
    QrsExport::PrintRefusal(L"\n此命令不能单独使用，请通过给排水\"图层控制\"中的给排水标识使用！");
}

}  // namespace

using namespace layers;

const CommandRow commandTable[kCommandCount] = {
    {L"gxsz", &command<dialogs::gxsz>, ACRX_CMD_USEPICKSET},
    {L"dcsz", &command<dialogs::dcsz>, ACRX_CMD_REDRAW},
    {L"drsz", &command<dialogs::drsz>, ACRX_CMD_REDRAW},
    {L"SetAllPipeLayOpen", &command<layerCommand<&CLayerToolBar::SetAllPipeLayOpen>>, ACRX_CMD_TRANSPARENT},
    {L"tckz", &command<CLayerControlBar::Toggle>, ACRX_CMD_USEPICKSET},
    {L"gpsbs", &command<gpsbs>, ACRX_CMD_USEPICKSET},
    {L"CleanOvraLayTag", &command<tools::cleanArchitectureTags>, ACRX_CMD_USEPICKSET},
    {L"UnLockSelLayer", &command<layerCommand<&CLayerToolBar::UnLockSelLayer>>, ACRX_CMD_USEPICKSET},
    {L"LockSelLayer", &command<layerCommand<&CLayerToolBar::LockSelLayer>>, ACRX_CMD_USEPICKSET},
    {L"sfxc", &command<layerCommand<&CLayerToolBar::LockOtherLayers>>, ACRX_CMD_USEPICKSET},
    {L"OpenLayer", &command<layerCommand<&CLayerToolBar::OpenLayer>>, ACRX_CMD_USEPICKSET},
    {L"OpenSelLayer", &command<layerCommand<&CLayerToolBar::OpenSelLayer>>, ACRX_CMD_USEPICKSET},
    {L"CloseSelLayer", &command<layerCommand<&CLayerToolBar::CloseSelLayer>>, ACRX_CMD_USEPICKSET},
    {L"EraseSelLayer", &command<layerCommand<&CLayerToolBar::EraseSelLayer>>, ACRX_CMD_USEPICKSET},
    {L"ConvertLayer", &command<layerCommand<&CLayerToolBar::ConvertLayer>>, ACRX_CMD_USEPICKSET},
    {L"hbtc", &command<layerCommand<&CLayerToolBar::MergeLayer>>, ACRX_CMD_USEPICKSET},
    {L"gxgd", &command<tools::updatePipes>, ACRX_CMD_USEPICKSET},
    {L"tcdc", &command<layerCommand<&CLayerToolBar::ExportLayer>>, ACRX_CMD_USEPICKSET},
    {L"tctq", &command<layerCommand<&CLayerToolBar::PickUpLayer>>, ACRX_CMD_USEPICKSET},
    {L"FrozenLayer", &command<layerCommand<&CLayerToolBar::FrozenLayer>>, ACRX_CMD_USEPICKSET},
    {L"UnFrozenAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenAllLayer>>, ACRX_CMD_USEPICKSET},
    {L"FrozenViewLayer", &command<layerCommand<&CLayerToolBar::FrozenViewLayer>>, ACRX_CMD_USEPICKSET},
    {L"UnFrozenViewAllLayer", &command<layerCommand<&CLayerToolBar::UnFrozenViewAllLayer>>, ACRX_CMD_USEPICKSET},
    {L"tbds", &command<layerCommand<&CLayerToolBar::SetOneColor>>, ACRX_CMD_USEPICKSET},
    {L"yshf", &command<layerCommand<&CLayerToolBar::RestoreColor>>, ACRX_CMD_USEPICKSET},
    {L"cztk", &command<tools::resetBlock>, ACRX_CMD_USEPICKSET},
    {L"jcjk", &command<tools::countInterfaces>, ACRX_CMD_USEPICKSET},
    {L"gxfz", &command<layerCommand<&CLayerToolBar::CollectBimLayer>>, ACRX_CMD_USEPICKSET},
    {L"xxyh", &command<tools::optimizeLinetypes>, ACRX_CMD_USEPICKSET},
    {L"xxyh2", &command<tools::optimizeLinetypesByDialog>, ACRX_CMD_USEPICKSET},
};

}  // namespace qrs::frame
