// A plug-in that does nothing, to be found beside the program.
#include "rxregsvc.h"

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                                                  void* application) {
    if (message == AcRx::kInitAppMsg) acrxUnlockApplication(application);
    return AcRx::kRetOK;
}
