// The messages the editor sends to a plug-in, and what a plug-in asks of the editor about itself.
//
//     extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
//         if (message == AcRx::kInitAppMsg) acrxUnlockApplication(packet);
//         return AcRx::kRetOK;
//     }
#pragma once

#include "adesk.h"

struct AcRx {
    enum AppMsgCode {
        kNullMsg = 0,
        kInitAppMsg = 1,
        kUnloadAppMsg = 2,
        kLoadDwgMsg = 3,
        kUnloadDwgMsg = 4,
        kInvkSubrMsg = 5,
        kCfgMsg = 6,
        kEndMsg = 7,
        kQuitMsg = 8,
        kSaveMsg = 9,
        kDependencyMsg = 10,
        kNoDependencyMsg = 11,
        kOleUnloadAppMsg = 12,
        kPreQuitMsg = 13,
        kInitDialogMsg = 14,
        kEndDialogMsg = 15,
    };

    enum AppRetCode { kRetOK = 0, kRetError = 3 };
};

// A plug-in is locked until it unlocks itself: a locked one is only unloaded when the application ends. The handle is
// the packet of kInitAppMsg. False when it belongs to no loaded plug-in.
QRS_HOST_PORT bool acrxUnlockApplication(void* applicationId);
QRS_HOST_PORT bool acrxLockApplication(void* applicationId);
