// A sibling module: asks the standard about one system and prints the answers.
#include <accmd.h>
#include <acutads.h>
#include <FontTool.h>
#include <PipeNodes.h>
#include <PipeSystemTool.h>
#include <PwxTool.h>
#include <rxdict.h>
#include <rxregsvc.h>

namespace {

const ACHAR* const kGroup = L"SIBLING";

AcEdCommandStack* commands() {
    return AcEdCommandStack::cast(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS"));
}

void askStandard() {
    PipeNode system;
    system.PipeName = L"试验";
    auto* layer = new LayerNode;
    layer->LayerType = L"标注";
    layer->LayerName = L"试验标注";
    system.AddLayerNode(layer);
    const LayerNode* borrowed = system.FindLayerNode(L"标高");
    acutPrintf(L"\nstandard %s, elevation text on %s, water supply known: %d\n",
               static_cast<const ACHAR*>(PipeSystemTool::GetCurrentStandardName()),
               borrowed ? static_cast<const ACHAR*>(borrowed->LayerName) : L"-",
               PipeSystemTool::IsPipeSystemOfCurrentStandard(L"生活给水") ? 1 : 0);
}

}  // namespace

#if defined(_WIN32)
#define SIBLING_PORT __declspec(dllexport)
#else
#define SIBLING_PORT __attribute__((visibility("default")))
#endif

extern "C" SIBLING_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        commands()->addCommand(kGroup, L"ASKSTANDARD", L"ASKSTANDARD", ACRX_CMD_MODAL, askStandard);
    } else if (message == AcRx::kUnloadAppMsg) {
        commands()->removeGroup(kGroup);
    }
    return AcRx::kRetOK;
}
