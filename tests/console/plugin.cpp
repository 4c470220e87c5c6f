// A plug-in to be found beside the program. Its command ends the process as a crash would; where TEST_FAILING_START is
// set, it fails in its start.
#include <csignal>
#include <cstdlib>

#include "accmd.h"
#include "qrs_kernal.h"
#include "rxregsvc.h"

namespace {

void endAtOnce() {
#if defined(_WIN32)
    std::_Exit(99);  // no signal ends a program there
#else
    std::raise(SIGKILL);
#endif
}

}  // namespace

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                                                  void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        if (std::getenv("TEST_FAILING_START") != nullptr) QrsExport::FailCommand(L"the start failed");
        acedRegCmds->addCommand(L"TEST", L"ENDATONCE", L"ENDATONCE", ACRX_CMD_MODAL, &endAtOnce);
    }
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(L"TEST");
    return AcRx::kRetOK;
}
