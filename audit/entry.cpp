// The plug-in that checks drawings against the current pipe-system standard.
//
//     CHECKSTANDARD   how far drawings are from the standard
//
// It knows the module by what that exports, and the editor by its interface.
#include "accmd.h"
#include "commands.h"
#include "rxregsvc.h"

namespace {

const ACHAR* const kGroup = L"QRS_AUDIT";

struct Command {
    const ACHAR* name;
    void (*run)();
};

constexpr Command kCommands[] = {
    {L"CHECKSTANDARD", &qrs::audit::checkStandard},
};

}  // namespace

#if defined(_WIN32)
#define QRS_AUDIT_PORT __declspec(dllexport)
#else
#define QRS_AUDIT_PORT __attribute__((visibility("default")))
#endif

// The editor calls it when the plug-in is loaded, and again before it is unloaded.
extern "C" QRS_AUDIT_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application) {
    AcEdCommandStack* commands = acedRegCmds;
    if (commands == nullptr) return AcRx::kRetError;
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        for (const Command& command : kCommands)
            commands->addCommand(kGroup, command.name, command.name, ACRX_CMD_MODAL, command.run);
    } else if (message == AcRx::kUnloadAppMsg) {
        commands->removeGroup(kGroup);
    }
    return AcRx::kRetOK;
}
