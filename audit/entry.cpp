// The plug-in that checks drawings against the current pipe-system standard.
//
//     CHECKSTANDARD    how far drawings are from the standard
//     REPAIRSTANDARD   mends what has one answer, or what a file of mappings says
//     PIPEREPORT       what pipes drawings hold, by their systems
//
// It knows the module by what that exports, and the editor by its interface. The suite's kernel opens drawings, takes
// failures and names the standard's file; files, code pages and the language are the platform's.
#include <exception>
#include <string>

#include "accmd.h"
#include "axlock.h"
#include "commands.h"
#include "host/platform/error.h"
#include "prompts.h"
#include "rxregsvc.h"

namespace {

const ACHAR* const kGroup = L"QRS_AUDIT";

// The editor cannot take exceptions: each becomes a message, and the command has failed.
template <void (*body)()>
void command() {
    try {
        const AcAxDocLock lock;
        if (lock.lockStatus() == Acad::eOk) body();
    } catch (const std::exception& exception) {
        qrs::audit::fail(qrs::platform::reasonOf(exception));
    }
}

struct Command {
    const ACHAR* name;
    void (*run)();
};

constexpr Command kCommands[] = {
    {L"CHECKSTANDARD", &command<qrs::audit::checkStandard>},
    {L"REPAIRSTANDARD", &command<qrs::audit::repairStandard>},
    {L"PIPEREPORT", &command<qrs::audit::reportPipes>},
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
