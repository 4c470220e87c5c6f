// Loading and unloading of plug-ins.
#pragma once

#include "rxdict.h"
#include "rxregsvc.h"

#define ACRX_DYNAMIC_LINKER ACRX_T("DynamicLinker")
#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))

class QRS_HOST_PORT AcRxDynamicLinker : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker);

    // The path in the inner form. False, with a message on the command line when printIt is set, when it cannot be
    // loaded.
    bool loadModule(const ACHAR* fileName, bool printIt, bool asCommand = false);
    // By file name, extension optional. False when it is not loaded or is locked.
    bool unloadModule(const ACHAR* fileName, bool asCommand = false);

    // The plug-in can serve several drawings at once, which all must here. The application handle comes with the
    // messages; false when it is none of a loaded plug-in.
    bool registerAppMDIAware(void* applicationId);
};
