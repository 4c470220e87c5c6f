// What a plug-in asks of the editor about itself, and the dynamic linker.
#include <string>

#include "host/editor/plugins.h"
#include "host/editor/session.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "rxdlinkr.h"
#include "rxregsvc.h"

ACRX_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject)

using qrs::host::ed::Plugin;
using qrs::host::ed::Session;
using qrs::platform::recordCall;

namespace {

Plugin* pluginByHandle(const void* application) {
    Session* session = Session::current();
    return session && application ? session->plugins.byHandle(application) : nullptr;
}

bool setLocked(void* application, bool locked) {
    Plugin* plugin = pluginByHandle(application);
    if (plugin) plugin->locked = locked;
    return plugin != nullptr;
}

}  // namespace

bool acrxUnlockApplication(void* applicationId) {
    recordCall("acrxUnlockApplication");
    return setLocked(applicationId, false);
}

bool acrxLockApplication(void* applicationId) {
    recordCall("acrxLockApplication");
    return setLocked(applicationId, true);
}

bool AcRxDynamicLinker::registerAppMDIAware(void* applicationId) {
    recordCall("AcRxDynamicLinker::registerAppMDIAware");
    return pluginByHandle(applicationId) != nullptr;
}

bool AcRxDynamicLinker::loadModule(const ACHAR* fileName, bool printIt, bool) {
    Session* session = Session::current();
    if (!session || !fileName) return false;
    qrs::platform::Error error;
    if (session->plugins.load(qrs::platform::nativePath(fileName), error)) return true;
    if (printIt) session->output.print(L"\n" + qrs::platform::fromUtf8(error.message) + L"\n");
    return false;
}

bool AcRxDynamicLinker::unloadModule(const ACHAR* fileName, bool) {
    Session* session = Session::current();
    qrs::platform::Error error;
    return session && fileName && session->plugins.unload(fileName, error);
}
