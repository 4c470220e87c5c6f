// The messages the editor sends to a plug-in, and what a plug-in asks of the editor about itself.
//
//     extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
//         if (message == AcRx::kInitAppMsg) acrxUnlockApplication(packet);
//         return AcRx::kRetOK;
//     }
#pragma once

#include "adesk.h"
#include "rxdefs.h"

// A plug-in is locked until it unlocks itself: a locked one is only unloaded when the application ends. The handle is
// the packet of kInitAppMsg. False when it belongs to no loaded plug-in.
QRS_HOST_PORT bool acrxUnlockApplication(void* applicationId);
QRS_HOST_PORT bool acrxLockApplication(void* applicationId);
