// A plug-in for tests: registers a command and tells the host about each message by printing it.
#include <stdexcept>
#include <utility>

#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "rxdlinkr.h"
#include "rxmfcapi.h"

#if defined(_WIN32)
#define PLUGIN_PORT __declspec(dllexport)
#else
#define PLUGIN_PORT __attribute__((visibility("default")))
#endif

namespace {

void* self = nullptr;
// Tries to unload the plug-in from inside its own reactor.
class Listener : public AcEditorReactor {
    void commandEnded(const ACHAR*) override {
        if (acrxDynamicLinker->unloadModule(L"editor_test_plugin")) acutPrintf(L"\nreactor unloaded");
    }
};
Listener listener;
bool listens = false;

void work() {
    acutPrintf(L"\nplugin works");
}

void unloadSelf() {
    acutPrintf(acrxDynamicLinker->unloadModule(L"editor_test_plugin") ? L"\nunloaded" : L"\nrefused");
}

void lockSelf() {
    acrxLockApplication(self);
}

void forget() {
    // A careless plug-in leaves all of this behind.
    acedRegCmds->addCommand(L"CARELESS", L"PLUGINLEFT", L"PLUGINLEFT", ACRX_CMD_MODAL, &work);
    acedEditor->addReactor(&listener);
    listens = true;
    acedRegisterFilterWinMsg([](MSG*) -> BOOL { return FALSE; });
}

void tell(const wchar_t* message) {
    acutPrintf(L"\n%s %s\n", message, curDoc() ? curDoc()->docTitle() : L"-");
}

void start(void* packet) {
    self = packet;
    acrxUnlockApplication(packet);
    acrxDynamicLinker->registerAppMDIAware(packet);
    acedRegCmds->addCommand(L"PLUGIN", L"PLUGINWORK", L"PLUGINWORK", ACRX_CMD_MODAL, &work);
    acedRegCmds->addCommand(L"PLUGIN", L"PLUGINGOES", L"PLUGINGOES", ACRX_CMD_MODAL, &unloadSelf);
    acedRegCmds->addCommand(L"PLUGIN", L"PLUGINLOCK", L"PLUGINLOCK", ACRX_CMD_MODAL, &lockSelf);
    acedRegCmds->addCommand(L"PLUGIN", L"PLUGINFORGETS", L"PLUGINFORGETS", ACRX_CMD_MODAL, &forget);
    tell(L"init");
}

}  // namespace

extern "C" PLUGIN_PORT int pluginAnswer() {
    return 42;
}

extern "C" PLUGIN_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    switch (message) {
        case AcRx::kInitAppMsg:
            start(packet);
            break;
        case AcRx::kUnloadAppMsg:
            tell(L"unload");
            acedRegCmds->removeGroup(L"PLUGIN");
            if (!std::exchange(listens, false)) break;
            throw std::runtime_error("lost its papers");
        case AcRx::kLoadDwgMsg:
            tell(L"load");
            break;
        case AcRx::kUnloadDwgMsg:
            tell(L"close");
            break;
        default:
            break;
    }
    return AcRx::kRetOK;
}
