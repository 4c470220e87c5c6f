// The table of the thirty commands.
#pragma once

#include "accmd.h"
#include "axlock.h"
#include "frame/entry.h"
#include "tools/guard.h"

namespace qrs::frame {

struct CommandRow {
    const wchar_t* name;  // global and local name
    AcRxFunctionPtr handler;
    Adesk::Int32 flags;
};

constexpr int kCommandCount = 30;
// In the order of registration.
extern const CommandRow commandTable[kCommandCount];

// The group the commands are registered in, misspelled as it is in every menu and tool bar that calls it.
constexpr const wchar_t* kCommandGroup = L"QRS_PIPESTSTEM";

// The handler of a command: its body among the module's own resources. The drawing stays locked while it runs.
template <AcRxFunctionPtr body>
void command() {
    tools::guarded([] {
        const ModuleResources resources;
        const AcAxDocLock lock;
        if (lock.lockStatus() == Acad::eOk) body();
    });
}

}  // namespace qrs::frame
