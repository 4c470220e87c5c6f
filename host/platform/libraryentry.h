// The entry of a library on systems that do not call one of that form.
//
//     extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) { ... }
//     QRS_LIBRARY_ENTRY(DllMain)
#pragma once

#include "host/platform/port.h"

#if defined(_WIN32)
// The system itself calls DllMain.
#define QRS_LIBRARY_ENTRY(entry)
#else

namespace qrs::platform {

// Stands for the system's call of the entry when the library comes into the process and when it leaves it. It must be
// the last definition of its file, so that what the entry uses there is made before and destroyed after. Its address
// is the module handle. An entry that answers false makes the load of the library fail.
class QRS_HOST_PORT LibraryEntry {
  public:
    using Entry = bool (*)(void* handle, bool comes);

    explicit LibraryEntry(Entry entry);
    ~LibraryEntry();
    LibraryEntry(const LibraryEntry&) = delete;
    LibraryEntry& operator=(const LibraryEntry&) = delete;

  private:
    Entry entry_;
};

}  // namespace qrs::platform

#define QRS_LIBRARY_ENTRY(entry)                                                               \
    static const qrs::platform::LibraryEntry qrsLibraryEntry([](void* handle, bool comes) {    \
        const auto instance = static_cast<HINSTANCE>(handle);                                  \
        return entry(instance, comes ? DLL_PROCESS_ATTACH : DLL_PROCESS_DETACH, nullptr) != 0; \
    });
#endif
