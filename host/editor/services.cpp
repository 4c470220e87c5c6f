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

Plugin* pluginByName(const ACHAR* fileName) {
    Session* session = Session::current();
    return session && fileName ? session->plugins.find(fileName) : nullptr;
}

bool setLocked(void* application, bool locked) {
    Plugin* plugin = pluginByHandle(application);
    if (plugin) plugin->locked = locked;
    return plugin != nullptr;
}

bool setMdiAware(void* application, bool aware) {
    Plugin* plugin = pluginByHandle(application);
    if (plugin) plugin->mdiAware = aware;
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

bool acrxApplicationIsLocked(const ACHAR* fileName) {
    const Plugin* plugin = pluginByName(fileName);
    return plugin && plugin->locked;
}

bool AcRxDynamicLinker::registerAppMDIAware(void* applicationId) {
    recordCall("AcRxDynamicLinker::registerAppMDIAware");
    return setMdiAware(applicationId, true);
}

bool AcRxDynamicLinker::registerAppNotMDIAware(void* applicationId) {
    recordCall("AcRxDynamicLinker::registerAppNotMDIAware");
    return setMdiAware(applicationId, false);
}

bool AcRxDynamicLinker::isApplicationMDIAware(const ACHAR* fileName) const {
    const Plugin* plugin = pluginByName(fileName);
    return plugin && plugin->mdiAware;
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

void* AcRxDynamicLinker::symbolPtr(const ACHAR* fileName, const ACHAR* symbol) const {
    const Plugin* plugin = pluginByName(fileName);
    return plugin && symbol ? plugin->library->symbol(qrs::platform::toUtf8(symbol).c_str()) : nullptr;
}

bool acrxLoadModule(const ACHAR* fileName, bool printIt, bool asCommand) {
    Session* session = Session::current();
    return session && session->linker.loadModule(fileName, printIt, asCommand);
}

bool acrxUnloadModule(const ACHAR* fileName, bool asCommand) {
    Session* session = Session::current();
    return session && session->linker.unloadModule(fileName, asCommand);
}
