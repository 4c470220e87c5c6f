// A plug-in to be found beside the program. Its command ends the process as a crash would.
#include <csignal>

#include "accmd.h"
#include "rxregsvc.h"

namespace {

void endAtOnce() {
    std::raise(SIGKILL);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                                                  void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        acedRegCmds->addCommand(L"TEST", L"ENDATONCE", L"ENDATONCE", ACRX_CMD_MODAL, &endAtOnce);
    }
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(L"TEST");
    return AcRx::kRetOK;
}
