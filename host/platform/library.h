// A shared library loaded at run time.
#pragma once

#include <filesystem>
#include <memory>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::platform {

// Loaded as long as the object lives.
class Library {
  public:
    // Null, with the reason in error, when the file cannot be loaded.
    static std::unique_ptr<Library> load(const std::filesystem::path& native, Error& error);
    virtual ~Library() = default;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // The address of a symbol that the library itself exports, or null: those of libraries that it needs do not count.
    virtual void* symbol(const char* name) const = 0;

  protected:
    Library() = default;
};

// Called by the entry of a library while it is being loaded: the load then fails, and the library leaves the process.
QRS_HOST_PORT void refuseLibraryLoad();

}  // namespace qrs::platform
