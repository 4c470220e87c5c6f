// What the module exports bears QRS_PIPE_PORT; everything else stays inside.
#pragma once

#if defined(_WIN32)
#if defined(QRS_PIPE_BUILD)
#define QRS_PIPE_PORT __declspec(dllexport)
#else
#define QRS_PIPE_PORT __declspec(dllimport)
#endif
#else
#define QRS_PIPE_PORT __attribute__((visibility("default")))
#endif
