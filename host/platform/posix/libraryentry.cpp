// Calls a library's entry where the system does not.
#include "host/platform/libraryentry.h"

#include "host/platform/library.h"

namespace qrs::platform {

LibraryEntry::LibraryEntry(Entry entry) : entry_(entry) {
    if (!entry_(this, true)) refuseLibraryLoad();
}

LibraryEntry::~LibraryEntry() {
    entry_(this, false);
}

}  // namespace qrs::platform
