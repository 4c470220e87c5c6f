// The library entry and the message entry of the module.
#include "frame/entry.h"

#include "afxdllx.h"
#include "frame/startup.h"
#include "host/platform/libraryentry.h"
#include "pipeport.h"
#include "qrs_kernal.h"
#include "rxdefs.h"
#include "rxdlinkr.h"
#include "rxregsvc.h"
#include "tools/guard.h"

namespace {

HINSTANCE instanceHandle = nullptr;
AFX_EXTENSION_MODULE extension = {FALSE, nullptr, nullptr};

void registerMdiAware(void* application) {
    AcRxDictionary* registry = acrxSysRegistry();
    AcRxDynamicLinker* linker = registry ? AcRxDynamicLinker::cast(registry->at(ACRX_DYNAMIC_LINKER)) : nullptr;
    if (linker) linker->registerAppMDIAware(application);
}

void handle(AcRx::AppMsgCode message, void* application) {
    switch (message) {
        case AcRx::kInitAppMsg:
            acrxUnlockApplication(application);
            registerMdiAware(application);
            qrs::frame::startUp();
            break;
        case AcRx::kUnloadAppMsg:
            qrs::frame::tearDown();
            break;
        case AcRx::kLoadDwgMsg:
            qrs::frame::drawingLoaded();
            break;
        case AcRx::kUnloadDwgMsg:
            qrs::frame::drawingUnloads();
            break;
        default:
            break;
    }
}

void attach(HINSTANCE instance) {
    instanceHandle = instance;
    if (AfxInitExtensionModule(extension, instance)) new CDynLinkLibrary(extension);
    InitAol(L"_QRS");
    QrsExport::InitGeLib(true);
}

}  // namespace

HINSTANCE qrs::frame::moduleInstance() {
    return instanceHandle;
}

// acrxEntryPoint: every message is answered with kRetOK.
extern "C" QRS_PIPE_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application) {
    qrs::tools::guarded([&] { handle(message, application); });
    return AcRx::kRetOK;
}

extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) return qrs::tools::guarded([&] { attach(instance); }) ? 1 : 0;
    if (reason == DLL_PROCESS_DETACH && extension.bInitialized) {
        AfxTermExtensionModule(extension);
        extension.bInitialized = FALSE;
    }
    return 1;
}

QRS_LIBRARY_ENTRY(DllMain)
