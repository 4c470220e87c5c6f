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
