// Names and result buffers of the editor's older function interface.
#pragma once

#include <cstdint>

#include "adesk.h"
#include "adscodes.h"

using ads_real = double;
using ads_point = ads_real[3];
using ads_matrix = ads_real[4][4];
using ads_name = std::int64_t[2];

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    std::int64_t rlname[2];
    std::int32_t rlong;
    ads_binary rbinary;
};

// One link of a chain of values: a DXF group code or an RT type, and the value.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

inline void ads_name_set(const ads_name from, ads_name to) {
    to[0] = from[0], to[1] = from[1];
}
inline void ads_name_clear(ads_name name) {
    name[0] = name[1] = 0;
}
inline bool ads_name_nil(const ads_name name) {
    return name[0] == 0 && name[1] == 0;
}
