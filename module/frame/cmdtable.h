// The table of the thirty commands.
#pragma once

#include "accmd.h"
#include "frame/entry.h"
#include "frame/guard.h"
#include "rxmfcapi.h"

namespace qrs::frame {

struct CommandRow {
    const wchar_t* name;  // global and local name
    AcRxFunctionPtr handler;
    Adesk::Int32 flags;
    const wchar_t* text;  // what a command without a routine of its own says first; null: nothing
};

constexpr int kCommandCount = 30;
// In the order of registration.
extern const CommandRow commandTable[kCommandCount];

// The group the commands are registered in.
constexpr const wchar_t* kCommandGroup = L"QRS_PIPESTSTEM";

// The handler of a command: its body among the module's own resources.
template <AcRxFunctionPtr body>
void command() {
    guarded([] {
        const CAcModuleResourceOverride resources(moduleInstance());
        body();
    });
}

// For a command that is still to come: prints its text and that it is not available. row counts from 1.
void printNotAvailable(int row);

template <int row>
void laterCommand() {
    static_assert(row >= 1 && row <= kCommandCount, "no such row");
    printNotAvailable(row);
}

}  // namespace qrs::frame
