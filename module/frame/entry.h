// The module's place in the process.
#pragma once

#include "afxwin.h"

namespace qrs::frame {

// The handle of the module's library, whose resources its dialogs use; null before the library entry ran.
HINSTANCE moduleInstance();

// For its life the framework looks for resources in the module first.
class ModuleResources {
  public:
    ModuleResources() : previous_(AfxGetResourceHandle()) { AfxSetResourceHandle(moduleInstance()); }
    ~ModuleResources() { AfxSetResourceHandle(previous_); }
    ModuleResources(const ModuleResources&) = delete;
    ModuleResources& operator=(const ModuleResources&) = delete;

  private:
    HINSTANCE previous_;
};

}  // namespace qrs::frame
