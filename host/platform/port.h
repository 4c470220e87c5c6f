// What leaves the host library bears QRS_HOST_PORT; everything else stays inside.
#pragma once

#if defined(_WIN32)
#if defined(QRS_HOST_BUILD)
#define QRS_HOST_PORT __declspec(dllexport)
#else
#define QRS_HOST_PORT __declspec(dllimport)
#endif
#else
#define QRS_HOST_PORT __attribute__((visibility("default")))
#endif

// The module is compiled with QRS_PUBLISHED_ONLY. It hides, in the headers that bear the names of the editor and of its
// framework, what those do not have themselves, so that the module's sources also compile against the real ones:
//
//     #ifndef QRS_PUBLISHED_ONLY
//         ... what is ours ...
//     #endif  // QRS_PUBLISHED_ONLY
//
// Only functions that are not virtual, and names, may stand there: objects must look the same to either side.
